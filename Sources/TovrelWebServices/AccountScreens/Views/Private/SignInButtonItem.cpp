#include <TovrelWebServices/AccountScreens/Views/Private/SignInButtonItem.hpp>
#include <TovrelWebServices/AccountScreens/Views/SignInButtonArtwork.hpp>

#include <utility>

namespace tovrel {

SignInButtonItem::SignInButtonItem(QQuickItem* parent) : QQuickItem(parent) {}

SignInButtonItem::~SignInButtonItem() = default;

void SignInButtonItem::show(std::shared_ptr<TovrelSignInButton> button) {
    button_ = std::move(button);
    connect(button_->appleButton().get(), &TovrelAppleSignInButton::platformStyleChanged, this,
            &SignInButtonItem::artworkChanged);
    Q_EMIT buttonChanged();
    Q_EMIT artworkChanged();
}

TovrelAppleSignInButton* SignInButtonItem::button() const {
    return button_ ? button_->appleButton().get() : nullptr;
}

ViewSource SignInButtonItem::artwork() const {
    return button_ ? ViewSource(SignInButtonArtwork::view(button_->appleButton()->platformStyle())) : ViewSource();
}

} // namespace tovrel
