#include <Platform/URLLoading/Detail/ASCII.hpp>
#include <Platform/URLLoading/Detail/Cache/HTTPDate.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>

namespace tovrel {

namespace {

/// Reads a text from its front; the first thing that is not as expected makes every later read fail too.
class Cursor {
public:
    explicit Cursor(std::string_view text) : rest_(text) {}

    void expect(std::string_view text) {
        isGood_ = isGood_ && ascii::equalIgnoringCase(rest_.substr(0, text.size()), text);
        drop(text.size());
    }

    int number(std::size_t digits) {
        int value = 0;
        const std::string_view text = rest_.substr(0, digits);
        isGood_ = isGood_ && text.size() == digits && std::all_of(text.begin(), text.end(), ascii::isDigit);
        if (isGood_) {
            std::from_chars(text.data(), text.data() + text.size(), value);
        }
        drop(digits);
        return value;
    }

    /// The position of the name in the list that the text goes on with.
    template <std::size_t count>
    int name(const std::array<std::string_view, count>& names) {
        for (std::size_t i = 0; i < count; ++i) {
            if (ascii::equalIgnoringCase(rest_.substr(0, names[i].size()), names[i])) {
                drop(names[i].size());
                return static_cast<int>(i);
            }
        }
        isGood_ = false;
        return 0;
    }

    bool startsWith(char c) const { return rest_.starts_with(c); }
    bool isAtEnd() const { return isGood_ && rest_.empty(); }

private:
    void drop(std::size_t count) { rest_.remove_prefix(std::min(count, rest_.size())); }

    std::string_view rest_;
    bool isGood_ = true;
};

constexpr std::array<std::string_view, 12> months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                  "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr std::array<std::string_view, 7> days{"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
constexpr std::array<std::string_view, 7> longDays{"Monday", "Tuesday",  "Wednesday", "Thursday",
                                                   "Friday", "Saturday", "Sunday"};

struct Time {
    int year = 0;
    int month = 0; // from 0
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;

    std::optional<Date> date() const {
        const std::chrono::year_month_day calendar{std::chrono::year(year),
                                                   std::chrono::month(static_cast<unsigned>(month + 1)),
                                                   std::chrono::day(static_cast<unsigned>(day))};
        constexpr int leapSecond = 60;
        if (!calendar.ok() || hour > 23 || minute > 59 || second > leapSecond) {
            return std::nullopt;
        }
        const auto seconds = std::chrono::sys_seconds(std::chrono::sys_days(calendar)) + std::chrono::hours(hour) +
                             std::chrono::minutes(minute) + std::chrono::seconds(second);
        return Date::fromSecondsSince1970(static_cast<double>(seconds.time_since_epoch().count()));
    }

    void readClock(Cursor& text) {
        hour = text.number(2);
        text.expect(":");
        minute = text.number(2);
        text.expect(":");
        second = text.number(2);
    }
};

std::optional<Date> finished(const Cursor& text, const Time& time) {
    return text.isAtEnd() ? time.date() : std::nullopt;
}

/// "Sun, 06 Nov 1994 08:49:37 GMT"
std::optional<Date> fixdate(Cursor text) {
    Time time;
    text.name(days);
    text.expect(", ");
    time.day = text.number(2);
    text.expect(" ");
    time.month = text.name(months);
    text.expect(" ");
    time.year = text.number(4);
    text.expect(" ");
    time.readClock(text);
    text.expect(" GMT");
    return finished(text, time);
}

/// "Sunday, 06-Nov-94 08:49:37 GMT"
std::optional<Date> rfc850(Cursor text, Date now) {
    Time time;
    text.name(longDays);
    text.expect(", ");
    time.day = text.number(2);
    text.expect("-");
    time.month = text.name(months);
    text.expect("-");
    const int yearOfCentury = text.number(2);
    text.expect(" ");
    time.readClock(text);
    text.expect(" GMT");

    constexpr int yearsPerCentury = 100;
    constexpr int mostYearsAhead = 50;
    const std::chrono::sys_days today = std::chrono::floor<std::chrono::days>(
        std::chrono::sys_seconds(std::chrono::seconds(std::llround(now.secondsSince1970()))));
    const int thisYear = static_cast<int>(std::chrono::year_month_day(today).year());
    time.year = thisYear - thisYear % yearsPerCentury + yearOfCentury;
    if (time.year > thisYear + mostYearsAhead) {
        time.year -= yearsPerCentury;
    }
    return finished(text, time);
}

/// "Sun Nov  6 08:49:37 1994"
std::optional<Date> asctime(Cursor text) {
    Time time;
    text.name(days);
    text.expect(" ");
    time.month = text.name(months);
    text.expect(" ");
    if (text.startsWith(' ')) {
        text.expect(" ");
        time.day = text.number(1);
    } else {
        time.day = text.number(2);
    }
    text.expect(" ");
    time.readClock(text);
    text.expect(" ");
    time.year = text.number(4);
    return finished(text, time);
}

} // namespace

std::optional<Date> httpDate(std::string_view text, Date now) {
    const Cursor cursor(ascii::trimmed(text));
    if (const auto date = fixdate(cursor)) {
        return date;
    }
    if (const auto date = rfc850(cursor, now)) {
        return date;
    }
    return asctime(cursor);
}

} // namespace tovrel
