#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/AccountScreens/Private/QtResourceBundle.hpp>
#include <TovrelWebServices/AccountScreens/ScreenLanguage.hpp>

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QTranslator>
#include <QtGui/QColor>
#include <utility>

namespace tovrel {

namespace {

QJsonObject readColors() {
    QFile file(QStringLiteral(":/tovrel/AccountScreens/Colors.json"));
    if (!file.open(QIODevice::ReadOnly)) {
        fatalError("The colours of the account screens are missing from their library.");
    }
    return QJsonDocument::fromJson(file.readAll()).object();
}

} // namespace

QtResourceBundle::QtResourceBundle() : colors_(readColors()) {
    for (const std::string& language : ScreenLanguage::available()) {
        auto table = std::make_unique<QTranslator>();
        const QString file = QStringLiteral(":/tovrel/AccountScreens/Localizable_%1.qm");
        if (!table->load(file.arg(QString::fromStdString(language)))) {
            fatalError("The texts of the account screens are missing from their library.");
        }
        tables_.emplace(language, std::move(table));
    }
}

QtResourceBundle::~QtResourceBundle() = default;

std::optional<std::string> QtResourceBundle::localizedString(std::string_view key, std::string_view table) const {
    if (table != "Localizable") {
        return std::nullopt;
    }
    const QTranslator& translator = *tables_.at(ScreenLanguage::current());
    const QString text = translator.translate(nullptr, std::string(key).c_str());
    return text.isNull() ? std::nullopt : std::optional<std::string>(text.toStdString());
}

std::optional<std::uint32_t> QtResourceBundle::color(std::string_view name, UserInterfaceStyle style) const {
    const QJsonObject variants = colors_.value(QLatin1String(name)).toObject();
    const QLatin1String variant(style == UserInterfaceStyle::dark ? "dark" : "light");
    const QColor color(variants.value(variant).toString());
    return color.isValid() ? std::optional<std::uint32_t>(color.rgba()) : std::nullopt;
}

} // namespace tovrel
