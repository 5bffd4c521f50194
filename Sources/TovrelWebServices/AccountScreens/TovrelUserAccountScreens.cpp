#include <TovrelWebServices/AccountScreens/Private/AccountViews.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountScreens.hpp>

namespace tovrel {

AnyView TovrelUserAccountLoadingView::body() const {
    return AccountViews::current().loading(*this);
}

AnyView TovrelUserAccountSignInView::body() const {
    return AccountViews::current().signIn(*this);
}

AnyView TovrelUserAccountManageView::body() const {
    return AccountViews::current().manage(*this);
}

AnyView loadingView(const TovrelUserAccountConfiguration::LoadingType& type) {
    if (type.kind() == TovrelUserAccountConfiguration::LoadingType::Kind::custom) {
        return type.view();
    }
    return TovrelUserAccountLoadingView(type.backgroundColor(), type.tintColor()).body();
}

} // namespace tovrel
