#include "ScreenTest.hpp"

#include <TovrelWebServices/AccountScreens/CurrentAppearance.hpp>
#include <TovrelWebServices/AccountScreens/ScreenLanguage.hpp>
#include <TovrelWebServices/AccountScreens/Views/ScreenTextSize.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <gtest/gtest.h>

#include <QtGui/QFont>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <string>
#include <vector>

namespace tovrel::tests {

namespace {

using Calls = std::vector<std::string>;
using Operation = testing::FakeTovrelAccountsCall::Operation;

class ManageScreenTest : public ScreenTest {
protected:
    void finish() {
        ASSERT_TRUE(processEventsUntilIdle());
        handleEvents();
    }

    [[nodiscard]] std::size_t logouts() const { return accounts_->callCount(Operation::logout); }
    [[nodiscard]] std::size_t deletions() const { return accounts_->callCount(Operation::deleteAccount); }
};

} // namespace

TEST_F(ManageScreenTest, ListsConsentBeforeTheAccountsActions) {
    showManage();
    EXPECT_EQ(textOf(item("largeTitle")), "Account Details");
    const auto titles = findAll("sectionTitle");
    ASSERT_EQ(titles.size(), 2U);
    EXPECT_EQ(textOf(*titles[0]), "Consent");
    EXPECT_EQ(textOf(*titles[1]), "Manage Account");
    EXPECT_EQ(textOf(item("consentSwitch")), "Use Email for Marketing Purposes");
    EXPECT_EQ(textOf(item("logoutRow")), "Logout");
    EXPECT_EQ(textOf(item("deleteAccountRow")), "Delete Account");
    EXPECT_LT(rectOf(*titles[0]).bottom(), rectOf(item("consentSwitch")).top());
    EXPECT_LT(rectOf(item("consentSwitch")).bottom(), rectOf(*titles[1]).top());
    EXPECT_LT(rectOf(*titles[1]).bottom(), rectOf(item("logoutRow")).top());
    EXPECT_LE(rectOf(item("logoutRow")).bottom(), rectOf(item("deleteAccountRow")).top());
    EXPECT_EQ(findAll("consentSwitch").size(), 1U);
    EXPECT_EQ(findAll("logoutRow").size(), 1U);
    EXPECT_EQ(findAll("deleteAccountRow").size(), 1U);
}

TEST_F(ManageScreenTest, OnlyRemembersTheConsent) {
    showManage();
    click(item("track"));
    EXPECT_FALSE(manageModel_->userConsentedToEmailUsage());
    item("consentSwitch").forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    EXPECT_TRUE(manageModel_->userConsentedToEmailUsage());
    EXPECT_TRUE(accounts_->calls().empty());
}

TEST_F(ManageScreenTest, TakesTouches) {
    showManage();
    touch(rectOf(item("track")).center());
    EXPECT_FALSE(manageModel_->userConsentedToEmailUsage());
    touch(rectOf(item("logoutRow")).center());
    handleEvents();
    EXPECT_EQ(textOf(item("alertTitle")), "User Logout");
    touch(rectOf(item("secondaryButton")).center());
    handleEvents();
    EXPECT_EQ(find("alert"), nullptr);
}

TEST_F(ManageScreenTest, AsksBeforeItLogsOut) {
    showManage();
    click(item("logoutRow"));
    handleEvents();
    EXPECT_EQ(textOf(item("alertTitle")), "User Logout");
    EXPECT_EQ(textOf(item("primaryButton")), "Logout");
    EXPECT_EQ(textOf(item("secondaryButton")), "Cancel");
    EXPECT_EQ(focusedName(), "secondaryButton");
    EXPECT_EQ(logouts(), 0U);
    click(item("primaryButton"));
    finish();
    EXPECT_EQ(logouts(), 1U);
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(observer_->calls, (Calls{"appear manageAccount", "logout", "ask", "disappear manageAccount"}));
}

TEST_F(ManageScreenTest, DeletesTheAccountWithTheKeyboardAlone) {
    showManage();
    for (int i = 0; i < 3; ++i) {
        press(Qt::Key_Tab);
    }
    ASSERT_EQ(focusedName(), "deleteAccountRow");
    press(Qt::Key_Return);
    handleEvents();
    EXPECT_EQ(textOf(item("alertTitle")), "Delete Account");
    ASSERT_EQ(focusedName(), "secondaryButton");
    press(Qt::Key_Tab);
    ASSERT_EQ(focusedName(), "primaryButton");
    press(Qt::Key_Return);
    finish();
    EXPECT_EQ(deletions(), 1U);
    EXPECT_FALSE(window().isVisible());
}

TEST_F(ManageScreenTest, DoesNothingWhenTheUserCancels) {
    showManage();
    item("logoutRow").forceActiveFocus(Qt::TabFocusReason);
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Space}) {
        press(Qt::Key_Return);
        handleEvents();
        ASSERT_NE(find("alert"), nullptr);
        press(key);
        handleEvents();
        EXPECT_EQ(find("alert"), nullptr);
        EXPECT_FALSE(manageModel_->currentAlert().has_value());
        EXPECT_EQ(focusedName(), "logoutRow");
    }
    click(item("logoutRow"));
    handleEvents();
    click(item("secondaryButton"));
    finish();
    EXPECT_EQ(logouts(), 0U);
    EXPECT_TRUE(window().isVisible());
}

