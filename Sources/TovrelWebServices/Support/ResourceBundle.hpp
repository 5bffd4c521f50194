#pragma once

#include <Platform/System/Export.hpp>
#include <QZFrameworkCoreUI/UserInterfaceStyle.hpp>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tovrel {

/// The texts and colours that come with a library. Implementations are thread-safe and only read.
class TOVREL_EXPORT ResourceBundle {
public:
    virtual ~ResourceBundle();
    ResourceBundle(const ResourceBundle&) = delete;
    ResourceBundle& operator=(const ResourceBundle&) = delete;

    /// The text of a key in the user's language; absent when the table has no such key.
    [[nodiscard]] virtual std::optional<std::string> localizedString(std::string_view key,
                                                                     std::string_view table) const = 0;

    /// A named colour as 0xAARRGGBB; absent when there is none of this name.
    [[nodiscard]] virtual std::optional<std::uint32_t> color(std::string_view name, UserInterfaceStyle style) const = 0;

protected:
    ResourceBundle();
};

/// The bundle of this library's colours: the one that it has at the first call, for the rest of the process.
/// Thread-safe.
TOVREL_EXPORT const ResourceBundle& resourceBundle();

} // namespace tovrel
