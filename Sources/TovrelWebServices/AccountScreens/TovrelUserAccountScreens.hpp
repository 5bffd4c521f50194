#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelWebServices/AccountScreens/AnyView.hpp>
#include <TovrelWebServices/AccountScreens/Color.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountConfiguration.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountManageViewModel.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountSignInViewModel.hpp>

#include <memory>
#include <utility>

namespace tovrel {

/// The library's loading view.
struct TOVREL_EXPORT TovrelUserAccountLoadingView {
    Color backgroundColor;
    Color tintColor;

    TovrelUserAccountLoadingView(Color background, Color tint)
        : backgroundColor(std::move(background)), tintColor(std::move(tint)) {}

    /// The view to show.
    [[nodiscard]] AnyView body() const;
};

/// The sign-in screen. For the main thread only.
struct TOVREL_EXPORT TovrelUserAccountSignInView {
    std::shared_ptr<TovrelUserAccountSignInViewModel> viewModel;

    explicit TovrelUserAccountSignInView(std::shared_ptr<TovrelUserAccountSignInViewModel> model)
        : viewModel(std::move(model)) {}

    /// The view to show; its items keep the model.
    [[nodiscard]] AnyView body() const;
};

/// The manage-account screen. For the main thread only.
struct TOVREL_EXPORT TovrelUserAccountManageView {
    std::shared_ptr<TovrelUserAccountManageViewModel> viewModel;
    std::shared_ptr<TovrelUserAccountConfiguration::ManageAccount> config;

    TovrelUserAccountManageView(std::shared_ptr<TovrelUserAccountManageViewModel> model,
                                std::shared_ptr<TovrelUserAccountConfiguration::ManageAccount> configuration)
        : viewModel(std::move(model)), config(std::move(configuration)) {}

    /// The view to show; its items keep the model.
    [[nodiscard]] AnyView body() const;
};

/// The view that covers a screen while it waits: the given one, or the library's in its colours.
[[nodiscard]] TOVREL_EXPORT AnyView loadingView(const TovrelUserAccountConfiguration::LoadingType& type);

} // namespace tovrel
