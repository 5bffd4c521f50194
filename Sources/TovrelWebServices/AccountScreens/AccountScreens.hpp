#pragma once

/// @file
/// All of AccountScreens.

#include <TovrelWebServices/AccountScreens/AnyView.hpp>
#include <TovrelWebServices/AccountScreens/Color.hpp>
#include <TovrelWebServices/AccountScreens/ColorResource.hpp>
#include <TovrelWebServices/AccountScreens/CurrentAppearance.hpp>
#include <TovrelWebServices/AccountScreens/Font.hpp>
#include <TovrelWebServices/AccountScreens/Image.hpp>
#include <TovrelWebServices/AccountScreens/NavigationBarItem.hpp>
#include <TovrelWebServices/AccountScreens/QtMainActor.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountConfiguration.hpp>
