#pragma once

#include <TovrelWebServices/AccountScreens/TovrelUserAccountSignInViewModel.hpp>
#include <TovrelWebServices/AccountScreens/Views/AccountScreenItem.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/HostedView.hpp>

#include <memory>
#include <QtCore/QUrl>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtQml/qqmlregistration.h>

namespace tovrel {

/// The root of the sign-in screen: its model, and its configuration in the current appearance.
class SignInScreenItem : public tovrel::AccountScreenItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tovrel::TovrelUserAccountSignInViewModel* model READ model NOTIFY modelChanged FINAL)
    Q_PROPERTY(tovrel::ViewSource backgroundView READ backgroundView NOTIFY modelChanged FINAL)
    Q_PROPERTY(QUrl iconImage READ iconImage NOTIFY modelChanged FINAL)
    Q_PROPERTY(tovrel::ViewSource iconView READ iconView NOTIFY modelChanged FINAL)
    Q_PROPERTY(tovrel::ViewSource loadingView READ loadingView NOTIFY modelChanged FINAL)
    Q_PROPERTY(tovrel::ViewSource buttonView READ buttonView NOTIFY modelChanged FINAL)
    Q_PROPERTY(double buttonHeight READ buttonHeight NOTIFY modelChanged FINAL)
    Q_PROPERTY(bool isSignUp READ isSignUp NOTIFY modelChanged FINAL)
    Q_PROPERTY(bool hasCloseButton READ hasCloseButton NOTIFY modelChanged FINAL)
    Q_PROPERTY(QColor titleColor READ titleColor NOTIFY styleChanged FINAL)
    Q_PROPERTY(QColor bodyColor READ bodyColor NOTIFY styleChanged FINAL)
    Q_PROPERTY(QColor toggleColor READ toggleColor NOTIFY styleChanged FINAL)
    Q_PROPERTY(QColor consentTextColor READ consentTextColor NOTIFY styleChanged FINAL)
    Q_PROPERTY(QColor consentBorderColor READ consentBorderColor NOTIFY styleChanged FINAL)
    Q_PROPERTY(QColor consentBackgroundColor READ consentBackgroundColor NOTIFY styleChanged FINAL)
    Q_PROPERTY(QColor closeForegroundColor READ closeForegroundColor NOTIFY styleChanged FINAL)
    Q_PROPERTY(QColor closeBackgroundColor READ closeBackgroundColor NOTIFY styleChanged FINAL)
    Q_PROPERTY(QFont titleFont READ titleFont NOTIFY styleChanged FINAL)
    Q_PROPERTY(QFont bodyFont READ bodyFont NOTIFY styleChanged FINAL)
    Q_PROPERTY(QFont consentTextFont READ consentTextFont NOTIFY styleChanged FINAL)

public:
    explicit SignInScreenItem(QQuickItem* parent = nullptr);
    ~SignInScreenItem() override;

    /// To be called once. Makes the model's sign-in button.
    void show(std::shared_ptr<TovrelUserAccountSignInViewModel> model);

    [[nodiscard]] TovrelUserAccountSignInViewModel* model() const { return model_.get(); }
    [[nodiscard]] ViewSource backgroundView() const;
    [[nodiscard]] QUrl iconImage() const;
    [[nodiscard]] ViewSource iconView() const;
    [[nodiscard]] ViewSource loadingView() const;
    [[nodiscard]] ViewSource buttonView() const { return buttonView_; }
    [[nodiscard]] double buttonHeight() const { return buttonHeight_; }
    [[nodiscard]] bool isSignUp() const;
    [[nodiscard]] bool hasCloseButton() const { return config().hasCloseButton(); }
    [[nodiscard]] QColor titleColor() const { return resolved(config().titleColor()); }
    [[nodiscard]] QColor bodyColor() const { return resolved(config().bodyColor()); }
    [[nodiscard]] QColor toggleColor() const { return resolved(config().toggleColor()); }
    [[nodiscard]] QColor consentTextColor() const { return resolved(config().consentTextColor()); }
    [[nodiscard]] QColor consentBorderColor() const { return resolved(config().consentBorderColor()); }
    [[nodiscard]] QColor consentBackgroundColor() const { return resolved(config().consentBackgroundColor()); }
    [[nodiscard]] QColor closeForegroundColor() const { return resolved(config().closeForegroundColor()); }
    [[nodiscard]] QColor closeBackgroundColor() const { return resolved(config().closeBackgroundColor()); }
    [[nodiscard]] QFont titleFont() const;
    [[nodiscard]] QFont bodyFont() const;
    [[nodiscard]] QFont consentTextFont() const;

Q_SIGNALS:
    void modelChanged();

private:
    [[nodiscard]] const TovrelUserAccountConfiguration::SignIn& config() const { return *model_->config(); }
    [[nodiscard]] static QColor resolved(const Color& color);

    std::shared_ptr<TovrelUserAccountSignInViewModel> model_;
    ViewSource buttonView_;
    double buttonHeight_ = 0;
};

} // namespace tovrel
