#include "ScreenTest.hpp"

#include <QZFrameworkCoreUI/ViewController.hpp>
#include <TovrelWebServices/AccountScreens/CurrentAppearance.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountView.hpp>
#include <TovrelWebServices/AccountScreens/Views/AccountScreenItem.hpp>
#include <TovrelWebServices/AccountScreens/Views/QtApplication.hpp>
#include <TovrelWebServices/AccountScreens/Views/SignInButtonArtwork.hpp>
#include <TovrelWebServices/AccountScreens/Views/TovrelSignInButtonView.hpp>
#include <TovrelWebServices/AccountScreens/Views/TovrelUserAccountSource.hpp>
#include <TovrelWebServices/SignIn/TovrelAccountTopPresentedScreenHelper.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <gtest/gtest.h>

#include <QtGui/QFont>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <string>
#include <vector>

namespace tovrel::tests {

namespace {

using Calls = std::vector<std::string>;
using LoadingType = TovrelUserAccountConfiguration::LoadingType;
using Operation = testing::FakeTovrelAccountsCall::Operation;

class HostFormsTest : public ScreenTest {
protected:
    void showController(const std::shared_ptr<ViewController>& made) {
        controller_ = HostingController::from(made);
        ASSERT_NE(controller_, nullptr);
        window().show();
        handleEvents();
    }

    void showAccount() {
        showController(getInEventLoop(
            builder_.userAccountViewController(LoadingType::default_(), signInConfig_, manageConfig_, observer_)));
    }

    void finish() {
        ASSERT_TRUE(processEventsUntilIdle());
        handleEvents();
    }

    void beLoggedOut() {
        accounts_->answerIsLoggedIn([](TovrelAccountsType) { return false; });
    }
};

} // namespace

TEST_F(HostFormsTest, TheBuildersControllersAreWindowsReadyToShow) {
    showController(getInEventLoop(builder_.signInViewController(signInConfig_, observer_)));
    EXPECT_EQ(textOf(item("title")), "Sign in to Your Account");
    EXPECT_EQ(root().size(), QSizeF(390, 700));
    close();
    showController(builder_.manageAccountViewController(manageConfig_, observer_));
    EXPECT_NE(find("logoutRow"), nullptr);
    EXPECT_EQ(HostingController::from(nullptr), nullptr);
}

TEST_F(HostFormsTest, TheCombinedScreenGoesFromLoadingToTheManageScreen) {
    accounts_->hold();
    showAccount();
    EXPECT_NE(find("loadingBox"), nullptr);
    accounts_->release();
    finish();
    EXPECT_EQ(find("loadingBox"), nullptr);
    EXPECT_NE(find("logoutRow"), nullptr);
    EXPECT_EQ(accounts_->callCount(Operation::userHasSignedUp), 0U);
    EXPECT_EQ(observer_->calls, Calls{"appear manageAccount"});
}

TEST_F(HostFormsTest, TheCombinedScreenGoesFromLoadingToTheSignInScreen) {
    beLoggedOut();
    accounts_->answerUserHasSignedUp([](TovrelAccountsType) { return false; });
    showAccount();
    finish();
    EXPECT_EQ(textOf(item("title")), "Create Your Account");
    EXPECT_EQ(find("loadingBox"), nullptr);
    press(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), "closeButton");
    press(Qt::Key_Return);
    finish();
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(observer_->calls, (Calls{"appear signIn", "disappear signIn"}));
}

TEST_F(HostFormsTest, TheCombinedScreenKeepsLoadingWhenTheQuestionFails) {
    accounts_->answerIsLoggedIn([](TovrelAccountsType) -> bool { throw WebServiceError::timedOut(); });
    showAccount();
    finish();
    EXPECT_NE(find("loadingBox"), nullptr);
    EXPECT_EQ(find("title"), nullptr);
}

TEST_F(HostFormsTest, TheCombinedScreenShowsTheHostsLoadingView) {
    accounts_->hold();
    const auto view = getInEventLoop(
        builder_.userAccountView(LoadingType::customised(Color(QColor("#123456")), Color(QColor("#ABCDEF"))),
                                 signInConfig_, manageConfig_, observer_));
    show(view->body());
    EXPECT_EQ(colorOf(item("loadingBox")), QColor("#123456"));
    EXPECT_EQ(item("loadingBox").size(), QSizeF(100, 100));
    EXPECT_EQ(item("loadingBox").property("radius").toDouble(), 18);
    EXPECT_EQ(rectOf(item("loadingBox")).center(), QPointF(195, 350));
    // A tenth of black over white.
    EXPECT_EQ(grab().pixelColor(3, 3).red(), 230);
}

