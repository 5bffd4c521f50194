#pragma once

#include <Platform/System/Export.hpp>

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace tovrel {

/// A point in time: seconds since 2001-01-01T00:00:00Z, without leap seconds, as a double.
class TOVREL_EXPORT Date {
public:
    /// Seconds from 1970-01-01T00:00:00Z to 2001-01-01T00:00:00Z.
    static constexpr double secondsFrom1970To2001 = 978307200.0;

    /// 2001-01-01T00:00:00Z.
    constexpr Date() noexcept = default;
    /// `seconds` after 2001-01-01T00:00:00Z; negative before.
    constexpr explicit Date(double seconds) noexcept : seconds_(seconds) {}

    /// The present, from the system clock.
    static Date now() noexcept;
    static constexpr Date fromSecondsSince1970(double seconds) noexcept {
        return Date(seconds - secondsFrom1970To2001);
    }
    static constexpr Date fromMillisecondsSince1970(double milliseconds) noexcept {
        return fromSecondsSince1970(milliseconds / 1000.0);
    }
    /// Reads a date and time with time zone (RFC 3339 section 5.6, for example "2024-02-29T12:30:00+01:00").
    ///
    /// The zone may also be written without colon; fractions of a second of any length are read; the second 60 is the
    /// first of the next minute. Absent for any other text.
    static std::optional<Date> fromISO8601(std::string_view text) noexcept;

    constexpr double secondsSince2001() const noexcept { return seconds_; }
    constexpr double secondsSince1970() const noexcept { return seconds_ + secondsFrom1970To2001; }
    constexpr double millisecondsSince1970() const noexcept { return secondsSince1970() * 1000.0; }
    /// The date in UTC in the form of RFC 3339 section 5.6, for example "2024-02-29T11:30:00Z", rounded to
    /// milliseconds, which are written only when they are not zero. Absent outside the years 0 to 9999.
    std::optional<std::string> iso8601() const;

    constexpr Date advancedBy(double seconds) const noexcept { return Date(seconds_ + seconds); }
    /// Seconds from `earlier` to this date.
    constexpr double secondsSince(Date earlier) const noexcept { return seconds_ - earlier.seconds_; }

    friend constexpr bool operator==(Date, Date) noexcept = default;
    friend constexpr std::partial_ordering operator<=>(Date, Date) noexcept = default;

private:
    double seconds_ = 0.0;
};

} // namespace tovrel
