#include <TovrelWebServices/AccountScreens/Views/Private/ModuleView.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/SignInButtonItem.hpp>
#include <TovrelWebServices/AccountScreens/Views/TovrelSignInButtonView.hpp>

namespace tovrel {

AnyView signInButtonView(const TovrelSignInButtonRepresentable& representable) {
    return moduleView<SignInButtonItem>(QStringLiteral("SignInButton"), [representable](SignInButtonItem& item) {
        if (representable.height) {
            item.setHeight(*representable.height);
        }
        item.show(representable.button);
    });
}

} // namespace tovrel
