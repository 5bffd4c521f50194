#include "Gallery.hpp"

#include "../Console/Journal.hpp"
#include "AccountHost.hpp"

#include <Platform/Concurrency/MainActor.hpp>
#include <Platform/Concurrency/Start.hpp>

#include <chrono>
#include <functional>
#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtGui/QImage>
#include <QtGui/QKeyEvent>
#include <QtQuick/QQuickWindow>
#include <stdexcept>
#include <utility>

using namespace tovrel;

using Configuration = TovrelUserAccountConfiguration;

namespace {

constexpr std::chrono::seconds timeLimit{40};

void waitUntil(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + timeLimit;
    QTimer wake; // the condition may come to hold without an event
    wake.start(std::chrono::milliseconds(5));
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            throw std::runtime_error("a screen did not come");
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
}

/// Lets whatever waits happen.
void settle() {
    for (int round = 0; round < 10; ++round) {
        QCoreApplication::processEvents();
    }
}

template <class T>
T await(Async<T> operation) {
    auto ended = std::make_shared<std::optional<Outcome<T>>>();
    start<T>(MainActor::executor(), std::move(operation),
             [ended](Outcome<T> outcome) { ended->emplace(std::move(outcome)); });
    waitUntil([&] { return ended->has_value(); });
    return std::move((*ended)->value());
}

class Gallery {
public:
    Gallery(const DemoServices& services, std::filesystem::path folder)
        : services_(services), folder_(std::move(folder)), host_(services.accounts()) {
        std::filesystem::create_directories(folder_);
    }

    void drawSignIn() {
        journal::heading("The sign-in screen of a new user");
        show(await(builder().signInViewController(Configuration::SignIn::make(), {})), QSize(390, 700));
        draw("sign-up");
        ScreenLanguage::choose("de");
        show(await(builder().signInViewController(Configuration::SignIn::make(), {})), QSize(667, 375));
        draw("sign-up-german-landscape");
        ScreenLanguage::choose("ar");
        CurrentAppearance::choose(UserInterfaceStyle::dark);
        show(await(builder().signInViewController(Configuration::SignIn::make(), {})), QSize(1024, 768));
        draw("sign-up-arabic-dark-tablet");
        ScreenLanguage::choose("en");
        CurrentAppearance::choose(UserInterfaceStyle::light);
        show(await(builder().signInViewController(brandedSignIn(), {})), QSize(390, 700));
        draw("sign-up-branded");
    }

    void refuse() {
        journal::heading("The user signs in with a browser, and cancels there");
        services_.browser().decide("cancel");
        showAccount();
        signInWithTheKeyboard();
        draw("loading");
        waitForAlert();
        draw("alert-sign-in-failed");
        press(Qt::Key_Return);
        services_.browser().report();
    }

    void signIn() {
        journal::heading("The user signs in");
        services_.browser().decide("continue");
        showAccount();
        signInWithTheKeyboard();
        waitUntilClosed();
        services_.browser().report();
    }

    void leave(int tabs, const std::string& alertName) {
        showAccount();
        draw("manage");
        for (int i = 0; i < tabs; ++i) {
            press(Qt::Key_Tab);
        }
        press(Qt::Key_Return);
        settle();
        draw(alertName);
        press(Qt::Key_Tab);
        press(Qt::Key_Return);
        waitUntilClosed();
    }

    [[nodiscard]] bool isLoggedIn() { return await(builder().isLoggedIn()); }

private:
    [[nodiscard]] TovrelUserAccountViewBuilder& builder() { return host_.account()->builder; }
    [[nodiscard]] QQuickWindow& window() { return controller_->window(); }

    void show(const std::shared_ptr<ViewController>& controller, QSize size) {
        controller_ = HostingController::from(controller);
        window().resize(size);
        window().show();
        window().requestActivate();
        waitUntil([&] { return window().isActive(); });
    }

    /// The combined screen, once it has decided what it shows.
    void showAccount() {
        const bool isLoggedInNow = isLoggedIn();
        show(await(builder().userAccountViewController(Configuration::LoadingType::default_(),
                                                       Configuration::SignIn::make(),
                                                       Configuration::ManageAccount::make(), {})),
             QSize(390, 700));
        waitUntil([&] {
            const auto screens = controller_->rootItem()->findChildren<AccountScreenItem*>();
            return !screens.empty() && screens.front()->isShown();
        });
        journal::line(isLoggedInNow ? "the combined screen shows the account" : "the combined screen asks to sign in");
        settle();
    }

    void signInWithTheKeyboard() {
        press(Qt::Key_Backtab); // the last control
        press(Qt::Key_Return);
        settle();
    }

    void waitForAlert() {
        waitUntil([&] { return window().activeFocusItem() != nullptr && isInAlert(*window().activeFocusItem()); });
        settle();
    }

    [[nodiscard]] bool isInAlert(const QQuickItem& item) {
        for (const QQuickItem* i = &item; i != nullptr; i = i->parentItem()) {
            if (i == controller_->rootItem()) {
                return false;
            }
        }
        return true;
    }

    void waitUntilClosed() {
        waitUntil([&] { return !window().isVisible(); });
    }

    void press(Qt::Key key) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            const auto modifiers = key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier;
            QKeyEvent event(type, key, modifiers);
            QCoreApplication::sendEvent(&window(), &event);
        }
        settle();
    }

    void draw(const std::string& name) {
        settle();
        const std::filesystem::path file = folder_ / (name + ".png");
        if (!window().grabWindow().save(QString::fromStdString(file.string()))) {
            throw std::runtime_error("could not write " + file.string());
        }
        journal::line(file.string());
    }

    const DemoServices& services_;
    std::filesystem::path folder_;
    AccountHost host_;
    std::shared_ptr<HostingController> controller_;
};

} // namespace

void drawGallery(const DemoServices& services, const std::filesystem::path& folder) {
    journal::part("The account screens. There is no display, so they are drawn into files, and this program presses "
                  "the keys.");
    ScreenLanguage::choose("en");
    CurrentAppearance::choose(UserInterfaceStyle::light);
    Gallery gallery(services, folder);
    gallery.drawSignIn();
    gallery.refuse();
    gallery.signIn();
    journal::heading("The user logs out");
    gallery.leave(2, "alert-logout");
    gallery.signIn();
    journal::heading("The user deletes the account");
    gallery.leave(3, "alert-delete-account");
    if (gallery.isLoggedIn()) {
        throw std::runtime_error("the user is still logged in");
    }
}
