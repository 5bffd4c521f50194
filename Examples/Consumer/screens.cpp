#include <TovrelWebServices/AccountScreens/AccountScreens.hpp>

#include <iostream>
#include <QtGui/QGuiApplication>

using namespace tovrel;

int main(int argumentCount, char** arguments) {
    const QGuiApplication application(argumentCount, arguments);
    QtMainActor::install();
    ScreenLanguage::choose("de");
    const QColor border = ColorResource::accountUserSignInConsentBorder().resolved(UserInterfaceStyle::dark);
    const bool hasTexts = TovrelUserAccountAlert::connectionError().alert.primaryButton.label == "OK";
    std::cout << (border.isValid() && hasTexts ? "linked" : "without resources") << '\n';
}
