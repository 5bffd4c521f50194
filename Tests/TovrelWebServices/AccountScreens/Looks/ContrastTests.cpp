#include "../Contrast.hpp"
#include "LooksTest.hpp"

#include <TovrelWebServices/AccountScreens/Color.hpp>
#include <TovrelWebServices/AccountScreens/ColorResource.hpp>
#include <TovrelWebServices/AccountScreens/CurrentAppearance.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <QtCore/QUrl>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QTest>
#include <string>
#include <vector>

namespace tovrel::tests {

namespace {

constexpr double forText = 4.5;
constexpr double forShapes = 3;

/// The colour of most of the pixels.
QColor groundOf(const QImage& image, const QRect& part) {
    std::map<QRgb, int> counts;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            ++counts[image.pixel(x, y)];
        }
    }
    return QColor(std::max_element(counts.begin(), counts.end(), [](const auto& a, const auto& b) {
                      return a.second < b.second;
                  })->first);
}

/// The contrast of what stands out most against the ground, as it is drawn.
double drawnContrast(const QImage& image, const QRectF& place) {
    const QRect part = place.toAlignedRect().intersected(image.rect());
    const QColor ground = groundOf(image, part);
    double most = 1;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            most = std::max(most, contrast(image.pixelColor(x, y), ground));
        }
    }
    return most;
}

class ContrastTest : public LooksTest, public ::testing::WithParamInterface<UserInterfaceStyle> {
protected:
    void SetUp() override {
        LooksTest::SetUp();
        CurrentAppearance::choose(GetParam());
    }

    QColor color(const Color& color) const { return color.resolved(GetParam()); }
    QColor color(const ColorResource& resource) const { return resource.resolved(GetParam()); }

    /// A colour of the screens' theme.
    QColor themed(const char* name) {
        if (!theme_) {
            QQmlComponent component(qmlEngine(&root()));
            component.setData("import QtQml\nimport Tovrel.AccountScreens\nQtObject { property QtObject theme: Theme }",
                              QUrl(QStringLiteral("qrc:/qt/qml/Tovrel/AccountScreens/ThemeOfTest.qml")));
            theme_.reset(component.create());
        }
        const QVariant value = theme_->property("theme").value<QObject*>()->property(name);
        EXPECT_TRUE(value.isValid()) << name;
        return value.value<QColor>();
    }

    void expectThemed(const std::vector<const char*>& foregrounds, const std::vector<const char*>& grounds,
                      double least) {
        for (const char* foreground : foregrounds) {
            for (const char* ground : grounds) {
                EXPECT_GE(contrast(themed(foreground), themed(ground)), least) << foreground << " on " << ground;
            }
        }
    }

    static void collectTexts(QQuickItem& top, std::vector<QQuickItem*>& found) {
        if (!top.isVisible()) {
            return;
        }
        if (top.inherits("QQuickText") && !top.property("text").toString().isEmpty()) {
            found.push_back(&top);
        }
        for (QQuickItem* child : top.childItems()) {
            collectTexts(*child, found);
        }
    }

    void expectDrawnTextsToStandOut(QQuickItem& top) {
        const QImage image = grabAtRest();
        std::vector<QQuickItem*> texts;
        collectTexts(top, texts);
        EXPECT_FALSE(texts.empty());
        for (const QQuickItem* text : texts) {
            EXPECT_GE(drawnContrast(image, rectOf(*text)), forText) << textOf(*text);
        }
    }

    void expectDrawnToStandOut(const std::string& name, double least) {
        EXPECT_GE(drawnContrast(grabAtRest(), rectOf(item(name))), least) << name;
    }

    /// The ring around what has the focus stands out from both of its sides, `outside` points from the control's edge.
    void expectDrawnRing(const std::string& name, int outside) {
        ASSERT_EQ(focusedName(), name);
        const QImage image = grabAtRest();
        const QRectF place = rectOf(item(name == "closeButton" ? "disc" : name));
        const int x = static_cast<int>(place.center().x());
        const int ring = static_cast<int>(place.top()) - outside;
        EXPECT_GE(contrast(image.pixelColor(x, ring), image.pixelColor(x, ring - 2)), forShapes) << name;
        EXPECT_GE(contrast(image.pixelColor(x, ring), image.pixelColor(x, ring + 2)), forShapes) << name;
    }

private:
    std::unique_ptr<QObject> theme_;
};

} // namespace

TEST_P(ContrastTest, OfTheThemesTextsIsEnough) {
    showScreen(AccountScreen::manage, QSize(375, 812));
    expectThemed({"text", "secondaryText"}, {"groupedBackground"}, forText);
    expectThemed({"text"}, {"background", "row", "alertBackground"}, forText);
    expectThemed({"accent", "destructive"}, {"row", "rowPressed", "alertBackground", "alertPressed"}, forText);
}

TEST_P(ContrastTest, OfTheThemesControlsIsEnough) {
    showScreen(AccountScreen::manage, QSize(375, 812));
    expectThemed({"focusRing"}, {"background", "groupedBackground", "row", "alertBackground"}, forShapes);
    expectThemed({"switchOff"}, {"row", "switchThumb"}, forShapes);
    expectThemed({"scrollMark"}, {"background", "groupedBackground", "alertBackground"}, forShapes);
    const QColor box = color(ColorResource::accountUserSignInConsentBackground());
    EXPECT_GE(contrast(themed("switchOff"), box), forShapes);
    EXPECT_GE(contrast(themed("focusRing"), box), forShapes);
}

