#include "GoldenImage.hpp"
#include "LooksTest.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtGui/QPainter>
#include <string>
#include <utility>
#include <vector>

namespace tovrel::tests {

namespace {

enum class State { idle, focused, logoutAlert, deleteAlert, errorAlert, loading };

struct Picture {
    std::string name;
    AccountScreen screen;
    QSize size;
    Look look;
    State state;
    bool hasIcon;

    Picture(std::string pictureName, AccountScreen shownScreen, QSize windowSize, Look shownLook,
            State shownState = State::idle, bool showsIcon = false)
        : name(std::move(pictureName)),
          screen(shownScreen),
          size(windowSize),
          look(std::move(shownLook)),
          state(shownState),
          hasIcon(showsIcon) {}

    friend std::ostream& operator<<(std::ostream& out, const Picture& picture) { return out << picture.name; }
};

std::vector<Picture> pictures() {
    constexpr auto light = UserInterfaceStyle::light;
    constexpr auto dark = UserInterfaceStyle::dark;
    using Screen = AccountScreen;
    return {
        {"SignUp", Screen::signUp, QSize(375, 812), Look(light, "en")},
        {"SignUpDarkWithIcon", Screen::signUp, QSize(375, 812), Look(dark, "en"), State::idle, true},
        {"SignUpArabic", Screen::signUp, QSize(375, 812), Look(light, "ar")},
        {"SignUpGermanLargeText", Screen::signUp, QSize(375, 812), Look(light, "de", 2)},
        {"SignUpLandscape", Screen::signUp, QSize(812, 375), Look(light, "en")},
        {"SignUpTabletWithIcon", Screen::signUp, QSize(768, 1024), Look(light, "en"), State::idle, true},
        {"SignInFocusedDarkDesktop", Screen::signIn, QSize(1366, 1024), Look(dark, "en"), State::focused},
        {"SignInErrorSmall", Screen::signIn, QSize(320, 568), Look(light, "en"), State::errorAlert},
        {"SignInLoading", Screen::signIn, QSize(375, 812), Look(light, "en"), State::loading},
        {"Manage", Screen::manage, QSize(375, 812), Look(light, "en")},
        {"ManageFocusedGermanDarkSmall", Screen::manage, QSize(320, 568), Look(dark, "de"), State::focused},
        {"ManageArabicDarkLandscape", Screen::manage, QSize(812, 375), Look(dark, "ar")},
        {"ManageLogoutDark", Screen::manage, QSize(375, 812), Look(dark, "en"), State::logoutAlert},
        {"ManageDeleteGermanDesktop", Screen::manage, QSize(1366, 1024), Look(light, "de"), State::deleteAlert},
        {"ManageLoadingDark", Screen::manage, QSize(375, 812), Look(dark, "en"), State::loading},
    };
}

class GoldenImageTest : public LooksTest, public ::testing::WithParamInterface<Picture> {
protected:
    void addIcon() {
        QImage drawn(160, 160, QImage::Format_ARGB32_Premultiplied);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor("#3B5BDB"));
        painter.drawRoundedRect(drawn.rect(), 36, 36);
        painter.setBrush(Qt::white);
        painter.drawEllipse(QPointF(80, 80), 36, 36);
        painter.end();
        const QString path = folder_.filePath(QStringLiteral("icon.png"));
        ASSERT_TRUE(drawn.save(path));
        signInConfig_->icon(Configuration::SignIn::Icon::image(Image(QUrl::fromLocalFile(path))));
    }

    void enter(State state) {
        switch (state) {
        case State::idle:
            break;
        case State::focused:
            press(Qt::Key_Tab);
            press(Qt::Key_Tab);
            break;
        case State::logoutAlert:
            manageModel_->onLogoutRowTap();
            break;
        case State::deleteAlert:
            manageModel_->onDeleteAccountRowTap();
            break;
        case State::errorAlert:
            setAlert(TovrelUserAccountAlert::connectionError());
            break;
        case State::loading:
            startLoading();
            break;
        }
    }

private:
    QTemporaryDir folder_;
};

} // namespace

TEST_P(GoldenImageTest, LooksAsKept) {
    const Picture& picture = GetParam();
    choose(picture.look);
    if (picture.hasIcon) {
        addIcon();
    }
    showScreen(picture.screen, picture.size);
    enter(picture.state);
    EXPECT_TRUE(looksAsKept(grabAtRest(), picture.name));
}

INSTANTIATE_TEST_SUITE_P(, GoldenImageTest, ::testing::ValuesIn(pictures()),
                         [](const auto& instance) { return instance.param.name; });

} // namespace tovrel::tests