TEST_F(HostFormsTest, TheCombinedScreenMayBeClosedWhileItDecides) {
    accounts_->hold();
    beLoggedOut();
    showAccount();
    close();
    accounts_->release();
    EXPECT_TRUE(processEventsUntilIdle());
    EXPECT_TRUE(observer_->calls.empty());
}

TEST_F(HostFormsTest, TheCombinedScreenDecidesAnewEachTimeItAppears) {
    showAccount();
    finish();
    EXPECT_NE(find("logoutRow"), nullptr);
    window().hide();
    beLoggedOut();
    window().show();
    finish();
    EXPECT_EQ(find("logoutRow"), nullptr);
    EXPECT_NE(find("title"), nullptr);
}

TEST_F(HostFormsTest, TheTopPresentedScreenIsTheOneInFront) {
    const auto back = HostingController::make(AnyView::empty());
    back->window().show();
    const auto application = QtApplication::make(QtWindow::make(back));
    const Registration<Application> registered(application);
    EXPECT_EQ(TovrelAccountTopPresentedScreenHelper::viewController(), back);

    auto made = getInEventLoop(builder_.signInViewController(signInConfig_, observer_));
    controller_ = HostingController::from(made);
    back->present(controller_);
    handleEvents();
    EXPECT_EQ(TovrelAccountTopPresentedScreenHelper::viewController(), made);
    observer_->dismissesItself = false;
    click(item("signInButton"));
    service_->end(Accounts::exampleToken());
    finish();
    EXPECT_EQ(observer_->topViewController, made);
    EXPECT_TRUE(window().isVisible());

    press(Qt::Key_Escape);
    finish();
    EXPECT_EQ(TovrelAccountTopPresentedScreenHelper::viewController(), back);
    observer_->topViewController.reset();
    application->setWindow(nullptr);
    EXPECT_EQ(TovrelAccountTopPresentedScreenHelper::viewController(), nullptr);
}

TEST_F(HostFormsTest, AControllerTakesWhatItPresentsWithIt) {
    auto back = HostingController::make(AnyView::empty());
    back->window().show();
    for (int i = 0; i < 2; ++i) {
        back->present(HostingController::from(builder_.manageAccountViewController(manageConfig_, observer_)));
        handleEvents();
    }
    EXPECT_NE(back->presentedViewController(), nullptr);
    back.reset();
    handleEvents();
    const Calls once{"appear manageAccount", "disappear manageAccount"};
    Calls twice = once;
    twice.insert(twice.end(), once.begin(), once.end());
    EXPECT_EQ(observer_->calls, twice);
}

TEST_F(HostFormsTest, AWindowOfQtsIsTheKeyWindowWhileItIsActive) {
    QQuickWindow plain;
    const auto adapter = QtWindow::make(plain, nullptr);
    EXPECT_FALSE(adapter->isKeyWindow());
    EXPECT_EQ(adapter->rootViewController(), nullptr);
    plain.show();
    plain.requestActivate();
    EXPECT_TRUE(processEventsUntil([&] { return adapter->isKeyWindow(); }));
}

TEST_F(HostFormsTest, AViewMakesAnItemForAHostsOwnScene) {
    const auto view = getInEventLoop(builder_.signInView(signInConfig_, observer_));
    QQmlEngine engine;
    QQuickWindow host;
    host.resize(600, 400);
    auto* made = qobject_cast<AccountScreenItem*>(view.body().make(engine, *host.contentItem()));
    ASSERT_NE(made, nullptr);
    made->setSize(QSizeF(320, 400));
    QSignalSpy dismissals(made, &AccountScreenItem::dismissed);
    EXPECT_FALSE(made->isShown());
    host.show();
    EXPECT_TRUE(made->isShown());
    view.viewModel->onCloseButtonTap();
    handleEvents();
    EXPECT_EQ(dismissals.count(), 1);
    EXPECT_TRUE(host.isVisible());
}