TEST_F(ManageScreenTest, KeepsTheKeyboardAndThePointerInsideTheAlert) {
    showManage();
    const QPointF track = rectOf(item("track")).center();
    const QPointF deletion = rectOf(item("deleteAccountRow")).bottomRight() - QPointF(20, 2);
    click(item("logoutRow"));
    handleEvents();
    click(track);
    click(deletion);
    click(QPointF(10, 690));
    EXPECT_TRUE(manageModel_->userConsentedToEmailUsage());
    EXPECT_EQ(textOf(item("alertTitle")), "User Logout");
    for (int i = 0; i < 5; ++i) {
        press(Qt::Key_Tab);
        EXPECT_NE(focusedName().find("Button"), std::string::npos) << focusedName();
    }
    press(Qt::Key_Left);
    press(Qt::Key_Right);
    EXPECT_NE(focusedName().find("Button"), std::string::npos);
}

TEST_F(ManageScreenTest, ShowsAProblemAndStaysOpen) {
    const auto offline = [] { throw WebServiceError::notConnectedToInternet(); };
    accounts_->answerLogout([&](TovrelAccountsLogoutReason) { offline(); });
    showManage();
    click(item("logoutRow"));
    handleEvents();
    click(item("primaryButton"));
    finish();
    EXPECT_EQ(textOf(item("alertMessage")),
              "Looks like there’s an issue with your internet connection. Please try again later.");
    EXPECT_EQ(find("secondaryButton"), nullptr);
    EXPECT_EQ(focusedName(), "primaryButton");
    EXPECT_EQ(find("loadingBox"), nullptr);
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(observer_->calls, Calls{"appear manageAccount"});
    press(Qt::Key_Return);
    handleEvents();
    EXPECT_EQ(find("alert"), nullptr);

    accounts_->answerDeleteAccount([] { throw WebServiceError::timedOut(); });
    click(item("deleteAccountRow"));
    handleEvents();
    click(item("primaryButton"));
    finish();
    EXPECT_EQ(textOf(item("alertMessage")), "Looks like there’s an issue with the service. Please try again later.");
}

TEST_F(ManageScreenTest, StandsStillWhileItLoads) {
    accounts_->hold();
    showManage();
    const QPointF track = rectOf(item("track")).center();
    const QPointF logout = rectOf(item("logoutRow")).center();
    click(item("logoutRow"));
    handleEvents();
    click(item("primaryButton"));
    ASSERT_TRUE(processEventsUntil([&] { return manageModel_->isLoading(); }));
    handleEvents();
    EXPECT_NE(find("loadingBox"), nullptr);
    click(track);
    click(logout);
    touch(track);
    touch(logout);
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
        press(key);
    }
    handleEvents();
    EXPECT_TRUE(manageModel_->userConsentedToEmailUsage());
    EXPECT_FALSE(manageModel_->currentAlert().has_value());
    accounts_->release();
    finish();
    EXPECT_EQ(logouts(), 1U);
    EXPECT_FALSE(window().isVisible());
}

TEST_F(ManageScreenTest, ReplacesAnAlertByTheNextOne) {
    showManage();
    manageModel_->setCurrentAlert(TovrelUserAccountAlert::connectionError());
    handleEvents();
    manageModel_->setCurrentAlert(TovrelUserAccountAlert::deleteAccount([] {}));
    handleEvents();
    EXPECT_EQ(textOf(item("alertTitle")), "Delete Account");
    EXPECT_EQ(focusedName(), "secondaryButton");
    manageModel_->setCurrentAlert(std::nullopt);
    handleEvents();
    EXPECT_EQ(find("alert"), nullptr);
}

TEST_F(ManageScreenTest, RunsTwoQuickConfirmationsAndEndsOnce) {
    accounts_->hold();
    showManage();
    for (int i = 0; i < 2; ++i) {
        manageModel_->onLogoutRowTap();
        manageModel_->pressAlertButton(manageModel_->alertId(), 0);
    }
    handleEvents();
    accounts_->release();
    finish();
    EXPECT_EQ(logouts(), 2U);
    EXPECT_EQ(find("loadingBox"), nullptr);
    EXPECT_FALSE(window().isVisible());
}

TEST_F(ManageScreenTest, PressesAnAlertsButtonOnceHoweverQuickTheUserIs) {
    accounts_->hold();
    showManage();
    click(item("logoutRow"));
    handleEvents();
    const QPointF yes = rectOf(item("primaryButton")).center();
    click(yes);
    click(yes);
    handleEvents();
    accounts_->release();
    finish();
    EXPECT_EQ(logouts(), 1U);
}

TEST_F(ManageScreenTest, MayBeClosedWhileAnOperationRuns) {
    accounts_->hold();
    showManage();
    click(item("deleteAccountRow"));
    handleEvents();
    click(item("primaryButton"));
    ASSERT_TRUE(processEventsUntil([&] { return manageModel_->isLoading(); }));
    close();
    manageModel_.reset();
    accounts_->release();
    EXPECT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(deletions(), 1U);
    EXPECT_EQ(observer_->calls, (Calls{"appear manageAccount", "disappear manageAccount", "delete", "ask"}));
}

