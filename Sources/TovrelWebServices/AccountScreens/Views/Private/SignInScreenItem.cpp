#include <TovrelWebServices/AccountScreens/CurrentAppearance.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountScreens.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/ContentFonts.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/SignInScreenItem.hpp>
#include <TovrelWebServices/AccountScreens/Views/TovrelSignInButtonView.hpp>

#include <utility>

namespace tovrel {

SignInScreenItem::SignInScreenItem(QQuickItem* parent) : AccountScreenItem(parent) {}

SignInScreenItem::~SignInScreenItem() = default;

void SignInScreenItem::show(std::shared_ptr<TovrelUserAccountSignInViewModel> model) {
    model_ = std::move(model);
    const TovrelSignInButtonRepresentable button = model_->buildSignInButton();
    buttonView_ = ViewSource(signInButtonView(button));
    buttonHeight_ = button.height.value_or(0);
    connect(model_.get(), &TovrelUserAccountViewModel::shouldDismissChanged, this, &SignInScreenItem::dismiss);
    reportShown([shown = model_](bool isShown) { isShown ? shown->onAppear() : shown->onDisappear(); });
    Q_EMIT modelChanged();
    Q_EMIT styleChanged();
}

ViewSource SignInScreenItem::backgroundView() const {
    return config().backgroundView() ? ViewSource(*config().backgroundView()) : ViewSource();
}

QUrl SignInScreenItem::iconImage() const {
    const Image* image = config().icon().image();
    return image != nullptr ? image->source() : QUrl();
}

ViewSource SignInScreenItem::iconView() const {
    const AnyView* view = config().icon().custom();
    return view != nullptr ? ViewSource(*view) : ViewSource();
}

ViewSource SignInScreenItem::loadingView() const {
    return ViewSource(tovrel::loadingView(config().loadingType()));
}

bool SignInScreenItem::isSignUp() const {
    return model_->viewState() == TovrelUserAccountSignInViewModel::ViewState::signUp;
}

QColor SignInScreenItem::resolved(const Color& color) {
    return color.resolved(CurrentAppearance::get());
}

QFont SignInScreenItem::titleFont() const {
    return toolkitFont(config().titleFont());
}

QFont SignInScreenItem::bodyFont() const {
    return toolkitFont(config().bodyFont());
}

QFont SignInScreenItem::consentTextFont() const {
    return toolkitFont(config().consentTextFont());
}

} // namespace tovrel
