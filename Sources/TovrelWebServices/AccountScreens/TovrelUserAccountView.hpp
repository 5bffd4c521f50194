#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelWebServices/AccountScreens/AnyView.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountViewBuilder.hpp>

#include <exception>
#include <memory>
#include <optional>
#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>
#include <utility>

namespace tovrel {

/// The combined account screen: it finds out whether the user is logged in, and shows the manage-account screen or the
/// sign-in screen. For the main thread only; tasks may share its ownership.
class TOVREL_EXPORT TovrelUserAccountView final : public QObject,
                                                  public std::enable_shared_from_this<TovrelUserAccountView> {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The account screens make it.")

public:
    using LoadingType = TovrelUserAccountViewBuilder::LoadingType;
    using SignInConfig = TovrelUserAccountViewBuilder::SignInConfig;
    using ManageAccountConfig = TovrelUserAccountViewBuilder::ManageAccountConfig;

    /// How far the question is answered whether the user is logged in.
    class LoadingState {
    public:
        enum class Kind { finished, failed, loading };

        [[nodiscard]] static LoadingState finished(bool isLoggedIn) {
            return LoadingState(Kind::finished, isLoggedIn, nullptr);
        }
        [[nodiscard]] static LoadingState failed(std::exception_ptr error) {
            return LoadingState(Kind::failed, false, std::move(error));
        }
        [[nodiscard]] static LoadingState loading() { return LoadingState(Kind::loading, false, nullptr); }

        [[nodiscard]] Kind kind() const { return kind_; }
        /// The answer of `finished`; false for the others.
        [[nodiscard]] bool isLoggedIn() const { return isLoggedIn_; }
        /// The error of `failed`; null for the others.
        [[nodiscard]] const std::exception_ptr& error() const { return error_; }

    private:
        LoadingState(Kind kind, bool isLoggedIn, std::exception_ptr error)
            : kind_(kind), isLoggedIn_(isLoggedIn), error_(std::move(error)) {}

        Kind kind_;
        bool isLoggedIn_;
        std::exception_ptr error_;
    };

    [[nodiscard]] static std::shared_ptr<TovrelUserAccountView>
    make(TovrelUserAccountViewBuilder viewBuilder, LoadingType loadingType, SignInConfig signInConfig,
         ManageAccountConfig manageAccountConfig, std::weak_ptr<TovrelUserAccountViewObserver> observer);
    ~TovrelUserAccountView() override;

    [[nodiscard]] const LoadingState& loadingState() const { return loadingState_; }

    /// What is shown inside: the loading view, the manage-account screen or the sign-in screen. After a failure the
    /// loading view stays.
    [[nodiscard]] const AnyView& content() const;

    /// The view to show; its items keep this object.
    [[nodiscard]] AnyView body();

    /// The screen has appeared: each time the question is asked anew.
    Q_INVOKABLE void onAppear();

Q_SIGNALS:
    void loadingStateChanged();
    /// `content` is another view now.
    void contentChanged();

private:
    TovrelUserAccountView(TovrelUserAccountViewBuilder viewBuilder, LoadingType loadingType, SignInConfig signInConfig,
                          ManageAccountConfig manageAccountConfig,
                          std::weak_ptr<TovrelUserAccountViewObserver> observer);

    static Async<void> decide(std::shared_ptr<TovrelUserAccountView> self);
    static Async<LoadingState> askIsLoggedIn(std::shared_ptr<TovrelUserAccountView> self);
    void setLoadingState(LoadingState state);
    void setSignInView(AnyView view);

    TovrelUserAccountViewBuilder viewBuilder_;
    LoadingType loadingType_;
    SignInConfig signInConfig_;
    ManageAccountConfig manageAccountConfig_;
    std::weak_ptr<TovrelUserAccountViewObserver> observer_;
    LoadingState loadingState_ = LoadingState::loading();
    AnyView signInView_;
    std::optional<AnyView> manageView_; // while logged in
};

} // namespace tovrel
