#include <TovrelWebServices/AccountScreens/TovrelUserAccountConfiguration.hpp>

namespace tovrel {

namespace {

TovrelSignInButtonType appleButton(TovrelAppleSignInButtonConfig::Style style) {
    return TovrelSignInButtonType::apple(
        TovrelAppleSignInButtonConfig::make(style, TovrelAppleSignInButtonConfig::ButtonType::default_, std::nullopt));
}

} // namespace

TovrelUserAccountConfiguration::LoadingType::LoadingType(Kind kind, Color backgroundColor, Color tintColor,
                                                         AnyView view)
    : kind_(kind),
      backgroundColor_(std::move(backgroundColor)),
      tintColor_(std::move(tintColor)),
      view_(std::move(view)) {}

TovrelUserAccountConfiguration::LoadingType
TovrelUserAccountConfiguration::LoadingType::customised(Color backgroundColor, Color tintColor) {
    return LoadingType(Kind::customised, std::move(backgroundColor), std::move(tintColor), AnyView::empty());
}

TovrelUserAccountConfiguration::LoadingType TovrelUserAccountConfiguration::LoadingType::custom(AnyView view) {
    return LoadingType(Kind::custom, Color(ColorResource::accountUserSignInLoadingBackground()), Color::primary(),
                       std::move(view));
}

TovrelUserAccountConfiguration::LoadingType TovrelUserAccountConfiguration::LoadingType::default_() {
    return LoadingType(Kind::default_, Color(ColorResource::accountUserSignInLoadingBackground()), Color::primary(),
                       AnyView::empty());
}

TovrelUserAccountConfiguration::SignIn::SignIn()
    : icon_(Icon::custom(AnyView::empty())),
      titleColor_(Color::primary()),
      bodyColor_(Color::primary()),
      toggleColor_(Color::green()),
      consentTextColor_(Color::primary()),
      consentBorderColor_(ColorResource::accountUserSignInConsentBorder()),
      consentBackgroundColor_(ColorResource::accountUserSignInConsentBackground()),
      closeForegroundColor_(ColorResource::accountUserSignInCloseForeground()),
      closeBackgroundColor_(ColorResource::accountUserSignInCloseBackground()),
      loadingType_(LoadingType::default_()),
      signInButtonType_(appleButton(TovrelAppleSignInButtonConfig::Style::default_)),
      titleFont_(Font::largeTitle(), Font::Weight::bold),
      bodyFont_(Font::headline(), Font::Weight::regular),
      consentTextFont_(Font::subheadline(), Font::Weight::regular) {}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn> TovrelUserAccountConfiguration::SignIn::make() {
    return std::shared_ptr<SignIn>(new SignIn());
}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn>
TovrelUserAccountConfiguration::SignIn::signInButtonType(TovrelSignInButtonType type) {
    signInButtonType_ = std::move(type);
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn>
TovrelUserAccountConfiguration::SignIn::signInAppleButtonConfigStyle(TovrelAppleSignInButtonConfig::Style style) {
    return signInButtonType(appleButton(style));
}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn>
TovrelUserAccountConfiguration::SignIn::signInButtonCornerRadius(double cornerRadius) {
    signInButtonCornerRadius_ = cornerRadius;
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn>
TovrelUserAccountConfiguration::SignIn::toggleColor(Color color) {
    toggleColor_ = std::move(color);
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn>
TovrelUserAccountConfiguration::SignIn::titleColor(Color color) {
    titleColor_ = std::move(color);
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn> TovrelUserAccountConfiguration::SignIn::bodyColor(Color color) {
    bodyColor_ = std::move(color);
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn>
TovrelUserAccountConfiguration::SignIn::consentTextColor(Color color) {
    consentTextColor_ = std::move(color);
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn>
TovrelUserAccountConfiguration::SignIn::consentBorderColor(Color color) {
    consentBorderColor_ = std::move(color);
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn>
TovrelUserAccountConfiguration::SignIn::consentBackgroundColor(Color color) {
    consentBackgroundColor_ = std::move(color);
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn>
TovrelUserAccountConfiguration::SignIn::closeForegroundColor(Color color) {
    closeForegroundColor_ = std::move(color);
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn>
TovrelUserAccountConfiguration::SignIn::closeBackgroundColor(Color color) {
    closeBackgroundColor_ = std::move(color);
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn>
TovrelUserAccountConfiguration::SignIn::hasCloseButton(bool hasButton) {
    hasCloseButton_ = hasButton;
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn>
TovrelUserAccountConfiguration::SignIn::backgroundView(AnyView view) {
    backgroundView_ = std::move(view);
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn> TovrelUserAccountConfiguration::SignIn::icon(Icon icon) {
    icon_ = std::move(icon);
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn> TovrelUserAccountConfiguration::SignIn::icon(AnyView view) {
    return icon(Icon::custom(std::move(view)));
}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn>
TovrelUserAccountConfiguration::SignIn::loadingType(LoadingType type) {
    loadingType_ = std::move(type);
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn>
TovrelUserAccountConfiguration::SignIn::titleFont(ContentFont font) {
    titleFont_ = font;
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn>
TovrelUserAccountConfiguration::SignIn::bodyFont(ContentFont font) {
    bodyFont_ = font;
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::SignIn>
TovrelUserAccountConfiguration::SignIn::consentTextFont(ContentFont font) {
    consentTextFont_ = font;
    return shared_from_this();
}

TovrelUserAccountConfiguration::ManageAccount::ManageAccount()
    : marketingConsentContentFont_(Font::body(), Font::Weight::regular),
      toggleColor_(Color::green()),
      logoutContentFont_(Font::body(), Font::Weight::regular),
      logoutColor_(Color::accent()),
      deleteAccountContentFont_(Font::body(), Font::Weight::regular),
      deleteAccountColor_(Color::red()),
      loadingType_(LoadingType::default_()) {}

std::shared_ptr<TovrelUserAccountConfiguration::ManageAccount> TovrelUserAccountConfiguration::ManageAccount::make() {
    return std::shared_ptr<ManageAccount>(new ManageAccount());
}

std::shared_ptr<TovrelUserAccountConfiguration::ManageAccount>
TovrelUserAccountConfiguration::ManageAccount::marketingConsentContentFont(ContentFont font) {
    marketingConsentContentFont_ = font;
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::ManageAccount>
TovrelUserAccountConfiguration::ManageAccount::toggleColor(Color color) {
    toggleColor_ = std::move(color);
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::ManageAccount>
TovrelUserAccountConfiguration::ManageAccount::logoutContentFont(ContentFont font) {
    logoutContentFont_ = font;
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::ManageAccount>
TovrelUserAccountConfiguration::ManageAccount::logoutColor(Color color) {
    logoutColor_ = std::move(color);
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::ManageAccount>
TovrelUserAccountConfiguration::ManageAccount::deleteAccountContentFont(ContentFont font) {
    deleteAccountContentFont_ = font;
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::ManageAccount>
TovrelUserAccountConfiguration::ManageAccount::deleteAccountColor(Color color) {
    deleteAccountColor_ = std::move(color);
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::ManageAccount>
TovrelUserAccountConfiguration::ManageAccount::navigationBarStyle(NavigationBarItem::TitleDisplayMode style) {
    navigationBarStyle_ = style;
    return shared_from_this();
}

std::shared_ptr<TovrelUserAccountConfiguration::ManageAccount>
TovrelUserAccountConfiguration::ManageAccount::loadingType(LoadingType type) {
    loadingType_ = std::move(type);
    return shared_from_this();
}

} // namespace tovrel
