#include "LooksTest.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <QtCore/QRegularExpression>
#include <QtGui/QFont>
#include <QtGui/QFontMetricsF>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QTest>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

namespace tovrel::tests {

namespace {

constexpr double margin = 32;
constexpr double touchSize = 44;

const std::vector<QSize> sizes{QSize(320, 568),  QSize(568, 320),  QSize(375, 812),  QSize(812, 375),
                               QSize(768, 1024), QSize(1024, 768), QSize(1366, 1024)};

std::vector<Look> allLooks() {
    std::vector<Look> looks;
    for (const auto appearance : {UserInterfaceStyle::light, UserInterfaceStyle::dark}) {
        for (const char* language : {"en", "de", "fr", "es", "ar"}) {
            for (const double textScale : {1.0, 2.0}) {
                looks.emplace_back(appearance, language, textScale);
            }
        }
    }
    return looks;
}

bool holds(const QRectF& outer, const QRectF& inner) {
    return outer.adjusted(-0.5, -0.5, 0.5, 0.5).contains(inner);
}

std::string words(const QRectF& rect) {
    std::ostringstream out;
    out << rect.width() << " x " << rect.height() << " at " << rect.left() << ", " << rect.top();
    return out.str();
}

/// Every combination of what the user has chosen, on one screen in one window.
class ArrangementTest : public LooksTest, public ::testing::WithParamInterface<std::tuple<AccountScreen, QSize>> {
protected:
    static AccountScreen screen() { return std::get<AccountScreen>(GetParam()); }
    static QSize size() { return std::get<QSize>(GetParam()); }
    static bool isWide() { return size().width() >= 600; }
    static bool isHigh() { return size().height() >= 500; }
    static bool isCompact() { return !isHigh(); }

    QRectF windowRect() const { return QRectF(QPointF(0, 0), window().contentItem()->size()); }
    QRectF rectOf(const std::string& name) const { return LooksTest::rectOf(item(name)); }
    using LooksTest::rectOf;

    void inEveryLook(const std::function<void(const Look& look)>& check) {
        for (const Look& look : allLooks()) {
            SCOPED_TRACE(::testing::PrintToString(look));
            choose(look);
            arrange();
            check(look);
            if (HasFailure()) {
                return;
            }
        }
    }

    /// Visible items whose class has this name.
    static void collect(QQuickItem& top, const char* className, std::vector<QQuickItem*>& found) {
        if (!top.isVisible() || top.width() <= 0) {
            return;
        }
        if (top.inherits(className)) {
            found.push_back(&top);
        }
        for (QQuickItem* child : top.childItems()) {
            collect(*child, className, found);
        }
    }

    /// No word is cut, broken, or drawn outside its item.
    static void expectWholeTexts(QQuickItem& top) {
        std::vector<QQuickItem*> texts;
        collect(top, "QQuickText", texts);
        EXPECT_FALSE(texts.empty());
        for (const QQuickItem* text : texts) {
            const QString shown = text->property("text").toString();
            SCOPED_TRACE(shown.toStdString());
            EXPECT_FALSE(shown.isEmpty());
            EXPECT_FALSE(text->property("truncated").toBool());
            EXPECT_LE(text->property("contentHeight").toDouble(), text->height() + 0.5);
            const double room =
                text->width() - text->property("leftPadding").toDouble() - text->property("rightPadding").toDouble();
            EXPECT_LE(text->property("contentWidth").toDouble(), room + 0.5);
            const QFontMetricsF metrics(text->property("font").value<QFont>());
            for (const QString& word : shown.split(QRegularExpression(QStringLiteral("[\\s\\-—–]+")))) {
                EXPECT_LE(metrics.horizontalAdvance(word), room + 0.5) << word.toStdString();
            }
        }
    }

    /// None of the named items covers a part of another.
    void expectApart(const std::vector<std::string>& names) const {
        std::vector<std::pair<std::string, QRectF>> places;
        for (const std::string& name : names) {
            for (const QQuickItem* found : findAll(name)) {
                places.emplace_back(name, rectOf(*found).adjusted(0.5, 0.5, -0.5, -0.5));
            }
        }
        for (auto a = places.begin(); a != places.end(); ++a) {
            for (auto b = a + 1; b != places.end(); ++b) {
                EXPECT_FALSE(a->second.intersects(b->second))
                    << a->first << ' ' << words(a->second) << " and " << b->first << ' ' << words(b->second);
            }
        }
    }

