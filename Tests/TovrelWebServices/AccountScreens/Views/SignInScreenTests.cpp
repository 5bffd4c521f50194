#include "ScreenTest.hpp"

#include <TovrelWebServices/AccountScreens/CurrentAppearance.hpp>
#include <TovrelWebServices/AccountScreens/ScreenLanguage.hpp>
#include <TovrelWebServices/AccountScreens/Views/ScreenTextSize.hpp>
#include <TovrelWebServices/Support/ResourceBundle.hpp>
#include <TovrelWebServices/Support/TovrelWebServicesInstance.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtGui/QFont>
#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tovrel::tests {

namespace {

using Calls = std::vector<std::string>;

class SignInScreenTest : public ScreenTest {
protected:
    void endSignIn(TovrelAppleSignInResult result) {
        service_->end(std::move(result));
        ASSERT_TRUE(processEventsUntilIdle());
        handleEvents();
    }

    [[nodiscard]] bool isOn() const { return item("consentSwitch").property("checked").toBool(); }

    [[nodiscard]] static TovrelAppleSignInError cancelled() {
        return TovrelAppleSignInError::authorizeApple(std::make_exception_ptr(std::runtime_error("cancelled")));
    }
};

/// Every text is 2 000 characters of one word.
class LongTexts final : public ResourceBundle {
public:
    explicit LongTexts(const std::string& word) {
        while (text_.size() < 2000) {
            text_ += word;
        }
        text_.resize(2000);
    }

    std::optional<std::string> localizedString(std::string_view /*key*/, std::string_view /*table*/) const override {
        return text_;
    }
    std::optional<std::uint32_t> color(std::string_view /*name*/, UserInterfaceStyle /*style*/) const override {
        return std::nullopt;
    }

private:
    std::string text_;
};

/// A view of this width and height, as tests find it by its name.
AnyView box(double width, double height) {
    return AnyView([width, height](QQmlEngine&, QQuickItem&) {
        auto* made = new QQuickItem();
        made->setObjectName("box");
        made->setSize(QSizeF(width, height));
        return made;
    });
}

} // namespace

TEST_F(SignInScreenTest, AsksANewUserForConsent) {
    showSignIn(false);
    EXPECT_EQ(textOf(item("title")), "Create Your Account");
    EXPECT_EQ(textOf(item("consentSwitch")), "Send me emails with the latest offers and promotions.");
    EXPECT_EQ(textOf(item("caption")), "Sign up with Apple");
    EXPECT_TRUE(isOn());
}

TEST_F(SignInScreenTest, HasNoConsentBoxForAReturningUser) {
    showSignIn(true);
    EXPECT_EQ(textOf(item("title")), "Sign in to Your Account");
    EXPECT_EQ(textOf(item("caption")), "Sign in with Apple");
    EXPECT_EQ(find("consentBox"), nullptr);
    EXPECT_EQ(find("consentSwitch"), nullptr);
}

TEST_F(SignInScreenTest, WritesTheConsentWithMouseAndKeyboard) {
    showSignIn(false);
    click(item("track"));
    EXPECT_FALSE(signInModel_->userConsentedToEmailUsage());
    EXPECT_FALSE(isOn());
    item("consentSwitch").forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    EXPECT_TRUE(signInModel_->userConsentedToEmailUsage());
    press(Qt::Key_Return);
    EXPECT_FALSE(signInModel_->userConsentedToEmailUsage());
    signInModel_->setUserConsentedToEmailUsage(true);
    EXPECT_TRUE(isOn());
}

TEST_F(SignInScreenTest, ClosesItselfWithItsCloseButton) {
    showSignIn();
    EXPECT_EQ(observer_->calls, Calls{"appear signIn"});
    click(item("disc"));
    EXPECT_TRUE(signInModel_->shouldDismiss());
    ASSERT_TRUE(processEventsUntil([&] { return !window().isVisible(); }));
    EXPECT_EQ(observer_->calls, (Calls{"appear signIn", "disappear signIn"}));
}

TEST_F(SignInScreenTest, ClosesItselfWithEscape) {
    showSignIn();
    press(Qt::Key_Escape);
    ASSERT_TRUE(processEventsUntil([&] { return !window().isVisible(); }));
}

