#include <TovrelTesting/SignIn/IdentityUser.hpp>

#include <utility>

namespace tovrel::testing {

IdentityUser::IdentityUser(std::string userSubject) : subject(std::move(userSubject)) {}

} // namespace tovrel::testing
