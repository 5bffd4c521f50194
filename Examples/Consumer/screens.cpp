#include <TovrelWebServices/AccountScreens/AccountScreens.hpp>

#include <iostream>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>

using namespace tovrel;

int main(int argumentCount, char** arguments) {
    const QGuiApplication application(argumentCount, arguments);
    QtMainActor::install();
    ScreenLanguage::choose("de");
    const QColor border = ColorResource::accountUserSignInConsentBorder().resolved(UserInterfaceStyle::dark);
    const bool hasTexts = TovrelUserAccountAlert::connectionError().alert.primaryButton.label == "OK";
    QQmlEngine engine;
    QQuickItem place;
    const AnyView view = TovrelUserAccountLoadingView(Color::primary(), Color::accent()).body();
    const bool isDrawn = view.make(engine, place) != nullptr;
    std::cout << (border.isValid() && hasTexts && isDrawn ? "linked" : "without resources") << '\n';
}
