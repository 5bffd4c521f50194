#pragma once

#include <Platform/Coding/Coding.hpp>
#include <Platform/System/Export.hpp>

#include <optional>
#include <string>
#include <tuple>
#include <utility>

namespace tovrel {

/// Under which key and for how long a host's cache keeps an item. Shared by reference and stored with the item.
class TOVREL_EXPORT CacheItemConfiguration {
public:
    /// An empty key, kept without limit.
    CacheItemConfiguration() = default;

    /// @param lifetime In seconds from the item's creation date; absent for no limit.
    explicit CacheItemConfiguration(std::string key, std::optional<double> lifetime = std::nullopt)
        : key_(std::move(key)), lifetime_(lifetime) {}

    [[nodiscard]] const std::string& key() const { return key_; }

    /// In seconds from the item's creation date; absent for no limit.
    [[nodiscard]] const std::optional<double>& lifetime() const { return lifetime_; }

    static constexpr auto fields() {
        return std::tuple{Field<&CacheItemConfiguration::key_, "key">{},
                          Field<&CacheItemConfiguration::lifetime_, "lifetime">{}};
    }

    friend bool operator==(const CacheItemConfiguration&, const CacheItemConfiguration&) = default;

private:
    std::string key_;
    std::optional<double> lifetime_;
};

} // namespace tovrel
