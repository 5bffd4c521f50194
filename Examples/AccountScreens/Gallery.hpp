#pragma once

#include "../Console/SignIn/DemoServices.hpp"

#include <filesystem>

/// Goes through the account screens without a display, as a user with a keyboard does, and draws each of them into a
/// file of the folder, whose paths it prints.
void drawGallery(const DemoServices& services, const std::filesystem::path& folder);
