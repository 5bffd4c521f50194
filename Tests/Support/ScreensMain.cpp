#include <TovrelWebServices/AccountScreens/QtMainActor.hpp>

#include <gtest/gtest.h>

#include <QtCore/QtGlobal>
#include <QtGui/QGuiApplication>

/// Qt's software renderer keeps the textures of pictures and forgets them when the process ends.
extern "C" Q_DECL_EXPORT const char* __lsan_default_suppressions() {
    return "leak:QSGTexture::QSGTexture\n";
}

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
