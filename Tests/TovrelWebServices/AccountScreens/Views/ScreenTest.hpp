#pragma once

#include "../HostScreens.hpp"
#include "../Observer.hpp"
#include "../ScriptedSignInService.hpp"

#include <TovrelTesting/FakeTovrelAccountsWebService.hpp>
#include <TovrelTesting/FakeWebRequestExecutor.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountScreens.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountViewBuilder.hpp>
#include <TovrelWebServices/AccountScreens/Views/HostingController.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <QtCore/QPointF>
#include <QtCore/QSize>
#include <QtCore/Qt>
#include <QtGui/QImage>
#include <string>
#include <Support/EventLoop.hpp>
#include <vector>

namespace tovrel::tests {

/// Shows account screens in a real window without a display, and plays their user. A test fails when Qt warns.
class ScreenTest : public ScreensTest {
protected:
    using Configuration = TovrelUserAccountConfiguration;
    using Accounts = testing::FakeTovrelAccountsWebService;

    ScreenTest();
    ~ScreenTest() override;

    void SetUp() override;
    void TearDown() override;

    /// Shows a view in a window of this size.
    void show(const AnyView& view, QSize size = QSize(390, 700));
    /// Shows the sign-in screen of a new or a returning user.
    void showSignIn(bool userHasSignedUp = false, QSize size = QSize(390, 700));
    void showManage(QSize size = QSize(390, 700));
    void resize(QSize size);
    void close();

    [[nodiscard]] QQuickWindow& window() const { return controller_->window(); }
    [[nodiscard]] QQuickItem& root() const { return *controller_->rootItem(); }

    /// The visible item of this name, in the screen or in front of it; null when there is none.
    [[nodiscard]] QQuickItem* find(const std::string& name) const;
    /// As `find`, which must find it.
    [[nodiscard]] QQuickItem& item(const std::string& name) const;
    /// Every visible item of this name in a window.
    [[nodiscard]] static std::vector<QQuickItem*> findAllIn(const QQuickWindow& window, const std::string& name);
    /// Every visible item of this name.
    [[nodiscard]] std::vector<QQuickItem*> findAll(const std::string& name) const;
    /// The item's place in the window.
    [[nodiscard]] static QRectF rectOf(const QQuickItem& item);
    [[nodiscard]] static std::string textOf(const QQuickItem& item);
    [[nodiscard]] static QColor colorOf(const QQuickItem& item, const char* property = "color");
    /// The name of the nearest item with a name that has the keyboard's focus.
    [[nodiscard]] std::string focusedName() const;

    void click(QQuickItem& item);
    void click(QPointF position);
    void touch(QPointF position);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void handleEvents();
    /// Takes back the warnings so far, of which there has to be one with these words.
    void expectWarning(const std::string& words);
    [[nodiscard]] QImage grab();

    std::shared_ptr<Accounts> accounts_ = Accounts::make(testing::FakeWebRequestExecutor::make());
    std::shared_ptr<ScriptedSignInService> service_ = std::make_shared<ScriptedSignInService>();
    std::shared_ptr<Observer> observer_ = std::make_shared<Observer>();
    std::shared_ptr<Configuration::SignIn> signInConfig_ = Configuration::SignIn::make();
    std::shared_ptr<Configuration::ManageAccount> manageConfig_ = Configuration::ManageAccount::make();
    TovrelUserAccountViewBuilder builder_{TovrelUserAccountsType::appleSignIn, accounts_};
    std::shared_ptr<TovrelUserAccountSignInViewModel> signInModel_;
    std::shared_ptr<TovrelUserAccountManageViewModel> manageModel_;
    std::shared_ptr<HostingController> controller_;

private:
    Registration<TovrelAppleSignInService> registration_{service_};
};

} // namespace tovrel::tests
