#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountConfiguration.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountObservers.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountScreens.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountsType.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsWebService.hpp>

#include <memory>

namespace tovrel {

class TovrelUserAccountView;
class ViewController;

/// Where a host gets the account screens from. The main actor has to be Qt's, see `QtMainActor`.
///
/// Asynchronous operations may be awaited anywhere and make their screens on the main actor; the others are for the
/// main thread. A view controller is the same screen as a screen of the host's. Screens hold observers weakly; a
/// default-made `std::weak_ptr` stands for none.
struct TOVREL_EXPORT TovrelUserAccountViewBuilder {
    using LoadingType = TovrelUserAccountConfiguration::LoadingType;
    using SignInConfig = std::shared_ptr<TovrelUserAccountConfiguration::SignIn>;
    using ManageAccountConfig = std::shared_ptr<TovrelUserAccountConfiguration::ManageAccount>;

    TovrelUserAccountsType type;
    std::shared_ptr<TovrelAccountsWebService> tovrelAccountsWebService;

    TovrelUserAccountViewBuilder(TovrelUserAccountsType accountsType,
                                 std::shared_ptr<TovrelAccountsWebService> accountsWebService);

    /// Whether the user is logged in; no, too, when the accounts service cannot tell.
    [[nodiscard]] Async<bool> isLoggedIn() const;

    /// The sign-in screen.
    [[nodiscard]] Async<TovrelUserAccountSignInView>
    signInView(SignInConfig config, std::weak_ptr<TovrelUserAccountSignInViewObserver> observer) const;

    /// The manage-account screen.
    [[nodiscard]] TovrelUserAccountManageView
    manageAccountView(ManageAccountConfig config, std::weak_ptr<TovrelUserAccountManageViewObserver> observer) const;

    /// The screen that finds out whether the user is logged in and then shows one of the other two.
    [[nodiscard]] Async<std::shared_ptr<TovrelUserAccountView>>
    userAccountView(LoadingType loadingType, SignInConfig signInConfig, ManageAccountConfig manageAccountConfig,
                    std::weak_ptr<TovrelUserAccountViewObserver> observer) const;

    /// See `userAccountView`.
    [[nodiscard]] Async<std::shared_ptr<ViewController>>
    userAccountViewController(LoadingType loadingType, SignInConfig signInConfig,
                              ManageAccountConfig manageAccountConfig,
                              std::weak_ptr<TovrelUserAccountViewObserver> observer) const;

    /// See `signInView`.
    [[nodiscard]] Async<std::shared_ptr<ViewController>>
    signInViewController(SignInConfig config, std::weak_ptr<TovrelUserAccountSignInViewObserver> observer) const;

    /// See `manageAccountView`.
    [[nodiscard]] std::shared_ptr<ViewController>
    manageAccountViewController(ManageAccountConfig config,
                                std::weak_ptr<TovrelUserAccountManageViewObserver> observer) const;
};

} // namespace tovrel
