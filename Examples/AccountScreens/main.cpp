// An application with account screens: in a window where there is a display, in files where there is none.

#include "../Console/SignIn/DemoServices.hpp"
#include "AccountHost.hpp"
#include "Gallery.hpp"

#include <exception>
#include <filesystem>
#include <iostream>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>

using namespace tovrel;

namespace {

int runInWindow(const QGuiApplication& application, const DemoServices& services) {
    services.browser().decide(""); // the user clicks
    AccountHost host(services.accounts());
    QQmlApplicationEngine engine;
    engine.setInitialProperties({{QStringLiteral("host"), QVariant::fromValue(&host)}});
    engine.load(QUrl(QStringLiteral("qrc:/qt/qml/AccountScreensDemo/Main.qml")));
    return engine.rootObjects().isEmpty() ? 1 : application.exec();
}

int run(int count, char** arguments, bool hasDisplay) {
    const QGuiApplication application(count, arguments);
    QtMainActor::install();
    const DemoServices services;
    if (hasDisplay) {
        return runInWindow(application, services);
    }
    drawGallery(services, std::filesystem::read_symlink("/proc/self/exe").parent_path() / "screens");
    std::cout << "\nDone.\n";
    return 0;
}

} // namespace

int main(int count, char** arguments) {
    const bool hasDisplay = DemoBrowser::hasDisplay() || qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    if (!hasDisplay) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_QUICK_BACKEND", "software");
    }
    try {
        return run(count, arguments, hasDisplay);
    } catch (const std::exception& error) {
        std::cerr << "The demo failed: " << error.what() << '\n';
        return 1;
    }
}
