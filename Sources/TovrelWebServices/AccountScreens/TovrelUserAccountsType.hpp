#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsType.hpp>

namespace tovrel {

/// The kinds of user account that have screens.
enum class TovrelUserAccountsType { appleSignIn };

/// The accounts service's name for the kind.
[[nodiscard]] TOVREL_EXPORT TovrelAccountsType accountsType(TovrelUserAccountsType type);

} // namespace tovrel
