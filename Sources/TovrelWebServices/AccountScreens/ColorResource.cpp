#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/AccountScreens/ColorResource.hpp>
#include <TovrelWebServices/AccountScreens/Private/ModuleResources.hpp>

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <utility>

namespace tovrel {

namespace {

const QJsonObject& colorTable() {
    static const QJsonObject table = [] {
        loadModuleResources();
        QFile file(QStringLiteral(":/tovrel/AccountScreens/Colors.json"));
        if (!file.open(QIODevice::ReadOnly)) {
            fatalError("The colours of the account screens are missing from their library.");
        }
        return QJsonDocument::fromJson(file.readAll()).object();
    }();
    return table;
}

} // namespace

ColorResource::ColorResource(std::string name) : name_(std::move(name)) {}

const ColorResource& ColorResource::accountUserSignInCloseBackground() {
    static const ColorResource color("account_user_sign_in_close_background");
    return color;
}

const ColorResource& ColorResource::accountUserSignInCloseForeground() {
    static const ColorResource color("account_user_sign_in_close_foreground");
    return color;
}

const ColorResource& ColorResource::accountUserSignInConsentBackground() {
    static const ColorResource color("account_user_sign_in_consent_background");
    return color;
}

const ColorResource& ColorResource::accountUserSignInConsentBorder() {
    static const ColorResource color("account_user_sign_in_consent_border");
    return color;
}

const ColorResource& ColorResource::accountUserSignInLoadingBackground() {
    static const ColorResource color("account_user_sign_in_loading_background");
    return color;
}

QColor ColorResource::resolved(Appearance appearance) const {
    const QJsonObject variants = colorTable().value(QString::fromStdString(name_)).toObject();
    const QLatin1String variant(appearance == Appearance::dark ? "dark" : "light");
    return QColor(variants.value(variant).toString());
}

} // namespace tovrel
