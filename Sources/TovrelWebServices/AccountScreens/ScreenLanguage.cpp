#include <Platform/Events/PassthroughSubject.hpp>
#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/AccountScreens/ScreenLanguage.hpp>

#include <algorithm>
#include <mutex>
#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QLocale>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <utility>

namespace tovrel {

namespace {

bool isAvailable(const std::string& language) {
    const auto& all = ScreenLanguage::available();
    return std::find(all.begin(), all.end(), language) != all.end();
}

std::string languageOfLocale() {
    for (const QString& name : QLocale().uiLanguages()) {
        std::string language = name.section(QLatin1Char('-'), 0, 0).toStdString();
        if (isAvailable(language)) {
            return language;
        }
    }
    return "en";
}

struct Choice {
    std::mutex mutex;
    std::optional<std::string> language;
};

Choice& choice() {
    static Choice& instance = *new Choice();
    return instance;
}

/// Compares the language with the last one known whenever it may have changed.
class LanguageWatch final : public QObject {
public:
    static LanguageWatch& instance() {
        static LanguageWatch& watch = *new LanguageWatch();
        watch.followApplication();
        return watch;
    }

    void announceChange() {
        std::string now = ScreenLanguage::current();
        if (known_ != now) {
            known_ = now;
            changes_.send(std::move(now));
        }
    }

    [[nodiscard]] Publisher<std::string> changes() const { return changes_.publisher(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool mayChange = event->type() == QEvent::LanguageChange || event->type() == QEvent::LocaleChange;
        if (mayChange && watched == application_) {
            announceChange();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    LanguageWatch() : known_(ScreenLanguage::current()) {}

    void followApplication() {
        if (application_ != QCoreApplication::instance()) {
            application_ = QCoreApplication::instance();
            application_->installEventFilter(this);
        }
    }

    QPointer<QCoreApplication> application_;
    std::string known_;
    PassthroughSubject<std::string> changes_;
};

} // namespace

const std::vector<std::string>& ScreenLanguage::available() {
    static const auto& languages = *new std::vector<std::string>{"ar", "de", "en", "es", "fr"};
    return languages;
}

std::string ScreenLanguage::current() {
    {
        const std::scoped_lock lock(choice().mutex);
        if (choice().language) {
            return *choice().language;
        }
    }
    return languageOfLocale();
}

bool ScreenLanguage::isRightToLeft() {
    return QLocale(QString::fromStdString(current())).textDirection() == Qt::RightToLeft;
}

void ScreenLanguage::choose(std::optional<std::string> language) {
    if (language && !isAvailable(*language)) {
        fatalError("The account screens have no texts in the language that was chosen.");
    }
    LanguageWatch& watch = LanguageWatch::instance();
    {
        const std::scoped_lock lock(choice().mutex);
        choice().language = std::move(language);
    }
    watch.announceChange();
}

Publisher<std::string> ScreenLanguage::changes() {
    return LanguageWatch::instance().changes();
}

} // namespace tovrel
