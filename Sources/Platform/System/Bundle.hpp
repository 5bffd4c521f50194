#pragma once

#include <Platform/System/Export.hpp>

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace tovrel {

/// What an application says about itself. A value: copies are independent.
class TOVREL_EXPORT Bundle {
public:
    using InfoValue = std::variant<std::string, std::int64_t, double, bool>;
    using InfoDictionary = std::map<std::string, InfoValue>;

    /// The application's own bundle: "Info.plist" in the folder of its executable. Read once, on first use;
    /// thread-safe.
    static const Bundle& main();

    explicit Bundle(InfoDictionary infoDictionary);

    /// The bundle of a folder, described by its "Info.plist". Without that file, or where it cannot be read, nothing is
    /// known of the bundle; entries that are neither text, number nor truth value are left out.
    explicit Bundle(const std::filesystem::path& folder);

    [[nodiscard]] const InfoDictionary& infoDictionary() const { return infoDictionary_; }

    /// The entry if it is there and a string.
    [[nodiscard]] std::optional<std::string> string(std::string_view key) const;

private:
    InfoDictionary infoDictionary_;
};

} // namespace tovrel
