#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelWebServices/AccountScreens/AnyView.hpp>
#include <TovrelWebServices/AccountScreens/Color.hpp>
#include <TovrelWebServices/AccountScreens/Font.hpp>
#include <TovrelWebServices/AccountScreens/Image.hpp>
#include <TovrelWebServices/AccountScreens/NavigationBarItem.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInButtonConfig.hpp>
#include <TovrelWebServices/SignIn/TovrelSignInButtonType.hpp>

#include <memory>
#include <optional>
#include <utility>
#include <variant>

namespace tovrel {

/// How a host styles the account screens. Everything has a default.
class TOVREL_EXPORT TovrelUserAccountConfiguration {
public:
    TovrelUserAccountConfiguration() = delete;

    struct ContentFont;
    class LoadingType;
    class SignIn;
    class ManageAccount;
};

/// A font and the weight applied to it.
struct TOVREL_EXPORT TovrelUserAccountConfiguration::ContentFont {
    Font type;
    Font::Weight weight;

    constexpr ContentFont(Font fontType, Font::Weight fontWeight) : type(fontType), weight(fontWeight) {}

    friend constexpr bool operator==(const ContentFont&, const ContentFont&) = default;
};

/// What covers a screen while it waits.
class TOVREL_EXPORT TovrelUserAccountConfiguration::LoadingType {
public:
    enum class Kind { customised, custom, default_ };

    /// The library's loading view in these colours.
    [[nodiscard]] static LoadingType customised(Color backgroundColor, Color tintColor);
    /// The given view as it is.
    [[nodiscard]] static LoadingType custom(AnyView view);
    /// The library's loading view in the library's colours.
    [[nodiscard]] static LoadingType default_();

    [[nodiscard]] Kind kind() const { return kind_; }

    /// The colours of the library's loading view; for `custom` those of `default_`, unused.
    [[nodiscard]] const Color& backgroundColor() const { return backgroundColor_; }
    [[nodiscard]] const Color& tintColor() const { return tintColor_; }

    /// The view of `custom`; empty for the others.
    [[nodiscard]] const AnyView& view() const { return view_; }

private:
    LoadingType(Kind kind, Color backgroundColor, Color tintColor, AnyView view);

