#include <Platform/Events/PassthroughSubject.hpp>
#include <TovrelWebServices/AccountScreens/CurrentAppearance.hpp>

#include <QtCore/QEvent>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>

namespace tovrel {

namespace {

UserInterfaceStyle appearanceOfPalette() {
    const QPalette palette = QGuiApplication::palette();
    const bool isDark = palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
    return isDark ? UserInterfaceStyle::dark : UserInterfaceStyle::light;
}

/// Compares the appearance with the last one known whenever it may have changed.
class AppearanceWatch final : public QObject {
public:
    static AppearanceWatch& instance() {
        static AppearanceWatch& watch = *new AppearanceWatch();
        watch.followApplication();
        return watch;
    }

    [[nodiscard]] UserInterfaceStyle current() const { return chosen_.value_or(appearanceOfPalette()); }

    void choose(std::optional<UserInterfaceStyle> appearance) {
        chosen_ = appearance;
        announceChange();
    }

    [[nodiscard]] Publisher<UserInterfaceStyle> changes() const { return changes_.publisher(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::ApplicationPaletteChange && watched == application_) {
            announceChange();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    AppearanceWatch() : known_(current()) {}

    void followApplication() {
        if (application_ != QCoreApplication::instance()) {
            application_ = QCoreApplication::instance();
            application_->installEventFilter(this);
        }
    }

    void announceChange() {
        if (known_ != current()) {
            known_ = current();
            changes_.send(known_);
        }
    }

    QPointer<QCoreApplication> application_;
    std::optional<UserInterfaceStyle> chosen_;
    UserInterfaceStyle known_;
    PassthroughSubject<UserInterfaceStyle> changes_;
};

} // namespace

UserInterfaceStyle CurrentAppearance::get() {
    return AppearanceWatch::instance().current();
}

void CurrentAppearance::choose(std::optional<UserInterfaceStyle> appearance) {
    AppearanceWatch::instance().choose(appearance);
}

Publisher<UserInterfaceStyle> CurrentAppearance::changes() {
    return AppearanceWatch::instance().changes();
}

} // namespace tovrel
