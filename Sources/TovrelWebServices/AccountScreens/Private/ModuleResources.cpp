#include <TovrelWebServices/AccountScreens/Private/ModuleResources.hpp>

#include <mutex>
#include <QtCore/QtGlobal>

/// Made by Qt's build from the types of this module that are marked for QML.
extern void qml_register_types_Tovrel_AccountScreens();

// Qt declares what it calls here in the enclosing namespace, which has to be the global one.
static void initializeResources() {
    Q_INIT_RESOURCE(TovrelAccountScreensResources);
}

namespace tovrel {

void loadModuleResources() {
    static std::once_flag once;
    std::call_once(once, [] {
        initializeResources();
        [[maybe_unused]] void (*volatile keep)() = &qml_register_types_Tovrel_AccountScreens;
    });
}

} // namespace tovrel