    /// What is in the scrolled content can be brought into the window; sideways nothing has to.
    void expectReachable(const std::vector<std::string>& names) const {
        QQuickItem& area = item("scrollArea");
        EXPECT_TRUE(holds(windowRect(), rectOf(area)));
        auto* content = area.property("contentItem").value<QQuickItem*>();
        const QRectF scrolled(0, 0, area.width(), std::max(area.height(), area.property("contentHeight").toDouble()));
        for (const std::string& name : names) {
            for (const QQuickItem* found : findAll(name)) {
                const QRectF place = found->mapRectToItem(content, found->boundingRect());
                EXPECT_TRUE(holds(scrolled, place)) << name << ' ' << words(place) << " in " << words(scrolled);
            }
        }
    }

    void expectTouchable(const std::vector<std::string>& names) const {
        for (const std::string& name : names) {
            for (const QQuickItem* found : findAll(name)) {
                EXPECT_GE(found->width(), touchSize) << name;
                EXPECT_GE(found->height(), touchSize) << name;
            }
        }
    }

    void expectSignInMeasures() const {
        const QRectF texts = rectOf("texts");
        const QRectF controls = rectOf("controls");
        const double room = windowRect().width() - 2 * margin;
        const double width = isCompact() ? std::max(280.0, room) : isWide() ? std::min(400.0, room) : room;
        EXPECT_EQ(texts.width(), width);
        EXPECT_EQ(texts.left(), std::round((windowRect().width() - width) / 2));
        EXPECT_EQ(controls.width(), width);
        EXPECT_EQ(controls.left(), texts.left());
        EXPECT_EQ(rectOf("description").top() - rectOf("title").bottom(), 16);
        EXPECT_EQ(item("signInButton").height(), 50);
        EXPECT_EQ(rectOf("disc").size(), QSizeF(30, 30));
        EXPECT_EQ(item("signInSurface").property("radius").toDouble(), 12);

        const double gap = controls.top() - texts.bottom();
        const double bottom =
            item("scrollArea").property("contentHeight").toDouble() -
            item("scrollArea").property("contentItem").value<QQuickItem*>()->mapRectFromScene(controls).bottom();
        if (isCompact()) {
            EXPECT_EQ(gap, 16);
            EXPECT_GE(bottom, 16);
        } else if (isWide()) {
            EXPECT_EQ(gap, 64);
            EXPECT_GE(bottom, 24);
        } else {
            EXPECT_GE(gap, 16);
            EXPECT_EQ(bottom, 80);
        }
        if (screen() == AccountScreen::signUp) {
            const QRectF box = rectOf("consentBox");
            const QRectF track = rectOf("track");
            EXPECT_EQ(rectOf("signInButton").top() - box.bottom(), 16);
            EXPECT_EQ(item("consentBox").property("radius").toDouble(), 12);
            EXPECT_EQ(std::min(track.left() - box.left(), box.right() - track.right()), 16);
            EXPECT_GE(std::min(track.top() - box.top(), box.bottom() - track.bottom()), 16);
        } else {
            EXPECT_EQ(find("consentBox"), nullptr);
        }
    }

    /// The words on the sign-in button keep a tenth of its height as a margin, and no less than eight points.
    void expectButtonMargins() const {
        const QRectF button = rectOf("signInButton");
        EXPECT_GE(button.width(), 140);
        EXPECT_TRUE(holds(button.adjusted(8, 5, -8, -5), rectOf("signInCaption")))
            << words(rectOf("signInCaption")) << " in " << words(button);
    }

    void expectMirrored(const Look& look) const {
        const bool isRightToLeft = look.language == "ar";
        const double middle = windowRect().center().x();
        if (screen() != AccountScreen::manage) {
            EXPECT_EQ(rectOf("disc").center().x() < middle, isRightToLeft);
            EXPECT_EQ(rectOf("artworkSlot").left() > rectOf("caption").left(), isRightToLeft);
            EXPECT_EQ(std::min(rectOf("disc").left(), windowRect().right() - rectOf("disc").right()), margin);
        }
        if (find("track") != nullptr) {
            EXPECT_EQ(rectOf("track").center().x() < middle, isRightToLeft);
        }
    }

    void expectGoodArrangement(const Look& look) {
        expectWholeTexts(root());
        expectMirrored(look);
        if (screen() == AccountScreen::manage) {
            const std::vector<std::string> parts{"largeTitle", "sectionTitle", "consentSwitch", "logoutRow",
                                                 "deleteAccountRow"};
            expectApart(parts);
            expectReachable(parts);
            expectTouchable({"consentSwitch", "logoutRow", "deleteAccountRow"});
            EXPECT_EQ(find("largeTitle") != nullptr, isHigh());
            EXPECT_EQ(find("inlineTitle") != nullptr, !isHigh());
            return;
        }
        expectApart({"disc", "icon", "title", "description", "consentBox", "signInButton"});
        expectApart({"closeButton", "consentSwitch", "signInButton"});
        expectReachable({"icon", "title", "description", "consentBox", "signInButton"});
        expectTouchable({"closeButton", "consentSwitch", "signInButton"});
        EXPECT_TRUE(holds(windowRect(), rectOf("closeButton")));
        expectSignInMeasures();
        expectButtonMargins();
    }

