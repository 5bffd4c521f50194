#pragma once

#include <Platform/System/Export.hpp>

#include <cstdint>

namespace tovrel {

/// A size in units of 1024 bytes.
class TOVREL_EXPORT WebRequestCacheSize {
public:
    enum class Unit { mb, kb };

    /// Mebibytes.
    [[nodiscard]] static constexpr WebRequestCacheSize mb(double size) { return WebRequestCacheSize(Unit::mb, size); }
    /// Kibibytes.
    [[nodiscard]] static constexpr WebRequestCacheSize kb(double size) { return WebRequestCacheSize(Unit::kb, size); }

    [[nodiscard]] constexpr Unit unit() const { return unit_; }
    [[nodiscard]] constexpr double size() const { return size_; }

    /// Truncated toward zero. A size that is no 64-bit number of bytes stops the process.
    [[nodiscard]] std::int64_t bytes() const;

    /// Same unit, same number: 1 mebibyte is not equal to 1024 kibibytes.
    friend constexpr bool operator==(const WebRequestCacheSize&, const WebRequestCacheSize&) = default;

private:
    constexpr WebRequestCacheSize(Unit unit, double size) : unit_(unit), size_(size) {}

    Unit unit_;
    double size_;
};

/// The sizes of a response cache.
struct TOVREL_EXPORT WebRequestCacheDefinition {
    WebRequestCacheSize memory;
    WebRequestCacheSize disk;

    constexpr WebRequestCacheDefinition(WebRequestCacheSize memorySize, WebRequestCacheSize diskSize)
        : memory(memorySize), disk(diskSize) {}

    /// 5 mebibytes in memory and 50 on disk.
    [[nodiscard]] static constexpr WebRequestCacheDefinition default_() {
        return WebRequestCacheDefinition(WebRequestCacheSize::mb(5), WebRequestCacheSize::mb(50));
    }

    friend constexpr bool operator==(const WebRequestCacheDefinition&, const WebRequestCacheDefinition&) = default;
};

} // namespace tovrel