TEST_P(ContrastTest, OfTheDefaultConfigurationIsEnough) {
    showScreen(AccountScreen::signUp, QSize(375, 812));
    const Configuration::SignIn& signIn = *signInConfig_;
    const Configuration::ManageAccount& manage = *manageConfig_;
    const QColor page = themed("background");
    const QColor box = color(signIn.consentBackgroundColor());
    EXPECT_GE(contrast(color(signIn.titleColor()), page), forText);
    EXPECT_GE(contrast(color(signIn.bodyColor()), page), forText);
    EXPECT_GE(contrast(color(signIn.consentTextColor()), box), forText);
    EXPECT_GE(contrast(color(signIn.closeForegroundColor()), color(signIn.closeBackgroundColor())), forText);
    EXPECT_GE(contrast(color(signIn.consentBorderColor()), page), forShapes);
    EXPECT_GE(contrast(color(signIn.consentBorderColor()), box), forShapes);
    EXPECT_GE(contrast(color(Color::primary()), color(ColorResource::accountUserSignInLoadingBackground())), forText);
    EXPECT_GE(contrast(color(manage.logoutColor()), themed("row")), forText);
    EXPECT_GE(contrast(color(manage.deleteAccountColor()), themed("row")), forText);
    for (const QColor& toggle : {color(signIn.toggleColor()), color(manage.toggleColor())}) {
        for (const QColor& beside : {box, themed("row"), themed("switchThumb")}) {
            EXPECT_GE(contrast(toggle, beside), forShapes);
        }
    }
}

TEST_P(ContrastTest, OfTheDrawnSignUpScreenIsEnough) {
    showScreen(AccountScreen::signUp, QSize(375, 812));
    expectDrawnTextsToStandOut(root());
    expectDrawnToStandOut("disc", forText);
    expectDrawnToStandOut("artworkSlot", forText);
    for (const bool isOn : {true, false}) {
        signInModel_->setUserConsentedToEmailUsage(isOn);
        expectDrawnToStandOut("track", forShapes);
        const QImage image = grabAtRest();
        const QPoint track = rectOf(item("track")).center().toPoint();
        EXPECT_GE(contrast(image.pixelColor(track.x(), track.y() - 14), image.pixelColor(track.x(), track.y() - 18)),
                  forShapes);
    }
    const QImage image = grabAtRest();
    const QRectF button = rectOf(item("signInSurface"));
    EXPECT_GE(contrast(image.pixelColor(button.topLeft().toPoint() + QPoint(20, 5)), image.pixelColor(2, 2)), forText);
}

TEST_P(ContrastTest, OfTheDrawnManageScreenIsEnough) {
    for (const QSize size : {QSize(375, 812), QSize(812, 375)}) {
        showScreen(AccountScreen::manage, size);
        expectDrawnTextsToStandOut(root());
        expectDrawnToStandOut("track", forShapes);
        close();
    }
}

TEST_P(ContrastTest, OfDrawnAlertsIsEnough) {
    showScreen(AccountScreen::manage, QSize(375, 812));
    for (const auto& alert :
         {TovrelUserAccountAlert::deleteAccount([] {}), TovrelUserAccountAlert::connectionError()}) {
        setAlert(alert);
        expectDrawnTextsToStandOut(item("alert"));
    }
}

TEST_P(ContrastTest, OfWhatIsPressedIsEnough) {
    showScreen(AccountScreen::manage, QSize(375, 812));
    for (const char* row : {"logoutRow", "deleteAccountRow"}) {
        const QPoint place = rectOf(item(row)).center().toPoint();
        QTest::mousePress(&window(), Qt::LeftButton, Qt::NoModifier, place);
        expectDrawnTextsToStandOut(item(row));
        QTest::mouseRelease(&window(), Qt::LeftButton, Qt::NoModifier, place);
        handleEvents();
        for (const char* button : {"secondaryButton", "primaryButton"}) {
            const QPoint inAlert = rectOf(item(button)).center().toPoint();
            QTest::mousePress(&window(), Qt::LeftButton, Qt::NoModifier, inAlert);
            expectDrawnTextsToStandOut(item(button));
            QTest::mouseMove(&window(), QPoint(2, 2));
            QTest::mouseRelease(&window(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
        }
        setAlert(std::nullopt);
    }
}

TEST_P(ContrastTest, OfTheDrawnLoadingViewIsEnough) {
    showScreen(AccountScreen::signIn, QSize(375, 812));
    startLoading();
    expectDrawnToStandOut("loadingBox", forText);
}

TEST_P(ContrastTest, OfTheDrawnFocusRingIsEnough) {
    showScreen(AccountScreen::signUp, QSize(375, 812));
    press(Qt::Key_Tab);
    expectDrawnRing("closeButton", 4);
    press(Qt::Key_Tab);
    expectDrawnRing("consentSwitch", -3);
    press(Qt::Key_Tab);
    expectDrawnRing("signInButton", 4);
    close();

    showScreen(AccountScreen::manage, QSize(375, 812));
    for (const char* name : {"consentSwitch", "logoutRow", "deleteAccountRow"}) {
        press(Qt::Key_Tab);
        expectDrawnRing(name, -3);
    }
    setAlert(TovrelUserAccountAlert::logout([] {}));
    expectDrawnRing("secondaryButton", -4);
}

INSTANTIATE_TEST_SUITE_P(, ContrastTest, ::testing::Values(UserInterfaceStyle::light, UserInterfaceStyle::dark),
                         [](const auto& instance) {
                             return instance.param == UserInterfaceStyle::dark ? "Dark" : "Light";
                         });

} // namespace tovrel::tests
