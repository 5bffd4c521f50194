#pragma once

#include <TovrelWebServices/AccountScreens/Private/AccountViews.hpp>

#include <memory>

namespace tovrel {

/// Draws the account screens with this module's QML files.
class QuickAccountViews final : public AccountViews {
public:
    [[nodiscard]] AnyView loading(const TovrelUserAccountLoadingView& view) const override;
    [[nodiscard]] AnyView signIn(const TovrelUserAccountSignInView& view) const override;
    [[nodiscard]] AnyView manage(const TovrelUserAccountManageView& view) const override;
    [[nodiscard]] AnyView account(std::shared_ptr<TovrelUserAccountView> view) const override;
    [[nodiscard]] std::shared_ptr<ViewController> hosting(AnyView view) const override;
};

} // namespace tovrel
