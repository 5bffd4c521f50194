#include <TovrelTesting/SignIn/IdentityClaims.hpp>

#include <utility>

namespace tovrel::testing {

IdentityClaims::IdentityClaims(std::string claimedSubject, std::string claimedAudience)
    : subject(std::move(claimedSubject)), audience(std::move(claimedAudience)) {}

} // namespace tovrel::testing