    void expectGoodAlert() {
        const QRectF surface = rectOf("alertSurface");
        EXPECT_TRUE(holds(windowRect().adjusted(16, 16, -16, -16), surface)) << words(surface);
        EXPECT_LE(std::abs(surface.center().x() - windowRect().center().x()), 1);
        EXPECT_LE(std::abs(surface.center().y() - windowRect().center().y()), 1);
        EXPECT_TRUE(holds(surface, rectOf("primaryButton")));
        expectApart({"primaryButton", "secondaryButton"});
        expectTouchable({"primaryButton", "secondaryButton"});
        if (find("secondaryButton") != nullptr) {
            EXPECT_TRUE(holds(surface, rectOf("secondaryButton")));
        }
        EXPECT_GE(item("alertMessage").height(), 1);
        EXPECT_LE(rectOf("alertTitle").bottom(), rectOf("alertMessage").top());
        expectWholeTexts(item("alert"));
    }

    void expectLoadingView() {
        EXPECT_EQ(rectOf("loadingBox").size(), QSizeF(20 + 2 * 40, 20 + 2 * 40));
        EXPECT_LE(std::abs(rectOf("loadingBox").center().x() - windowRect().center().x()), 0.5);
        EXPECT_LE(std::abs(rectOf("loadingBox").center().y() - windowRect().center().y()), 0.5);
        EXPECT_EQ(item("loadingBox").property("radius").toDouble(), 18);
        EXPECT_EQ(rectOf("loading"), windowRect());
        EXPECT_EQ(item("wheel").parentItem()->scale(), 1.5);
    }
};

} // namespace

TEST_P(ArrangementTest, IsGoodInEveryLook) {
    showScreen(screen(), size());
    inEveryLook([&](const Look& look) { expectGoodArrangement(look); });
}

TEST_P(ArrangementTest, ShowsAlertsWholeInEveryLook) {
    using Alert = TovrelUserAccountAlert;
    showScreen(screen(), size());
    inEveryLook([&](const Look&) {
        for (const Alert& alert : {Alert::connectionError(), Alert::logout([] {}), Alert::deleteAccount([] {})}) {
            setAlert(alert);
            arrange();
            expectGoodAlert();
            setAlert(std::nullopt);
            EXPECT_EQ(find("alert"), nullptr);
        }
    });
}

TEST_P(ArrangementTest, CoversItselfWhileItLoadsInEveryLook) {
    showScreen(screen(), size());
    const QImage before = window().grabWindow();
    startLoading();
    const QImage during = window().grabWindow();
    const QColor corner = before.pixelColor(2, 2);
    EXPECT_LE(std::abs(during.pixelColor(2, 2).red() - std::lround(corner.red() * 0.9)), 1);
    inEveryLook([&](const Look& look) {
        expectGoodArrangement(look);
        expectLoadingView();
    });
}

TEST_F(LooksTest, KeepsTheCornersOfAnAlertRoundWhileAButtonIsPressed) {
    showScreen(AccountScreen::manage, QSize(375, 812));
    setAlert(TovrelUserAccountAlert::deleteAccount([] {}));
    const QPoint corner = rectOf(item("alertSurface")).bottomRight().toPoint() - QPoint(3, 3);
    const QColor before = grabAtRest().pixelColor(corner);
    QTest::mousePress(&window(), Qt::LeftButton, Qt::NoModifier, rectOf(item("primaryButton")).center().toPoint());
    EXPECT_EQ(grabAtRest().pixelColor(corner), before);
}

INSTANTIATE_TEST_SUITE_P(, ArrangementTest,
                         ::testing::Combine(::testing::Values(AccountScreen::signIn, AccountScreen::signUp,
                                                              AccountScreen::manage),
                                            ::testing::ValuesIn(sizes)),
                         [](const auto& instance) {
                             const QSize size = std::get<QSize>(instance.param);
                             return nameOf(std::get<AccountScreen>(instance.param)) + "In" +
                                    std::to_string(size.width()) + "By" + std::to_string(size.height());
                         });

} // namespace tovrel::tests