TEST_F(SignInScreenTest, WithoutACloseButtonIsLeftByASuccessOnly) {
    signInConfig_->hasCloseButton(false);
    showSignIn();
    EXPECT_EQ(find("closeButton"), nullptr);
    press(Qt::Key_Escape);
    handleEvents();
    EXPECT_TRUE(window().isVisible());
    click(item("signInButton"));
    endSignIn(Accounts::exampleToken());
    EXPECT_FALSE(window().isVisible());
}

TEST_F(SignInScreenTest, ReportsEveryAppearance) {
    showSignIn();
    window().hide();
    window().show();
    root().setVisible(false);
    close();
    EXPECT_EQ(observer_->calls, (Calls{"appear signIn", "disappear signIn", "appear signIn", "disappear signIn"}));
}

TEST_F(SignInScreenTest, GoesThroughItsControlsWithTheTabKey) {
    showSignIn();
    Calls names;
    for (int i = 0; i < 4; ++i) {
        press(Qt::Key_Tab);
        names.push_back(focusedName());
    }
    EXPECT_EQ(names, (Calls{"closeButton", "consentSwitch", "signInButton", "closeButton"}));
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focusedName(), "signInButton");
}

TEST_F(SignInScreenTest, SignsInWithTheKeyboardAlone) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        showSignIn(true);
        press(Qt::Key_Tab);
        press(Qt::Key_Tab);
        ASSERT_EQ(focusedName(), "signInButton");
        press(key);
        EXPECT_TRUE(signInModel_->isLoading());
        ASSERT_EQ(service_->requests.size(), 1U);
        endSignIn(Accounts::exampleToken());
        EXPECT_FALSE(window().isVisible());
        close();
    }
}

TEST_F(SignInScreenTest, StandsStillWhileItLoads) {
    showSignIn();
    const QPointF track = rectOf(item("track")).center();
    const QPointF button = rectOf(item("signInButton")).center();
    const QPointF disc = rectOf(item("disc")).center();
    item("consentSwitch").forceActiveFocus(Qt::TabFocusReason);
    click(button);
    ASSERT_TRUE(signInModel_->isLoading());
    EXPECT_NE(find("loadingBox"), nullptr);

    click(button);
    click(track);
    click(disc);
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Tab, Qt::Key_Space, Qt::Key_Escape}) {
        press(key);
    }
    handleEvents();
    EXPECT_EQ(service_->requests.size(), 1U);
    EXPECT_TRUE(signInModel_->userConsentedToEmailUsage());
    EXPECT_FALSE(signInModel_->shouldDismiss());

    endSignIn(cancelled());
    EXPECT_EQ(find("loadingBox"), nullptr);
}

TEST_F(SignInScreenTest, ShowsTheAlertOfAFailureAndGoesOn) {
    showSignIn();
    click(item("signInButton"));
    endSignIn(cancelled());
    EXPECT_EQ(textOf(item("alertTitle")), "Something Went Wrong");
    EXPECT_EQ(observer_->calls, (Calls{"appear signIn", "initiated", "failed"}));
    EXPECT_EQ(focusedName(), "primaryButton");
    press(Qt::Key_Return);
    handleEvents();
    EXPECT_EQ(find("alert"), nullptr);
    EXPECT_FALSE(signInModel_->currentAlert().has_value());
    click(item("signInButton"));
    EXPECT_TRUE(signInModel_->isLoading());
    endSignIn(Accounts::exampleToken());
}

TEST_F(SignInScreenTest, LeavesClosingToAHostThatWantsIt) {
    observer_->dismissesItself = false;
    showSignIn();
    click(item("signInButton"));
    endSignIn(Accounts::exampleToken());
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(observer_->calls, (Calls{"appear signIn", "initiated", "finished", "ask", "dismiss"}));
}

TEST_F(SignInScreenTest, MayBeClosedWhileAnAuthorizationRuns) {
    showSignIn();
    click(item("signInButton"));
    signInModel_.reset();
    close();
    service_->end(Accounts::exampleToken());
    EXPECT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(observer_->calls, (Calls{"appear signIn", "initiated", "disappear signIn"}));
}

