#include <Platform/Concurrency/MainActor.hpp>
#include <TovrelWebServices/AccountScreens/Private/AccountViews.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountView.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountViewBuilder.hpp>

#include <utility>

namespace tovrel {

namespace {

using Builder = TovrelUserAccountViewBuilder;
using SignInObserver = std::weak_ptr<TovrelUserAccountSignInViewObserver>;
using AccountObserver = std::weak_ptr<TovrelUserAccountViewObserver>;

/// On the main actor.
Async<TovrelUserAccountSignInView> makeSignInView(Builder builder, bool userHasSignedUp, Builder::SignInConfig config,
                                                  SignInObserver observer) {
    co_return TovrelUserAccountSignInView(TovrelUserAccountSignInViewModel::make(
        builder.tovrelAccountsWebService, userHasSignedUp, std::move(config), std::move(observer)));
}

Async<TovrelUserAccountSignInView> buildSignInView(Builder builder, Builder::SignInConfig config,
                                                   SignInObserver observer) {
    const bool userHasSignedUp = co_await builder.tovrelAccountsWebService->userHasSignedUp(accountsType(builder.type));
    co_return co_await MainActor::run(
        makeSignInView(std::move(builder), userHasSignedUp, std::move(config), std::move(observer)));
}

/// On the main actor.
Async<std::shared_ptr<TovrelUserAccountView>> makeAccountView(Builder builder, Builder::LoadingType loadingType,
                                                              Builder::SignInConfig signInConfig,
                                                              Builder::ManageAccountConfig manageAccountConfig,
                                                              AccountObserver observer) {
    co_return TovrelUserAccountView::make(std::move(builder), std::move(loadingType), std::move(signInConfig),
                                          std::move(manageAccountConfig), std::move(observer));
}

/// On the main actor.
Async<std::shared_ptr<ViewController>> hostAccountView(Async<std::shared_ptr<TovrelUserAccountView>> building) {
    auto view = co_await std::move(building);
    co_return AccountViews::current().hosting(view->body());
}

/// On the main actor.
Async<std::shared_ptr<ViewController>> hostSignInView(Async<TovrelUserAccountSignInView> building) {
    const TovrelUserAccountSignInView view = co_await std::move(building);
    co_return AccountViews::current().hosting(view.body());
}

Async<bool> askIsLoggedIn(Builder builder) {
    try {
        co_return co_await builder.tovrelAccountsWebService->isLoggedIn(accountsType(builder.type));
    } catch (...) {
        // Hosts get a yes or a no.
    }
    co_return false;
}

} // namespace

TovrelAccountsType accountsType(TovrelUserAccountsType type) {
    switch (type) {
    case TovrelUserAccountsType::appleSignIn:
        break;
    }
    return TovrelAccountsType::appleSignIn;
}

TovrelUserAccountViewBuilder::TovrelUserAccountViewBuilder(TovrelUserAccountsType accountsType,
                                                           std::shared_ptr<TovrelAccountsWebService> accountsWebService)
    : type(accountsType), tovrelAccountsWebService(std::move(accountsWebService)) {}

Async<bool> TovrelUserAccountViewBuilder::isLoggedIn() const {
    return askIsLoggedIn(*this);
}

Async<TovrelUserAccountSignInView> TovrelUserAccountViewBuilder::signInView(SignInConfig config,
                                                                            SignInObserver observer) const {
    return buildSignInView(*this, std::move(config), std::move(observer));
}

TovrelUserAccountManageView
TovrelUserAccountViewBuilder::manageAccountView(ManageAccountConfig config,
                                                std::weak_ptr<TovrelUserAccountManageViewObserver> observer) const {
    return TovrelUserAccountManageView(
        TovrelUserAccountManageViewModel::make(tovrelAccountsWebService, std::move(observer)), std::move(config));
}

Async<std::shared_ptr<TovrelUserAccountView>>
TovrelUserAccountViewBuilder::userAccountView(LoadingType loadingType, SignInConfig signInConfig,
                                              ManageAccountConfig manageAccountConfig, AccountObserver observer) const {
    return MainActor::run(makeAccountView(*this, std::move(loadingType), std::move(signInConfig),
                                          std::move(manageAccountConfig), std::move(observer)));
}

Async<std::shared_ptr<ViewController>>
TovrelUserAccountViewBuilder::userAccountViewController(LoadingType loadingType, SignInConfig signInConfig,
                                                        ManageAccountConfig manageAccountConfig,
                                                        AccountObserver observer) const {
    return MainActor::run(hostAccountView(userAccountView(std::move(loadingType), std::move(signInConfig),
                                                          std::move(manageAccountConfig), std::move(observer))));
}

Async<std::shared_ptr<ViewController>>
TovrelUserAccountViewBuilder::signInViewController(SignInConfig config, SignInObserver observer) const {
    return MainActor::run(hostSignInView(signInView(std::move(config), std::move(observer))));
}

std::shared_ptr<ViewController> TovrelUserAccountViewBuilder::manageAccountViewController(
    ManageAccountConfig config, std::weak_ptr<TovrelUserAccountManageViewObserver> observer) const {
    return AccountViews::current().hosting(manageAccountView(std::move(config), std::move(observer)).body());
}

} // namespace tovrel
