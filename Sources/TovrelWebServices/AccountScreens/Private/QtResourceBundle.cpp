#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/AccountScreens/Private/QtResourceBundle.hpp>

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtGui/QColor>

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

QtResourceBundle::QtResourceBundle() : colors_(readColors()) {}

std::optional<std::string> QtResourceBundle::localizedString(std::string_view /*key*/,
                                                             std::string_view /*table*/) const {
    return std::nullopt;
}

std::optional<std::uint32_t> QtResourceBundle::color(std::string_view name, UserInterfaceStyle style) const {
    const QJsonObject variants = colors_.value(QLatin1String(name)).toObject();
    const QLatin1String variant(style == UserInterfaceStyle::dark ? "dark" : "light");
    const QColor color(variants.value(variant).toString());
    return color.isValid() ? std::optional<std::uint32_t>(color.rgba()) : std::nullopt;
}

} // namespace tovrel
