#include "AccessibleTree.hpp"
#include "LooksTest.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace tovrel::tests {

namespace {

using ::testing::Contains;
using ::testing::IsEmpty;
using Words = std::vector<std::string>;

const std::string longMessage = "Are you sure you want to log out? You’ll be signed out of your account.";

class AccessibilityTest : public LooksTest {
protected:
    std::vector<AccessibleNode> nodes() {
        arrange();
        return accessibleNodes(window());
    }

    Words heard() { return spoken(nodes()); }

    AccessibleNode node(const std::string& words) {
        for (const AccessibleNode& found : nodes()) {
            if (spoken({found}).front() == words) {
                return found;
            }
        }
        throw std::runtime_error("no screen reader finds " + words);
    }

    /// Each is read before what is below it, and in one line in the direction of the language.
    void expectReadInOrder(const std::vector<AccessibleNode>& found, bool isRightToLeft) {
        for (std::size_t i = 1; i < found.size(); ++i) {
            const QRect before = found[i - 1].rect();
            const QRect after = found[i].rect();
            const bool isInOneLine = before.top() < after.bottom() && after.top() < before.bottom();
            const bool isForward = isRightToLeft ? before.right() > after.right() : before.left() < after.left();
            EXPECT_TRUE(isInOneLine ? isForward : before.top() < after.top())
                << found[i - 1].name() << " before " << found[i].name();
        }
    }

    /// The alert's parts without what holds them.
    std::vector<AccessibleNode> partsOfAlert() {
        std::vector<AccessibleNode> found = nodes();
        std::erase_if(found, [](const AccessibleNode& part) {
            return part.role() == QAccessible::Dialog || part.role() == QAccessible::AlertMessage;
        });
        return found;
    }

    ListeningScreenReader reader_;
};

} // namespace

TEST_F(AccessibilityTest, FindsTheSignUpScreen) {
    showScreen(AccountScreen::signUp, QSize(375, 812));
    EXPECT_EQ(heard(),
              (Words{"button: Close", "heading: Create Your Account",
                     "text: Create your account to unlock a seamless experience. Get personalized "
                     "recommendations, exclusive offers, and faster checkouts—all in one place.",
                     "switch: Send me emails with the latest offers and promotions.", "button: Sign up with Apple"}));
}

TEST_F(AccessibilityTest, FindsTheSignInScreen) {
    showScreen(AccountScreen::signIn, QSize(812, 375));
    EXPECT_EQ(heard(), (Words{"button: Close", "heading: Sign in to Your Account",
                              "text: Sign in to access your account, manage preferences, and enjoy a personalized "
                              "experience.",
                              "button: Sign in with Apple"}));
}

TEST_F(AccessibilityTest, FindsTheManageScreen) {
    for (const QSize size : {QSize(375, 812), QSize(812, 375)}) {
        showScreen(AccountScreen::manage, size);
        EXPECT_EQ(heard(),
                  (Words{"heading: Account Details", "heading: Consent", "switch: Use Email for Marketing Purposes",
                         "heading: Manage Account", "button: Logout", "button: Delete Account"}));
        close();
    }
}

TEST_F(AccessibilityTest, SpeaksTheChosenLanguage) {
    choose(Look(UserInterfaceStyle::light, "fr"));
    showScreen(AccountScreen::manage, QSize(375, 812));
    EXPECT_THAT(heard(), Contains("button: Supprimer le compte"));
    close();
    showScreen(AccountScreen::signIn, QSize(375, 812));
    EXPECT_THAT(heard(), Contains("button: Fermer"));
    startLoading();
    EXPECT_EQ(heard(), Words{"progress: Chargement"});
}

TEST_F(AccessibilityTest, ReadsInTheOrderOfTheEye) {
    for (const char* language : {"en", "ar"}) {
        for (const AccountScreen screen : {AccountScreen::signUp, AccountScreen::manage}) {
            for (const QSize size : {QSize(320, 568), QSize(768, 1024)}) {
                SCOPED_TRACE(language + nameOf(screen));
                choose(Look(UserInterfaceStyle::light, language));
                showScreen(screen, size);
                expectReadInOrder(nodes(), language == std::string("ar"));
                close();
            }
        }
    }
}

TEST_F(AccessibilityTest, ReadsTheButtonsOfAnAlertInTheOrderOfTheEye) {
    showScreen(AccountScreen::manage, QSize(375, 812));
    for (const char* language : {"en", "ar"}) {
        for (const double textScale : {1.0, 4.0}) {
            choose(Look(UserInterfaceStyle::light, language, textScale));
            setAlert(TovrelUserAccountAlert::logout([] {}));
            const auto parts = partsOfAlert();
            ASSERT_EQ(parts.size(), 4U);
            expectReadInOrder({parts[2], parts[3]}, language == std::string("ar"));
            const bool isRow = parts[2].rect().top() == parts[3].rect().top();
            EXPECT_EQ(isRow, textScale == 1);
            setAlert(std::nullopt);
        }
    }
}

TEST_F(AccessibilityTest, KnowsWhetherASwitchIsOn) {
    showScreen(AccountScreen::manage, QSize(375, 812));
    const std::string name = "switch: Use Email for Marketing Purposes";
    EXPECT_TRUE(node(name).state().checkable);
    EXPECT_TRUE(node(name).state().checked);
    manageModel_->setUserConsentedToEmailUsage(false);
    EXPECT_FALSE(node(name).state().checked);
}

