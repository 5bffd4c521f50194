#pragma once

#include <TovrelWebServices/Support/ResourceBundle.hpp>

#include <map>
#include <memory>
#include <QtCore/QJsonObject>
#include <string>

class QTranslator;

namespace tovrel {

/// A bundle of files that Qt has compiled into this library.
class QtResourceBundle final : public ResourceBundle {
public:
    QtResourceBundle();
    ~QtResourceBundle() override;

    [[nodiscard]] std::optional<std::string> localizedString(std::string_view key,
                                                             std::string_view table) const override;
    [[nodiscard]] std::optional<std::uint32_t> color(std::string_view name, UserInterfaceStyle style) const override;

private:
    QJsonObject colors_;
    std::map<std::string, std::unique_ptr<const QTranslator>> tables_; // by language
};

} // namespace tovrel
