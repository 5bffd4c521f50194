#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsUserProfile.hpp>

namespace tovrel {

std::string TovrelAccountsUserProfile::debugDescription() const {
    return "TovrelAccountWebServiceUserProfile { firstName=" + name.firstName.value_or("null") +
           ", lastName=" + name.lastName.value_or("null") + ", email=" + email.value_or("null") + " }";
}

} // namespace tovrel
