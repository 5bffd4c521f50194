#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelWebServices/Support/ResourceBundle.hpp>
#include <TovrelWebServices/Support/TovrelWebServicesInstance.hpp>

#include <string>
#include <string_view>

namespace tovrel {

/// A text for the user: what the bundle has under the key, looked up anew at each call.
///
/// @param defaultValue The English text, for a key that the table lacks.
/// @param comment What a translator has to know; not looked at here.
[[nodiscard]] TOVREL_EXPORT std::string localizedString(std::string_view key, std::string_view table,
                                                        const ResourceBundle& bundle, std::string_view defaultValue,
                                                        std::string_view comment);

/// As above, in the table "Localizable" of this library's bundle.
[[nodiscard]] TOVREL_EXPORT std::string localizedString(std::string_view key, std::string_view defaultValue,
                                                        std::string_view comment);

} // namespace tovrel
