#pragma once

#include "../Views/ScreenTest.hpp"

#include <QZFrameworkCoreUI/UserInterfaceStyle.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountAlert.hpp>

#include <optional>
#include <ostream>
#include <QtCore/QSize>
#include <QtGui/QFont>
#include <string>
#include <utility>

namespace tovrel::tests {

/// What the user has chosen in the system.
struct Look {
    UserInterfaceStyle appearance = UserInterfaceStyle::light;
    std::string language = "en";
    double textScale = 1;

    Look() = default;
    Look(UserInterfaceStyle chosenAppearance, std::string chosenLanguage, double chosenScale = 1)
        : appearance(chosenAppearance), language(std::move(chosenLanguage)), textScale(chosenScale) {}

    friend std::ostream& operator<<(std::ostream& out, const Look& look) {
        return out << (look.appearance == UserInterfaceStyle::dark ? "dark, " : "light, ") << look.language
                   << ", text at " << look.textScale * 100 << " %";
    }
};

enum class AccountScreen { signIn, signUp, manage };

inline std::string nameOf(AccountScreen screen) {
    switch (screen) {
    case AccountScreen::signIn:
        return "SignIn";
    case AccountScreen::signUp:
        return "SignUp";
    case AccountScreen::manage:
        break;
    }
    return "Manage";
}

/// Shows account screens in one font, whichever others the machine has.
class LooksTest : public ScreenTest {
protected:
    void SetUp() override;
    void TearDown() override;

    static void choose(const Look& look);
    void showScreen(AccountScreen screen, QSize size);

    /// Presents an alert on the screen shown; none closes it.
    void setAlert(std::optional<TovrelUserAccountAlert> alert);

    /// Begins an operation of the screen shown, which goes on until the test ends.
    void startLoading();

    /// Lets the scene place what has changed; it does so when it draws.
    void arrange();

    /// The screen with its wheel at rest.
    [[nodiscard]] QImage grabAtRest();

private:
    QFont systemFont_;
};

} // namespace tovrel::tests
