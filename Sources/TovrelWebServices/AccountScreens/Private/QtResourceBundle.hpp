#pragma once

#include <TovrelWebServices/Support/ResourceBundle.hpp>

#include <QtCore/QJsonObject>

namespace tovrel {

/// A bundle of files that Qt has compiled into this library.
class QtResourceBundle final : public ResourceBundle {
public:
    QtResourceBundle();

    [[nodiscard]] std::optional<std::string> localizedString(std::string_view key,
                                                             std::string_view table) const override;
    [[nodiscard]] std::optional<std::uint32_t> color(std::string_view name, UserInterfaceStyle style) const override;

private:
    QJsonObject colors_;
};

} // namespace tovrel
