#include <TovrelWebServices/AccountScreens/CurrentAppearance.hpp>

#include <gtest/gtest.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>
#include <Support/EventLoop.hpp>
#include <vector>

namespace tovrel::tests {

namespace {

class CurrentAppearanceTest : public ::testing::Test {
protected:
    void TearDown() override {
        CurrentAppearance::choose(std::nullopt);
        QGuiApplication::setPalette(QPalette());
    }

    static void setPalette(Qt::GlobalColor window, Qt::GlobalColor text) {
        QPalette palette;
        palette.setColor(QPalette::Window, window);
        palette.setColor(QPalette::WindowText, text);
        QGuiApplication::setPalette(palette);
        QCoreApplication::processEvents();
    }

    std::vector<UserInterfaceStyle> seen_;
    Subscription subscription_ =
        CurrentAppearance::changes().subscribe([this](UserInterfaceStyle appearance) { seen_.push_back(appearance); });
};

} // namespace

TEST_F(CurrentAppearanceTest, FollowsTheApplicationsPaletteWhileItRuns) {
    setPalette(Qt::white, Qt::black);
    EXPECT_EQ(CurrentAppearance::get(), UserInterfaceStyle::light);
    seen_.clear();
    setPalette(Qt::black, Qt::white);
    EXPECT_EQ(CurrentAppearance::get(), UserInterfaceStyle::dark);
    setPalette(Qt::white, Qt::black);
    EXPECT_EQ(CurrentAppearance::get(), UserInterfaceStyle::light);
    EXPECT_EQ(seen_, (std::vector{UserInterfaceStyle::dark, UserInterfaceStyle::light}));
}

TEST_F(CurrentAppearanceTest, IsTheHostsChoiceWhateverThePaletteSays) {
    setPalette(Qt::white, Qt::black);
    seen_.clear();
    CurrentAppearance::choose(UserInterfaceStyle::dark);
    EXPECT_EQ(CurrentAppearance::get(), UserInterfaceStyle::dark);
    setPalette(Qt::black, Qt::white);
    setPalette(Qt::white, Qt::black);
    EXPECT_EQ(seen_, std::vector{UserInterfaceStyle::dark});
    CurrentAppearance::choose(std::nullopt);
    EXPECT_EQ(seen_, (std::vector{UserInterfaceStyle::dark, UserInterfaceStyle::light}));
}

TEST_F(CurrentAppearanceTest, SaysNothingOfAChangeThatIsNone) {
    setPalette(Qt::white, Qt::black);
    seen_.clear();
    CurrentAppearance::choose(UserInterfaceStyle::light);
    CurrentAppearance::choose(std::nullopt);
    EXPECT_TRUE(seen_.empty());
}

} // namespace tovrel::tests