TEST_F(ManageScreenTest, MayLoseItsObserverInTheMiddle) {
    showManage();
    observer_->onCall = [this](const std::string& call) {
        if (call == "logout") {
            observer_.reset();
        }
    };
    click(item("logoutRow"));
    handleEvents();
    click(item("primaryButton"));
    finish();
    EXPECT_FALSE(window().isVisible());
}

TEST_F(ManageScreenTest, PutsItsTitleWhereTheConfigurationWantsIt) {
    showManage();
    EXPECT_NE(find("largeTitle"), nullptr);
    EXPECT_EQ(find("inlineTitle"), nullptr);
    resize(QSize(568, 320));
    EXPECT_EQ(find("largeTitle"), nullptr);
    EXPECT_EQ(textOf(item("inlineTitle")), "Account Details");
    EXPECT_EQ(item("navigationBar").height(), 44);

    manageConfig_->navigationBarStyle(NavigationBarItem::TitleDisplayMode::large);
    showManage(QSize(568, 320));
    EXPECT_NE(find("largeTitle"), nullptr);
    manageConfig_->navigationBarStyle(NavigationBarItem::TitleDisplayMode::inline_);
    showManage(QSize(390, 700));
    EXPECT_NE(find("inlineTitle"), nullptr);
    EXPECT_EQ(find("largeTitle"), nullptr);
}

TEST_F(ManageScreenTest, TakesItsColoursAndFontsFromTheConfiguration) {
    manageConfig_->toggleColor(Color(QColor("#334455")))
        ->logoutColor(Color(QColor("#445566")))
        ->deleteAccountColor(Color(QColor("#556677")))
        ->marketingConsentContentFont({Font::title3(), Font::Weight::bold})
        ->logoutContentFont({Font::footnote(), Font::Weight::light})
        ->deleteAccountContentFont({Font::caption(), Font::Weight::black});
    showManage();
    EXPECT_EQ(colorOf(item("track")), QColor("#334455"));
    EXPECT_EQ(colorOf(item("logoutRow"), "textColor"), QColor("#445566"));
    EXPECT_EQ(colorOf(item("deleteAccountRow"), "textColor"), QColor("#556677"));
    const auto fontOf = [&](const char* name) { return item(name).property("font").value<QFont>(); };
    EXPECT_EQ(fontOf("consentSwitch").pixelSize(), 20);
    EXPECT_EQ(fontOf("consentSwitch").weight(), QFont::Bold);
    EXPECT_EQ(fontOf("logoutRow").pixelSize(), 13);
    EXPECT_EQ(fontOf("logoutRow").weight(), QFont::Light);
    EXPECT_EQ(fontOf("deleteAccountRow").pixelSize(), 12);
    EXPECT_EQ(fontOf("deleteAccountRow").weight(), QFont::Black);
}

TEST_F(ManageScreenTest, KeepsTheFocusWhenTheLanguageChanges) {
    showManage();
    item("logoutRow").forceActiveFocus(Qt::TabFocusReason);
    ScreenLanguage::choose("fr");
    handleEvents();
    EXPECT_EQ(focusedName(), "logoutRow");
    EXPECT_EQ(textOf(item("logoutRow")), "Logout");
    EXPECT_NE(textOf(*findAll("sectionTitle")[1]), "Manage Account");
}

TEST_F(ManageScreenTest, FitsAnAlertOfTwoThousandCharactersOntoASmallScreen) {
    ScreenTextSize::choose(2);
    showManage(QSize(320, 568));
    const std::string words(2000, 'w');
    std::string sentence;
    while (sentence.size() < 2000) {
        sentence += "all work and no play ";
    }
    for (const std::string& text : {words, sentence}) {
        manageModel_->setCurrentAlert(TovrelUserAccountAlert(Alert(
            text, text, Alert::Button(text.substr(0, 60), Alert::Button::Style::default_), Alert::Button::cancel())));
        handleEvents();
        const QRectF surface = rectOf(item("alertSurface"));
        EXPECT_TRUE(QRectF(0, 0, 320, 568).contains(surface));
        EXPECT_TRUE(surface.contains(rectOf(item("secondaryButton"))));
        const double before = rectOf(item("alertTitle")).top();
        press(Qt::Key_PageDown);
        EXPECT_LT(rectOf(item("alertTitle")).top(), before);
        press(Qt::Key_Escape);
        handleEvents();
    }
}

TEST_F(ManageScreenTest, ClosesItsAlertWithItsWindowAndBringsItBack) {
    showManage();
    click(item("logoutRow"));
    handleEvents();
    window().hide();
    handleEvents();
    EXPECT_TRUE(manageModel_->currentAlert().has_value());
    window().show();
    handleEvents();
    EXPECT_NE(find("alert"), nullptr);
    EXPECT_EQ(logouts(), 0U);
}

} // namespace tovrel::tests