TEST_F(AccessibilityTest, KnowsWhatHasTheFocus) {
    showScreen(AccountScreen::signUp, QSize(375, 812));
    press(Qt::Key_Tab);
    EXPECT_TRUE(node("button: Close").state().focused);
    press(Qt::Key_Tab);
    EXPECT_FALSE(node("button: Close").state().focused);
    EXPECT_TRUE(node("switch: Send me emails with the latest offers and promotions.").state().focused);
}

TEST_F(AccessibilityTest, LetsEveryControlHaveTheFocus) {
    for (const AccountScreen screen : {AccountScreen::signUp, AccountScreen::manage}) {
        showScreen(screen, QSize(375, 812));
        for (const AccessibleNode& found : nodes()) {
            if (found.role() == QAccessible::Button || found.role() == QAccessible::CheckBox) {
                EXPECT_TRUE(found.state().focusable) << found.name();
            }
        }
        close();
    }
}

TEST_F(AccessibilityTest, TogglesASwitchOncePerAction) {
    showScreen(AccountScreen::manage, QSize(375, 812));
    const AccessibleNode consent = node("switch: Use Email for Marketing Purposes");
    EXPECT_THAT(consent.actions(), Contains("Toggle"));
    EXPECT_THAT(consent.actions(), Contains("Press"));
    consent.act(QAccessibleActionInterface::toggleAction());
    EXPECT_FALSE(manageModel_->userConsentedToEmailUsage());
    consent.act(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(manageModel_->userConsentedToEmailUsage());
}

TEST_F(AccessibilityTest, PressesEachButtonOncePerAction) {
    showScreen(AccountScreen::signUp, QSize(375, 812));
    node("button: Sign up with Apple").act(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(service_->requests.size(), 1U);
    service_->end(Accounts::exampleToken());
    handleEvents();
    close();

    showScreen(AccountScreen::signIn, QSize(375, 812));
    node("button: Close").act(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(signInModel_->shouldDismiss());
    close();

    showScreen(AccountScreen::manage, QSize(375, 812));
    for (const char* row : {"Logout", "Delete Account"}) {
        node("button: " + std::string(row)).act(QAccessibleActionInterface::pressAction());
        ASSERT_TRUE(manageModel_->currentAlert());
        node("button: Cancel").act(QAccessibleActionInterface::pressAction());
        EXPECT_FALSE(manageModel_->currentAlert());
    }
}

TEST_F(AccessibilityTest, HearsAnAlertAndNothingBehindIt) {
    showScreen(AccountScreen::manage, QSize(375, 812));
    EXPECT_THAT(reader_.announcements(), IsEmpty());
    setAlert(TovrelUserAccountAlert::logout([] {}));
    EXPECT_EQ(heard(), (Words{"dialog: User Logout", "alert: User Logout", "heading: User Logout",
                              "text: " + longMessage, "button: Cancel", "button: Logout"}));
    EXPECT_EQ(node("alert: User Logout").description(), longMessage);
    EXPECT_TRUE(node("button: Cancel").state().focused);
    EXPECT_EQ(reader_.announcements(), Words{"User Logout"});

    setAlert(std::nullopt);
    EXPECT_EQ(heard().size(), 6U);
    setAlert(TovrelUserAccountAlert::connectionError());
    EXPECT_THAT(heard(), Contains("button: Okay"));
    EXPECT_EQ(reader_.announcements(), (Words{"User Logout", "Something Went Wrong"}));
}

TEST_F(AccessibilityTest, ReachesNothingBehindAnAlertOrTheLoadingView) {
    for (const bool hasAlert : {true, false}) {
        showScreen(AccountScreen::signUp, QSize(375, 812));
        const std::vector<AccessibleNode> behind = nodes();
        if (hasAlert) {
            setAlert(TovrelUserAccountAlert::generalServiceError());
        } else {
            startLoading();
            EXPECT_EQ(heard(), Words{"progress: Loading"});
        }
        const std::size_t requests = service_->requests.size();
        for (const AccessibleNode& control : behind) {
            control.act(QAccessibleActionInterface::pressAction());
            control.act(QAccessibleActionInterface::toggleAction());
        }
        handleEvents();
        EXPECT_EQ(service_->requests.size(), requests);
        EXPECT_TRUE(signInModel_->userConsentedToEmailUsage());
        EXPECT_FALSE(signInModel_->shouldDismiss());
        setAlert(std::nullopt);
        close();
    }
}

TEST_F(AccessibilityTest, LeavesTheFocusToBeSeenWhereItWasAfterAFailure) {
    showScreen(AccountScreen::signUp, QSize(375, 812));
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    ASSERT_TRUE(node("button: Sign up with Apple").state().focused);
    const QImage before = grabAtRest();
    press(Qt::Key_Return);
    service_->end(TovrelAppleSignInError::authorizeApple(std::make_exception_ptr(std::runtime_error("declined"))));
    handleEvents();
    ASSERT_TRUE(node("button: Okay").state().focused);
    press(Qt::Key_Return);
    EXPECT_TRUE(node("button: Sign up with Apple").state().focused);
    EXPECT_EQ(grabAtRest(), before);
}

} // namespace tovrel::tests
