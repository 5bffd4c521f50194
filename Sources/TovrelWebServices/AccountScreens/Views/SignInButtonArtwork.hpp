#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelWebServices/AccountScreens/AnyView.hpp>
#include <TovrelWebServices/SignIn/AppleIDButton.hpp>

#include <functional>

namespace tovrel {

/// The logo on the buttons of Sign in with Apple. The library draws a neutral figure: the provider's own artwork is for
/// the host to obtain and to choose here, in the colour of the words. For the main thread only.
class TOVREL_EXPORT SignInButtonArtwork {
public:
    SignInButtonArtwork() = delete;

    /// Gives the artwork for a black button with white words, or a white one with black words. It fills a square of the
    /// height of the words beside it.
    using Source = std::function<AnyView(AppleIDButtonStyle style)>;

    /// The host's choice, for buttons that are drawn or recoloured from now on; empty for the neutral figure.
    static void choose(Source source);

    /// The artwork for a style; empty where the host has chosen none.
    [[nodiscard]] static AnyView view(AppleIDButtonStyle style);
};

} // namespace tovrel