TEST_F(HostFormsTest, AHostsQmlShowsEachScreen) {
    beLoggedOut();
    QQmlEngine engine;
    TovrelUserAccountSource source(builder_);
    source.observer = observer_;
    QQmlComponent component(&engine);
    component.setData(R"(
        import QtQuick
        import Tovrel.AccountScreens
        Window {
            property alias screen: account.screen
            property alias source: account.source
            property int dismissals: 0
            width: 390; height: 700; visible: true
            TovrelUserAccount { id: account; anchors.fill: parent; focus: true; onDismissed: dismissals++ }
        })",
                      QUrl());
    const std::unique_ptr<QObject> made(component.create());
    auto* host = qobject_cast<QQuickWindow*>(made.get());
    ASSERT_NE(host, nullptr) << component.errorString().toStdString();
    const auto shows = [&](const char* name) { return !findAllIn(*host, name).empty(); };
    finish();
    EXPECT_FALSE(shows("title"));
    host->setProperty("source", QVariant::fromValue(&source));
    finish();
    EXPECT_TRUE(shows("title"));
    host->setProperty("screen", 2);
    finish();
    EXPECT_TRUE(shows("logoutRow"));
    EXPECT_FALSE(shows("title"));
    host->setProperty("screen", 1);
    finish();
    EXPECT_TRUE(shows("title"));
    host->requestActivate();
    ASSERT_TRUE(processEventsUntil([&] { return host->isActive(); }));
    QTest::keyClick(host, Qt::Key_Escape);
    handleEvents();
    EXPECT_EQ(host->property("dismissals").toInt(), 1);
}

TEST_F(HostFormsTest, TheSignInButtonIsDrawnByItself) {
    using Config = TovrelAppleSignInButtonConfig;
    const auto config = Config::make(Config::Style::black, Config::ButtonType::continue_, 7);
    const TovrelSignInButtonRepresentable view(TovrelSignInButtonType::apple(config));
    show(signInButtonView(view), QSize(400, 60));
    EXPECT_EQ(textOf(item("caption")), "Continue with Apple");
    EXPECT_EQ(item("signInSurface").property("radius").toDouble(), 7);
    EXPECT_EQ(item("signInButton").size(), QSizeF(400, 60));
    EXPECT_EQ(item("caption").property("font").value<QFont>().pixelSize(), 26);
    resize(QSize(100, 20));
    EXPECT_EQ(item("signInButton").size(), QSizeF(140, 30));
    EXPECT_LE(rectOf(item("signInCaption")).width(), 140 - 2 * 3);
}

TEST_F(HostFormsTest, ADefaultButtonIsReplacedWithTheAppearanceAndKeepsItsRadius) {
    using Config = TovrelAppleSignInButtonConfig;
    for (const auto style : {Config::Style::default_, Config::Style::white, Config::Style::black}) {
        const TovrelSignInButtonRepresentable view(
            TovrelSignInButtonType::apple(Config::make(style, Config::ButtonType::signIn, 9)));
        show(signInButtonView(view), QSize(300, 60));
        for (const auto appearance : {UserInterfaceStyle::dark, UserInterfaceStyle::light}) {
            CurrentAppearance::choose(appearance);
            const bool isBlack = style == Config::Style::black ||
                                 (style == Config::Style::default_ && appearance == UserInterfaceStyle::light);
            EXPECT_EQ(colorOf(item("signInSurface")), isBlack ? QColor("#000000") : QColor("#FFFFFF"));
            EXPECT_EQ(colorOf(item("caption")), isBlack ? QColor("#FFFFFF") : QColor("#000000"));
            EXPECT_EQ(item("signInSurface").property("radius").toDouble(), 9);
        }
        close();
    }
}

TEST_F(HostFormsTest, TheButtonTakesTheHostsArtwork) {
    std::vector<AppleIDButtonStyle> styles;
    SignInButtonArtwork::choose([&](AppleIDButtonStyle style) {
        styles.push_back(style);
        return AnyView([](QQmlEngine&, QQuickItem&) {
            auto* logo = new QQuickItem();
            logo->setObjectName("logo");
            return logo;
        });
    });
    showSignIn();
    EXPECT_EQ(rectOf(item("logo")).size(), QSizeF(22, 22));
    EXPECT_EQ(item("artworkSlot").size(), QSizeF(22, 22));
    CurrentAppearance::choose(UserInterfaceStyle::dark);
    handleEvents();
    EXPECT_EQ(styles.back(), AppleIDButtonStyle::white);
    EXPECT_NE(find("logo"), nullptr);
    SignInButtonArtwork::choose(nullptr);
}

} // namespace tovrel::tests