TEST_F(SignInScreenTest, MayBeEndedByItsObserverInTheMiddle) {
    for (const std::string moment : {"appear signIn", "initiated", "failed", "disappear signIn"}) {
        observer_->onCall = [this, moment](const std::string& call) {
            if (call == moment) {
                controller_.reset();
                observer_.reset();
            }
        };
        controller_.reset();
        signInModel_ = TovrelUserAccountSignInViewModel::make(accounts_, false, signInConfig_, observer_);
        controller_ = HostingController::make(TovrelUserAccountSignInView(signInModel_).body());
        const auto kept = controller_;
        kept->window().show();
        if (controller_) {
            handleEvents();
            click(item("signInButton"));
            service_->end(cancelled());
        }
        handleEvents();
        EXPECT_TRUE(processEventsUntilIdle());
        observer_ = std::make_shared<Observer>();
        service_->requests.clear();
    }
}

TEST_F(SignInScreenTest, KeepsItsMeasuresInEachArrangement) {
    showSignIn(false, QSize(390, 700));
    EXPECT_EQ(rectOf(item("disc")), QRectF(390 - 32 - 30, 16, 30, 30));
    EXPECT_EQ(rectOf(item("texts")).left(), 32);
    EXPECT_EQ(rectOf(item("texts")).width(), 390 - 64);
    EXPECT_EQ(rectOf(item("controls")).bottom(), 700 - 80);
    EXPECT_EQ(item("signInButton").height(), 50);
    EXPECT_EQ(rectOf(item("signInButton")).top() - rectOf(item("consentBox")).bottom(), 16);
    EXPECT_EQ(rectOf(item("description")).top() - rectOf(item("title")).bottom(), 16);
    EXPECT_EQ(item("consentBox").property("radius").toDouble(), 12);

    resize(QSize(1366, 1024));
    EXPECT_EQ(rectOf(item("texts")).width(), 400);
    EXPECT_EQ(rectOf(item("texts")).center().x(), 683);
    EXPECT_EQ(rectOf(item("controls")).top() - rectOf(item("texts")).bottom(), 64);

    resize(QSize(568, 320));
    EXPECT_EQ(rectOf(item("texts")).left(), 32);
    EXPECT_EQ(rectOf(item("texts")).top(), 16);
    EXPECT_EQ(rectOf(item("controls")).top() - rectOf(item("texts")).bottom(), 16);
    EXPECT_LE(rectOf(item("signInButton")).bottom(), 320);
}

TEST_F(SignInScreenTest, IsNeverNarrowerThan280PointsWhenCompact) {
    showSignIn(false, QSize(300, 400));
    EXPECT_EQ(rectOf(item("texts")).width(), 280);
}

TEST_F(SignInScreenTest, ScrollsWhatDoesNotFit) {
    ScreenTextSize::choose(2);
    ScreenLanguage::choose("de");
    showSignIn(false, QSize(320, 568));
    EXPECT_GT(rectOf(item("signInButton")).top(), 568);
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    ASSERT_EQ(focusedName(), "signInButton");
    EXPECT_LE(rectOf(item("signInButton")).bottom(), 568);
    press(Qt::Key_Home);
    EXPECT_EQ(item("scrollArea").property("contentY").toDouble(), 0);
    press(Qt::Key_End);
    EXPECT_LE(rectOf(item("signInButton")).bottom(), 568);
}

TEST_F(SignInScreenTest, TakesTextsOfTwoThousandCharacters) {
    const auto own = TovrelWebServicesInstance::bundle();
    for (const char* word : {"w", "all work and no play "}) {
        TovrelWebServicesInstance::setBundle(std::make_shared<LongTexts>(word));
        for (const QSize size : {QSize(320, 568), QSize(568, 320), QSize(1024, 768)}) {
            showSignIn(false, size);
            EXPECT_EQ(textOf(item("title")).size(), 2000U);
            EXPECT_GE(rectOf(item("description")).top(), rectOf(item("title")).bottom());
            EXPECT_GE(rectOf(item("consentBox")).top(), rectOf(item("description")).bottom());
            EXPECT_GE(rectOf(item("signInButton")).top(), rectOf(item("consentBox")).bottom());
            EXPECT_LE(item("title").property("contentWidth").toDouble(), item("title").width());
            press(Qt::Key_Backtab, Qt::ShiftModifier);
            ASSERT_EQ(focusedName(), "signInButton");
            EXPECT_TRUE(QRectF(QPointF(0, 0), size).contains(rectOf(item("signInButton"))));
            press(Qt::Key_Home);
            EXPECT_GE(rectOf(item("title")).top(), 0);
            close();
        }
    }
    TovrelWebServicesInstance::setBundle(own);
}