    Kind kind_;
    Color backgroundColor_;
    Color tintColor_;
    AnyView view_;
};

/// The sign-in screen's styling. The screens read it when they are made; setters return the object itself, so that they
/// chain. For the main thread only.
class TOVREL_EXPORT TovrelUserAccountConfiguration::SignIn final
    : public std::enable_shared_from_this<TovrelUserAccountConfiguration::SignIn> {
public:
    /// What stands above the title.
    class Icon {
    public:
        [[nodiscard]] static Icon image(Image image) { return Icon(std::move(image)); }
        [[nodiscard]] static Icon custom(AnyView view) { return Icon(std::move(view)); }

        /// The picture of an `image`; null for `custom`.
        [[nodiscard]] const Image* image() const { return std::get_if<Image>(&content_); }
        /// The view of `custom`; null for an `image`.
        [[nodiscard]] const AnyView* custom() const { return std::get_if<AnyView>(&content_); }

    private:
        explicit Icon(std::variant<Image, AnyView> content) : content_(std::move(content)) {}

        std::variant<Image, AnyView> content_;
    };

    /// With every default.
    [[nodiscard]] static std::shared_ptr<SignIn> make();

    /// Drawn from edge to edge behind everything; absent for the screen's plain background.
    [[nodiscard]] const std::optional<AnyView>& backgroundView() const { return backgroundView_; }
    /// An empty view by default.
    [[nodiscard]] const Icon& icon() const { return icon_; }
    [[nodiscard]] const Color& titleColor() const { return titleColor_; }
    [[nodiscard]] const Color& bodyColor() const { return bodyColor_; }
    [[nodiscard]] const Color& toggleColor() const { return toggleColor_; }
    [[nodiscard]] const Color& consentTextColor() const { return consentTextColor_; }
    [[nodiscard]] const Color& consentBorderColor() const { return consentBorderColor_; }
    [[nodiscard]] const Color& consentBackgroundColor() const { return consentBackgroundColor_; }
    [[nodiscard]] const Color& closeForegroundColor() const { return closeForegroundColor_; }
    [[nodiscard]] const Color& closeBackgroundColor() const { return closeBackgroundColor_; }
    [[nodiscard]] bool hasCloseButton() const { return hasCloseButton_; }
    [[nodiscard]] const LoadingType& loadingType() const { return loadingType_; }
    /// A button of Sign in with Apple in its default style.
    [[nodiscard]] const TovrelSignInButtonType& signInButtonType() const { return signInButtonType_; }
    /// In points; 12 by default. It takes the place of the button configuration's own radius.
    [[nodiscard]] double signInButtonCornerRadius() const { return signInButtonCornerRadius_; }
    [[nodiscard]] const ContentFont& titleFont() const { return titleFont_; }
    [[nodiscard]] const ContentFont& bodyFont() const { return bodyFont_; }
    [[nodiscard]] const ContentFont& consentTextFont() const { return consentTextFont_; }

    std::shared_ptr<SignIn> signInButtonType(TovrelSignInButtonType type);
    std::shared_ptr<SignIn> signInButtonCornerRadius(double cornerRadius);
    /// A button of Sign in with Apple in this style and nothing else of an earlier `signInButtonType`.
    std::shared_ptr<SignIn> signInAppleButtonConfigStyle(TovrelAppleSignInButtonConfig::Style style);
    std::shared_ptr<SignIn> toggleColor(Color color);
    std::shared_ptr<SignIn> titleColor(Color color);
    std::shared_ptr<SignIn> bodyColor(Color color);
    std::shared_ptr<SignIn> consentTextColor(Color color);
    std::shared_ptr<SignIn> consentBorderColor(Color color);
    std::shared_ptr<SignIn> consentBackgroundColor(Color color);
    std::shared_ptr<SignIn> closeForegroundColor(Color color);
    std::shared_ptr<SignIn> closeBackgroundColor(Color color);
    std::shared_ptr<SignIn> hasCloseButton(bool hasButton);
    std::shared_ptr<SignIn> backgroundView(AnyView view);
    std::shared_ptr<SignIn> icon(Icon icon);
    /// `icon(Icon::custom(view))`
    std::shared_ptr<SignIn> icon(AnyView view);
    std::shared_ptr<SignIn> loadingType(LoadingType type);
    std::shared_ptr<SignIn> titleFont(ContentFont font);
    std::shared_ptr<SignIn> bodyFont(ContentFont font);
    std::shared_ptr<SignIn> consentTextFont(ContentFont font);

private:
    SignIn();

    std::optional<AnyView> backgroundView_;
    Icon icon_;
    Color titleColor_;
    Color bodyColor_;
    Color toggleColor_;
    Color consentTextColor_;
    Color consentBorderColor_;
    Color consentBackgroundColor_;
    Color closeForegroundColor_;
    Color closeBackgroundColor_;
    bool hasCloseButton_ = true;
    LoadingType loadingType_;
    TovrelSignInButtonType signInButtonType_;
    double signInButtonCornerRadius_ = 12;
    ContentFont titleFont_;
    ContentFont bodyFont_;
    ContentFont consentTextFont_;
};

/// The manage-account screen's styling. As `SignIn`.
class TOVREL_EXPORT TovrelUserAccountConfiguration::ManageAccount final
    : public std::enable_shared_from_this<TovrelUserAccountConfiguration::ManageAccount> {
public:
    /// With every default.
    [[nodiscard]] static std::shared_ptr<ManageAccount> make();

    [[nodiscard]] const ContentFont& marketingConsentContentFont() const { return marketingConsentContentFont_; }
    [[nodiscard]] const Color& toggleColor() const { return toggleColor_; }
    [[nodiscard]] const ContentFont& logoutContentFont() const { return logoutContentFont_; }
    [[nodiscard]] const Color& logoutColor() const { return logoutColor_; }
    [[nodiscard]] const ContentFont& deleteAccountContentFont() const { return deleteAccountContentFont_; }
    [[nodiscard]] const Color& deleteAccountColor() const { return deleteAccountColor_; }
    [[nodiscard]] NavigationBarItem::TitleDisplayMode navigationBarStyle() const { return navigationBarStyle_; }
    [[nodiscard]] const LoadingType& loadingType() const { return loadingType_; }

    std::shared_ptr<ManageAccount> marketingConsentContentFont(ContentFont font);
    std::shared_ptr<ManageAccount> toggleColor(Color color);
    std::shared_ptr<ManageAccount> logoutContentFont(ContentFont font);
    std::shared_ptr<ManageAccount> logoutColor(Color color);
    std::shared_ptr<ManageAccount> deleteAccountContentFont(ContentFont font);
    std::shared_ptr<ManageAccount> deleteAccountColor(Color color);
    std::shared_ptr<ManageAccount> navigationBarStyle(NavigationBarItem::TitleDisplayMode style);
    std::shared_ptr<ManageAccount> loadingType(LoadingType type);

private:
    ManageAccount();

    ContentFont marketingConsentContentFont_;
    Color toggleColor_;
    ContentFont logoutContentFont_;
    Color logoutColor_;
    ContentFont deleteAccountContentFont_;
    Color deleteAccountColor_;
    NavigationBarItem::TitleDisplayMode navigationBarStyle_ = NavigationBarItem::TitleDisplayMode::automatic;
    LoadingType loadingType_;
};

} // namespace tovrel
