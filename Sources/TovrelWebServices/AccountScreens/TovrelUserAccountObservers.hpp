#pragma once

#include <Platform/Concurrency/Outcome.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountViewState.hpp>

#include <memory>

namespace tovrel {

class ViewController;

/// What an account screen tells its host, on the main thread. Screens hold observers weakly.
class TOVREL_EXPORT TovrelUserAccountBaseViewObserver {
public:
    virtual ~TovrelUserAccountBaseViewObserver();
    TovrelUserAccountBaseViewObserver(const TovrelUserAccountBaseViewObserver&) = delete;
    TovrelUserAccountBaseViewObserver& operator=(const TovrelUserAccountBaseViewObserver&) = delete;

    virtual void userAccountViewDidDisappear(TovrelUserAccountViewState viewState) = 0;
    virtual void userAccountViewDidAppear(TovrelUserAccountViewState viewState) = 0;

    /// The host is to dismiss the account screen. It is given the screen on top of the application, null when none can
    /// be found.
    virtual void dismissUserAccountView(std::shared_ptr<ViewController> topViewController) = 0;

    /// Whether the screen closes itself; otherwise `dismissUserAccountView` is called.
    [[nodiscard]] virtual bool userAccountViewShouldDismissItself() = 0;

protected:
    TovrelUserAccountBaseViewObserver();
};

/// What the sign-in screen tells its host.
class TOVREL_EXPORT TovrelUserAccountSignInViewObserver : public virtual TovrelUserAccountBaseViewObserver {
public:
    ~TovrelUserAccountSignInViewObserver() override;

    /// Success, or the error of the sign-in. It comes before the screen stops loading and before it is dismissed.
    virtual void signInViewDidFinishAuthorization(Outcome<void> result) = 0;
    virtual void signInViewDidInitiateAuthorization() = 0;

protected:
    TovrelUserAccountSignInViewObserver();
};

/// What the manage-account screen tells its host.
class TOVREL_EXPORT TovrelUserAccountManageViewObserver : public virtual TovrelUserAccountBaseViewObserver {
public:
    ~TovrelUserAccountManageViewObserver() override;

    virtual void manageAccountViewDidLogout() = 0;
    virtual void manageAccountViewDidDeleteAccount() = 0;

protected:
    TovrelUserAccountManageViewObserver();
};

/// What the combined account screen tells its host.
class TOVREL_EXPORT TovrelUserAccountViewObserver : public TovrelUserAccountSignInViewObserver,
                                                    public TovrelUserAccountManageViewObserver {
public:
    ~TovrelUserAccountViewObserver() override;

protected:
    TovrelUserAccountViewObserver();
};

} // namespace tovrel