TEST_F(SignInScreenTest, FollowsThePaletteOfTheApplication) {
    const QPalette before = QGuiApplication::palette();
    CurrentAppearance::choose(std::nullopt);
    showSignIn();
    QPalette palette = before;
    for (const auto& [ground, text] : {std::pair(Qt::black, Qt::white), std::pair(Qt::white, Qt::black)}) {
        palette.setColor(QPalette::Window, ground);
        palette.setColor(QPalette::WindowText, text);
        QGuiApplication::setPalette(palette);
        handleEvents();
        EXPECT_EQ(grab().pixelColor(5, 5), QColor(ground));
        EXPECT_EQ(colorOf(item("title")), QColor(text));
    }
    QGuiApplication::setPalette(before);
    handleEvents();
}

TEST_F(SignInScreenTest, HasNoIconByDefault) {
    showSignIn();
    EXPECT_EQ(find("icon"), nullptr);
    EXPECT_EQ(rectOf(item("title")).top(), rectOf(item("texts")).top());
}

TEST_F(SignInScreenTest, FitsAnIconIntoASquareBetween40And80Points) {
    const QString file =
        QStringLiteral("%1/tovrel-icon-%2.png").arg(QDir::tempPath()).arg(QCoreApplication::applicationPid());
    for (const auto& [size, side] :
         {std::pair(QSize(16, 16), 40), std::pair(QSize(64, 30), 64), std::pair(QSize(500, 200), 80)}) {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::red);
        ASSERT_TRUE(image.save(file));
        signInConfig_ = Configuration::SignIn::make();
        signInConfig_->icon(Configuration::SignIn::Icon::image(Image(QUrl::fromLocalFile(file))));
        showSignIn();
        EXPECT_EQ(item("iconImage").size(), QSizeF(side, side));
        EXPECT_EQ(rectOf(item("iconImage")).center().x(), 195);
        close();
        controller_ = nullptr;
        QFile::remove(file);
    }
}

TEST_F(SignInScreenTest, LeavesNoGapForAnIconThatCannotBeLoaded) {
    signInConfig_->icon(Configuration::SignIn::Icon::image(Image(QUrl(QStringLiteral("file:///nowhere/icon.png")))));
    showSignIn();
    EXPECT_EQ(find("icon"), nullptr);
    EXPECT_EQ(rectOf(item("title")).top(), rectOf(item("texts")).top());
    expectWarning("Cannot open");
}

TEST_F(SignInScreenTest, ShowsTheHostsOwnViews) {
    signInConfig_->icon(box(60, 24));
    signInConfig_->backgroundView(AnyView([](QQmlEngine&, QQuickItem&) {
        auto* made = new QQuickItem();
        made->setObjectName("ground");
        return made;
    }));
    showSignIn();
    EXPECT_EQ(rectOf(item("ground")), QRectF(0, 0, 390, 700));
    EXPECT_EQ(rectOf(item("box")).size(), QSizeF(60, 24));
    EXPECT_EQ(rectOf(item("box")).center().x(), 195);
    EXPECT_EQ(rectOf(item("title")).top() - rectOf(item("box")).bottom(), 16);
}

TEST_F(SignInScreenTest, TakesEmptyViewsForNothing) {
    signInConfig_->icon(AnyView::empty());
    signInConfig_->backgroundView(AnyView::empty());
    signInConfig_->loadingType(Configuration::LoadingType::custom(AnyView::empty()));
    showSignIn();
    EXPECT_EQ(find("icon"), nullptr);
    click(item("signInButton"));
    EXPECT_TRUE(signInModel_->isLoading());
    EXPECT_EQ(find("loadingBox"), nullptr);
    click(item("signInButton"));
    EXPECT_EQ(service_->requests.size(), 1U);
    endSignIn(Accounts::exampleToken());
}

