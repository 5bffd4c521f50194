#pragma once

#include <Platform/System/Export.hpp>

#include <string_view>

namespace tovrel {

/// Which kind of account is meant.
enum class TovrelAccountsType {
    anonymous,  ///< the client's own, by its credentials
    appleSignIn ///< a user's, from Sign in with Apple
};

/// "anonymous" or "appleSignIn".
[[nodiscard]] TOVREL_EXPORT std::string_view description(TovrelAccountsType type);

} // namespace tovrel
