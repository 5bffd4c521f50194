#pragma once

#include <TovrelWebServices/AccountScreens/TovrelUserAccountConfiguration.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountManageViewModel.hpp>
#include <TovrelWebServices/AccountScreens/Views/AccountScreenItem.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/HostedView.hpp>

#include <memory>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtQml/qqmlregistration.h>

namespace tovrel {

/// The root of the manage-account screen: its model, and its configuration in the current appearance.
class ManageScreenItem : public tovrel::AccountScreenItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tovrel::TovrelUserAccountManageViewModel* model READ model NOTIFY modelChanged FINAL)
    Q_PROPERTY(TitleMode titleMode READ titleMode NOTIFY modelChanged FINAL)
    Q_PROPERTY(tovrel::ViewSource loadingView READ loadingView NOTIFY modelChanged FINAL)
    Q_PROPERTY(QColor toggleColor READ toggleColor NOTIFY styleChanged FINAL)
    Q_PROPERTY(QColor logoutColor READ logoutColor NOTIFY styleChanged FINAL)
    Q_PROPERTY(QColor deleteAccountColor READ deleteAccountColor NOTIFY styleChanged FINAL)
    Q_PROPERTY(QFont marketingConsentFont READ marketingConsentFont NOTIFY styleChanged FINAL)
    Q_PROPERTY(QFont logoutFont READ logoutFont NOTIFY styleChanged FINAL)
    Q_PROPERTY(QFont deleteAccountFont READ deleteAccountFont NOTIFY styleChanged FINAL)

public:
    enum class TitleMode { Automatic, Inline, Large };
    Q_ENUM(TitleMode)

    using Config = TovrelUserAccountConfiguration::ManageAccount;

    explicit ManageScreenItem(QQuickItem* parent = nullptr);
    ~ManageScreenItem() override;

    /// To be called once.
    void show(std::shared_ptr<TovrelUserAccountManageViewModel> model, std::shared_ptr<Config> config);

    [[nodiscard]] TovrelUserAccountManageViewModel* model() const { return model_.get(); }
    [[nodiscard]] TitleMode titleMode() const;
    [[nodiscard]] ViewSource loadingView() const;
    [[nodiscard]] QColor toggleColor() const { return resolved(config_->toggleColor()); }
    [[nodiscard]] QColor logoutColor() const { return resolved(config_->logoutColor()); }
    [[nodiscard]] QColor deleteAccountColor() const { return resolved(config_->deleteAccountColor()); }
    [[nodiscard]] QFont marketingConsentFont() const;
    [[nodiscard]] QFont logoutFont() const;
    [[nodiscard]] QFont deleteAccountFont() const;

Q_SIGNALS:
    void modelChanged();

private:
    [[nodiscard]] static QColor resolved(const Color& color);

    std::shared_ptr<TovrelUserAccountManageViewModel> model_;
    std::shared_ptr<Config> config_;
};

} // namespace tovrel
