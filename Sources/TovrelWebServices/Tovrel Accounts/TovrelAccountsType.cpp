#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsType.hpp>

namespace tovrel {

std::string_view description(TovrelAccountsType type) {
    return type == TovrelAccountsType::anonymous ? "anonymous" : "appleSignIn";
}

} // namespace tovrel
