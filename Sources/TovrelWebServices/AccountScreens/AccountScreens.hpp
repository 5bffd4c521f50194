#pragma once

/// @file
/// All of AccountScreens.

#include <TovrelWebServices/AccountScreens/Alert.hpp>
#include <TovrelWebServices/AccountScreens/AnyView.hpp>
#include <TovrelWebServices/AccountScreens/Color.hpp>
#include <TovrelWebServices/AccountScreens/ColorResource.hpp>
#include <TovrelWebServices/AccountScreens/CurrentAppearance.hpp>
#include <TovrelWebServices/AccountScreens/Font.hpp>
#include <TovrelWebServices/AccountScreens/Image.hpp>
#include <TovrelWebServices/AccountScreens/NavigationBarItem.hpp>
#include <TovrelWebServices/AccountScreens/QtMainActor.hpp>
#include <TovrelWebServices/AccountScreens/ScreenLanguage.hpp>
#include <TovrelWebServices/AccountScreens/TovrelAppleSignInButton.hpp>
#include <TovrelWebServices/AccountScreens/TovrelSignInButton.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountAlert.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountAlertManageable.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountConfiguration.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountManageViewModel.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountObservers.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountScreens.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountSignInViewModel.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountsType.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountView.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountViewBuilder.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountViewModel.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountViewState.hpp>
#include <TovrelWebServices/AccountScreens/Views/AccountScreenItem.hpp>
#include <TovrelWebServices/AccountScreens/Views/HostingController.hpp>
#include <TovrelWebServices/AccountScreens/Views/QtApplication.hpp>
#include <TovrelWebServices/AccountScreens/Views/ScreenTextSize.hpp>
#include <TovrelWebServices/AccountScreens/Views/SignInButtonArtwork.hpp>
#include <TovrelWebServices/AccountScreens/Views/TovrelSignInButtonView.hpp>
#include <TovrelWebServices/AccountScreens/Views/TovrelUserAccountItem.hpp>
#include <TovrelWebServices/AccountScreens/Views/TovrelUserAccountSource.hpp>
