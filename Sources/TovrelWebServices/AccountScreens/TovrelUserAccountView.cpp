#include <Platform/Concurrency/MainActor.hpp>
#include <Platform/Concurrency/Task.hpp>
#include <TovrelWebServices/AccountScreens/Private/AccountViews.hpp>
#include <TovrelWebServices/AccountScreens/Private/MainThreadObject.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountView.hpp>

namespace tovrel {

std::shared_ptr<TovrelUserAccountView>
TovrelUserAccountView::make(TovrelUserAccountViewBuilder viewBuilder, LoadingType loadingType,
                            SignInConfig signInConfig, ManageAccountConfig manageAccountConfig,
                            std::weak_ptr<TovrelUserAccountViewObserver> observer) {
    return ownedByMainThread(new TovrelUserAccountView(std::move(viewBuilder), std::move(loadingType),
                                                       std::move(signInConfig), std::move(manageAccountConfig),
                                                       std::move(observer)));
}

TovrelUserAccountView::TovrelUserAccountView(TovrelUserAccountViewBuilder viewBuilder, LoadingType loadingType,
                                             SignInConfig signInConfig, ManageAccountConfig manageAccountConfig,
                                             std::weak_ptr<TovrelUserAccountViewObserver> observer)
    : viewBuilder_(std::move(viewBuilder)),
      loadingType_(std::move(loadingType)),
      signInConfig_(std::move(signInConfig)),
      manageAccountConfig_(std::move(manageAccountConfig)),
      observer_(std::move(observer)),
      signInView_(loadingView(loadingType_)) {}

TovrelUserAccountView::~TovrelUserAccountView() = default;

const AnyView& TovrelUserAccountView::content() const {
    return manageView_ ? *manageView_ : signInView_;
}

AnyView TovrelUserAccountView::body() {
    return AccountViews::current().account(shared_from_this());
}

void TovrelUserAccountView::onAppear() {
    Task::spawn(MainActor::executor(), decide(shared_from_this()));
}

Async<void> TovrelUserAccountView::decide(std::shared_ptr<TovrelUserAccountView> self) {
    const LoadingState state = co_await askIsLoggedIn(self);
    self->setLoadingState(state);
    if (state.kind() != LoadingState::Kind::finished || state.isLoggedIn()) {
        co_return;
    }
    const TovrelUserAccountSignInView view =
        co_await self->viewBuilder_.signInView(self->signInConfig_, self->observer_);
    self->setSignInView(view.body());
}

Async<TovrelUserAccountView::LoadingState>
TovrelUserAccountView::askIsLoggedIn(std::shared_ptr<TovrelUserAccountView> self) {
    const TovrelUserAccountViewBuilder& builder = self->viewBuilder_;
    std::exception_ptr error;
    bool isLoggedIn = false;
    try {
        isLoggedIn = co_await builder.tovrelAccountsWebService->isLoggedIn(accountsType(builder.type));
    } catch (...) {
        error = std::current_exception();
    }
    co_return error ? LoadingState::failed(error) : LoadingState::finished(isLoggedIn);
}

void TovrelUserAccountView::setLoadingState(LoadingState state) {
    loadingState_ = std::move(state);
    const bool hadManageView = manageView_.has_value();
    manageView_.reset();
    if (loadingState_.isLoggedIn()) {
        manageView_ = viewBuilder_.manageAccountView(manageAccountConfig_, observer_).body();
    }
    Q_EMIT loadingStateChanged();
    if (hadManageView || manageView_) {
        Q_EMIT contentChanged();
    }
}

void TovrelUserAccountView::setSignInView(AnyView view) {
    signInView_ = std::move(view);
    if (!manageView_) {
        Q_EMIT contentChanged();
    }
}

} // namespace tovrel
