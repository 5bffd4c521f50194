#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelWebServices/AccountScreens/AnyView.hpp>
#include <TovrelWebServices/AccountScreens/TovrelSignInButton.hpp>

namespace tovrel {

/// Draws the button: black or white, the words 43 % of its height, at least 140 by 30 points and 44 high by itself. Its
/// items keep the button.
[[nodiscard]] TOVREL_EXPORT AnyView signInButtonView(const TovrelSignInButtonRepresentable& representable);

} // namespace tovrel
