#pragma once

#include <TovrelWebServices/AccountScreens/AnyView.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountScreens.hpp>

#include <memory>

namespace tovrel {

class TovrelUserAccountView;
class ViewController;

/// What draws the account screens.
class AccountViews {
public:
    virtual ~AccountViews();
    AccountViews(const AccountViews&) = delete;
    AccountViews& operator=(const AccountViews&) = delete;

    [[nodiscard]] virtual AnyView loading(const TovrelUserAccountLoadingView& view) const = 0;
    [[nodiscard]] virtual AnyView signIn(const TovrelUserAccountSignInView& view) const = 0;
    [[nodiscard]] virtual AnyView manage(const TovrelUserAccountManageView& view) const = 0;
    [[nodiscard]] virtual AnyView account(std::shared_ptr<TovrelUserAccountView> view) const = 0;

    /// A screen of the host's that shows the view.
    [[nodiscard]] virtual std::shared_ptr<ViewController> hosting(AnyView view) const = 0;

    /// The ones in use. Main thread only.
    [[nodiscard]] static const AccountViews& current();
    /// Puts others in their place and gives back the ones before, null at first.
    static std::shared_ptr<const AccountViews> use(std::shared_ptr<const AccountViews> views);

protected:
    AccountViews();
};

} // namespace tovrel
