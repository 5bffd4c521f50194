#pragma once

#include <Platform/System/Export.hpp>

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace tovrel {

/// A message that the user has to answer, with one or two buttons. A value; for the main thread only.
struct TOVREL_EXPORT Alert {
    /// A button and what pressing it does.
    struct TOVREL_EXPORT Button {
        enum class Style {
            default_,
            cancel,     ///< leaves everything as it is
            destructive ///< loses something for good
        };

        std::string label;
        Style style;
        std::function<void()> action; ///< empty for a button that only closes the alert

        Button(std::string buttonLabel, Style buttonStyle, std::function<void()> buttonAction = nullptr)
            : label(std::move(buttonLabel)), style(buttonStyle), action(std::move(buttonAction)) {}

        /// The standard cancel button: the word for it in the user's language, and no action.
        [[nodiscard]] static Button cancel();
    };

    std::string title;
    std::string message;
    Button primaryButton;
    std::optional<Button> secondaryButton;

    Alert(std::string alertTitle, std::string alertMessage, Button primary,
          std::optional<Button> secondary = std::nullopt)
        : title(std::move(alertTitle)),
          message(std::move(alertMessage)),
          primaryButton(std::move(primary)),
          secondaryButton(std::move(secondary)) {}
};

} // namespace tovrel