TEST_F(SignInScreenTest, ShowsTheHostsOwnLoadingViewInTheMiddle) {
    signInConfig_->loadingType(Configuration::LoadingType::custom(box(100, 60)));
    showSignIn();
    EXPECT_EQ(find("box"), nullptr);
    click(item("signInButton"));
    EXPECT_EQ(rectOf(item("box")), QRectF(145, 320, 100, 60));
    endSignIn(cancelled());
    EXPECT_EQ(find("box"), nullptr);
}

TEST_F(SignInScreenTest, TakesItsColoursAndFontsFromTheConfiguration) {
    signInConfig_->titleColor(Color(QColor("#112233")))
        ->bodyColor(Color(QColor("#223344")))
        ->toggleColor(Color(QColor("#334455")))
        ->consentTextColor(Color(QColor("#445566")))
        ->consentBorderColor(Color(QColor("#556677")))
        ->consentBackgroundColor(Color(QColor("#EEDDCC")))
        ->closeForegroundColor(Color(QColor("#667788")))
        ->closeBackgroundColor(Color(QColor("#DDEEFF")))
        ->titleFont({Font::title2(), Font::Weight::light})
        ->bodyFont({Font::footnote(), Font::Weight::heavy})
        ->consentTextFont({Font::caption(), Font::Weight::medium});
    showSignIn();
    EXPECT_EQ(colorOf(item("title")), QColor("#112233"));
    EXPECT_EQ(colorOf(item("description")), QColor("#223344"));
    EXPECT_EQ(colorOf(item("track")), QColor("#334455"));
    EXPECT_EQ(colorOf(item("consentSwitch"), "textColor"), QColor("#445566"));
    EXPECT_EQ(colorOf(item("consentBox")), QColor("#EEDDCC"));
    EXPECT_EQ(colorOf(item("closeButton"), "foreground"), QColor("#667788"));
    EXPECT_EQ(colorOf(item("disc")), QColor("#DDEEFF"));
    const auto fontOf = [&](const char* name) { return item(name).property("font").value<QFont>(); };
    EXPECT_EQ(fontOf("title").pixelSize(), 22);
    EXPECT_EQ(fontOf("title").weight(), QFont::Light);
    EXPECT_EQ(fontOf("description").pixelSize(), 13);
    EXPECT_EQ(fontOf("description").weight(), QFont::ExtraBold);
    EXPECT_EQ(fontOf("consentSwitch").pixelSize(), 12);
    EXPECT_EQ(fontOf("consentSwitch").weight(), QFont::Medium);
    const QImage image = grab();
    const QRectF border = rectOf(item("consentBox"));
    EXPECT_EQ(image.pixelColor(border.center().toPoint().x(), static_cast<int>(border.top())), QColor("#556677"));
}

TEST_F(SignInScreenTest, FollowsAppearanceLanguageAndTextSizeWhileItIsShown) {
    showSignIn();
    EXPECT_EQ(grab().pixelColor(5, 5), QColor("#FFFFFF"));
    EXPECT_EQ(colorOf(item("signInSurface")), QColor("#000000"));
    CurrentAppearance::choose(UserInterfaceStyle::dark);
    EXPECT_EQ(grab().pixelColor(5, 5), QColor("#000000"));
    EXPECT_EQ(colorOf(item("title")), QColor("#FFFFFF"));
    EXPECT_EQ(colorOf(item("signInSurface")), QColor("#FFFFFF"));

    ScreenLanguage::choose("ar");
    handleEvents();
    EXPECT_NE(textOf(item("title")), "Create Your Account");
    EXPECT_EQ(rectOf(item("disc")).left(), 32);
    EXPECT_LT(rectOf(item("track")).center().x(), 195);

    const double before = item("description").height();
    ScreenTextSize::choose(1.5);
    handleEvents();
    EXPECT_GT(item("description").height(), before);
}

} // namespace tovrel::tests
