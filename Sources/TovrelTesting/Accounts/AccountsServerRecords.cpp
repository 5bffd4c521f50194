#include <TovrelTesting/Accounts/AccountsServerRecords.hpp>

namespace tovrel::testing {

AccountsServerUser::AccountsServerUser() = default;

AccountsServerSession::AccountsServerSession() = default;

AccountsServerCounts::AccountsServerCounts() = default;

} // namespace tovrel::testing
