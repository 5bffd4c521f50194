#include <TovrelWebServices/AccountScreens/Private/ModuleResources.hpp>
#include <TovrelWebServices/AccountScreens/Private/QtResourceBundle.hpp>
#include <TovrelWebServices/Support/TovrelWebServicesInstance.hpp>

#include <memory>
#include <QtCore/QtGlobal>

/// Made by Qt's build from the types of this module that are marked for QML.
extern void qml_register_types_Tovrel_AccountScreens();

// Qt declares what it calls here in the enclosing namespace, which has to be the global one.
static void initializeResources() {
    Q_INIT_RESOURCE(TovrelAccountScreensResources);
}

namespace tovrel {

const ResourceBundle& moduleBundle() {
    static const auto& bundle = *new std::shared_ptr<const ResourceBundle>([] {
        initializeResources();
        [[maybe_unused]] void (*volatile keep)() = &qml_register_types_Tovrel_AccountScreens;
        auto made = std::make_shared<const QtResourceBundle>();
        TovrelWebServicesInstance::setBundle(made);
        return made;
    }());
    return *bundle;
}

} // namespace tovrel
