#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsStorage.hpp>

namespace tovrel {

TovrelAccountsStorage::TovrelAccountsStorage() = default;

TovrelAccountsStorage::~TovrelAccountsStorage() = default;

} // namespace tovrel
