# The drawing of the account screens. The file of the folder above includes this one, because Qt looks the properties of
# QML files up in the folder where the module is.
set(view_files
  AccountView
  ActionRow
  AlertButton
  AlertContent
  AlertDialog
  BusyIndicator
  CloseButton
  FocusRing
  LoadingModifier
  LoadingView
  ManageScreen
  NeutralFigure
  ScreenText
  ScrollArea
  SignInButton
  SignInCaption
  SignInScreen
  SwitchRow
  SwitchTrack
  Theme)
list(TRANSFORM view_files REPLACE "(.+)" "Views/\\1.qml")
foreach(file IN LISTS view_files)
  get_filename_component(name ${file} NAME)
  set_source_files_properties(${file} PROPERTIES QT_RESOURCE_ALIAS ${name})
endforeach()
set_source_files_properties(Views/Theme.qml PROPERTIES QT_QML_SINGLETON_TYPE TRUE)

set(view_sources
  Views/AccountScreenItem.cpp
  Views/AccountScreenItem.hpp
  Views/HostingController.cpp
  Views/Private/AccountViewItem.cpp
  Views/Private/AccountViewItem.hpp
  Views/Private/AlertAnnouncer.cpp
  Views/Private/AlertAnnouncer.hpp
  Views/Private/ContentFonts.cpp
  Views/Private/HostedView.cpp
  Views/Private/HostedView.hpp
  Views/Private/LoadingViewItem.cpp
  Views/Private/LoadingViewItem.hpp
  Views/Private/ManageScreenItem.cpp
  Views/Private/ManageScreenItem.hpp
  Views/Private/ModuleView.cpp
  Views/Private/QuickAccountViews.cpp
  Views/Private/ScreenEnvironment.cpp
  Views/Private/ScreenEnvironment.hpp
  Views/Private/SignInButtonItem.cpp
  Views/Private/SignInButtonItem.hpp
  Views/Private/SignInScreenItem.cpp
  Views/Private/SignInScreenItem.hpp
  Views/QtApplication.cpp
  Views/ScreenTextSize.cpp
  Views/SignInButtonArtwork.cpp
  Views/TovrelSignInButtonView.cpp
  Views/TovrelUserAccountItem.cpp
  Views/TovrelUserAccountItem.hpp
  Views/TovrelUserAccountSource.cpp
  Views/TovrelUserAccountSource.hpp)
