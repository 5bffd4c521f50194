#pragma once

#include <TovrelWebServices/AccountScreens/TovrelUserAccountConfiguration.hpp>

#include <QtGui/QFont>

namespace tovrel {

/// The application's font in this style and weight, as large as the user wants it now.
[[nodiscard]] QFont toolkitFont(const TovrelUserAccountConfiguration::ContentFont& font);

} // namespace tovrel
