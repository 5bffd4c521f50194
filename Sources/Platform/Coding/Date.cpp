#include <Platform/Coding/Date.hpp>

#include <fmt/format.h>

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>

namespace tovrel {

namespace {

class Reader {
public:
    explicit Reader(std::string_view text) noexcept : text_(text) {}

    bool atEnd() const noexcept { return text_.empty(); }

    bool skip(char expected) noexcept {
        if (text_.empty() || text_.front() != expected) {
            return false;
        }
        text_.remove_prefix(1);
        return true;
    }

    bool skipLetter(char lowerCase) noexcept {
        return skip(lowerCase) || skip(static_cast<char>(lowerCase - 'a' + 'A'));
    }

    bool number(std::size_t digits, int& value) noexcept {
        if (text_.size() < digits) {
            return false;
        }
        value = 0;
        for (std::size_t index = 0; index < digits; ++index) {
            if (text_[index] < '0' || text_[index] > '9') {
                return false;
            }
            value = value * 10 + (text_[index] - '0');
        }
        text_.remove_prefix(digits);
        return true;
    }

    bool fraction(double& value) noexcept {
        std::size_t digits = 0;
        while (digits < text_.size() && text_[digits] >= '0' && text_[digits] <= '9') {
            ++digits;
        }
        if (digits == 0) {
            return false;
        }
        double divisor = 1.0;
        double sum = 0.0;
        for (std::size_t index = 0; index < digits && index < 15; ++index) {
            sum = sum * 10.0 + (text_[index] - '0');
            divisor *= 10.0;
        }
        value = sum / divisor;
        text_.remove_prefix(digits);
        return true;
    }

    bool zone(int& secondsEastOfUTC) noexcept {
        if (skipLetter('z')) {
            secondsEastOfUTC = 0;
            return true;
        }
        const bool west = !text_.empty() && text_.front() == '-';
        if (!skip('+') && !skip('-')) {
            return false;
        }
        int hours = 0;
        int minutes = 0;
        if (!number(2, hours)) {
            return false;
        }
        skip(':');
        if (!number(2, minutes) || hours > 23 || minutes > 59) {
            return false;
        }
        secondsEastOfUTC = (hours * 60 + minutes) * 60 * (west ? -1 : 1);
        return true;
    }

private:
    std::string_view text_;
};

} // namespace

Date Date::now() noexcept {
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return fromSecondsSince1970(std::chrono::duration<double>(sinceEpoch).count());
}

std::optional<Date> Date::fromISO8601(std::string_view text) noexcept {
    Reader reader(text);
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    double fraction = 0.0;
    int zone = 0;
    if (!reader.number(4, year) || !reader.skip('-') || !reader.number(2, month) || !reader.skip('-') ||
        !reader.number(2, day) || !reader.skipLetter('t') || !reader.number(2, hour) || !reader.skip(':') ||
        !reader.number(2, minute) || !reader.skip(':') || !reader.number(2, second)) {
        return std::nullopt;
    }
    if (reader.skip('.') && !reader.fraction(fraction)) {
        return std::nullopt;
    }
    if (!reader.zone(zone) || !reader.atEnd()) {
        return std::nullopt;
    }
    const std::chrono::year_month_day calendarDay(std::chrono::year(year),
                                                  std::chrono::month(static_cast<unsigned>(month)),
                                                  std::chrono::day(static_cast<unsigned>(day)));
    if (!calendarDay.ok() || hour > 23 || minute > 59 || second > 60) {
        return std::nullopt;
    }
    const auto days = std::chrono::sys_days(calendarDay).time_since_epoch().count();
    const std::int64_t seconds = std::int64_t{days} * 86400 + hour * 3600 + minute * 60 + second - zone;
    return fromSecondsSince1970(static_cast<double>(seconds) + fraction);
}

std::optional<std::string> Date::iso8601() const {
    constexpr double firstMillisecond = -62167219200000.0; // of the year 0
    constexpr double endMillisecond = 253402300800000.0;   // of the year 9999
    const double milliseconds = std::nearbyint(millisecondsSince1970());
    if (!(milliseconds >= firstMillisecond && milliseconds < endMillisecond)) {
        return std::nullopt;
    }
    const std::chrono::sys_time<std::chrono::milliseconds> time(
        std::chrono::milliseconds(static_cast<std::int64_t>(milliseconds)));
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    std::string text = fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}", static_cast<int>(date.year()),
                                   static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                                   clock.hours().count(), clock.minutes().count(), clock.seconds().count());
    if (clock.subseconds().count() != 0) {
        text += fmt::format(".{:03}", clock.subseconds().count());
    }
    return text + 'Z';
}

} // namespace tovrel
