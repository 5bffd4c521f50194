#include <TovrelWebServices/AccountScreens/Views/HostingController.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/AccountViewItem.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/LoadingViewItem.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/ManageScreenItem.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/ModuleView.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/QuickAccountViews.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/SignInScreenItem.hpp>

#include <utility>

namespace tovrel {

AnyView QuickAccountViews::loading(const TovrelUserAccountLoadingView& view) const {
    return moduleView<LoadingViewItem>(QStringLiteral("LoadingView"), [view](LoadingViewItem& item) {
        item.show(view.backgroundColor, view.tintColor);
    });
}

AnyView QuickAccountViews::signIn(const TovrelUserAccountSignInView& view) const {
    return moduleView<SignInScreenItem>(QStringLiteral("SignInScreen"),
                                        [view](SignInScreenItem& item) { item.show(view.viewModel); });
}

AnyView QuickAccountViews::manage(const TovrelUserAccountManageView& view) const {
    return moduleView<ManageScreenItem>(QStringLiteral("ManageScreen"),
                                        [view](ManageScreenItem& item) { item.show(view.viewModel, view.config); });
}

AnyView QuickAccountViews::account(std::shared_ptr<TovrelUserAccountView> view) const {
    return moduleView<AccountViewItem>(QStringLiteral("AccountView"),
                                       [view = std::move(view)](AccountViewItem& item) { item.show(view); });
}

std::shared_ptr<ViewController> QuickAccountViews::hosting(AnyView view) const {
    return HostingController::make(std::move(view));
}

} // namespace tovrel
