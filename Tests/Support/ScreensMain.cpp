#include <TovrelWebServices/AccountScreens/QtMainActor.hpp>

#include <gtest/gtest.h>

#include <QtCore/QtGlobal>
#include <QtGui/QGuiApplication>

/// Chooses drawing without a display, unless the environment chooses.
static void setDefault(const char* variable, const char* value) {
    if (!qEnvironmentVariableIsSet(variable)) {
        qputenv(variable, value);
    }
}

int main(int argumentCount, char** arguments) {
    ::testing::InitGoogleTest(&argumentCount, arguments);
    setDefault("QT_QPA_PLATFORM", "offscreen");
    setDefault("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argumentCount, arguments);
    tovrel::QtMainActor::install();
    return RUN_ALL_TESTS();
}
