#pragma once

#include <Platform/Events/Publisher.hpp>
#include <Platform/System/Export.hpp>

#include <optional>
#include <string>
#include <vector>

namespace tovrel {

/// The language of the account screens' texts. Languages go by their ISO 639-1 codes.
class TOVREL_EXPORT ScreenLanguage {
public:
    ScreenLanguage() = delete;

    /// "ar", "de", "en", "es", "fr"
    [[nodiscard]] static const std::vector<std::string>& available();

    /// The host's choice, else the first available language that the application's default `QLocale` prefers, else
    /// English. Thread-safe.
    [[nodiscard]] static std::string current();

    /// Whether the current language is written from right to left. Thread-safe.
    [[nodiscard]] static bool isRightToLeft();

    /// The host's choice from now on; absent to follow the locale, as at the start. A language that is not available
    /// stops the process. Main thread only.
    static void choose(std::optional<std::string> language);

    /// Sends the new language each time it changes, on the main thread. A change of the default locale is noticed with
    /// the event by which Qt announces it, `QEvent::LanguageChange` or `QEvent::LocaleChange` to the application.
    [[nodiscard]] static Publisher<std::string> changes();
};

} // namespace tovrel
