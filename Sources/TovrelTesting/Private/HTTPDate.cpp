#include <TovrelTesting/Private/HTTPDate.hpp>

#include <date/date.h>
#include <fmt/chrono.h>

#include <cmath>
#include <locale>
#include <sstream>

namespace tovrel::testing {

std::string httpDate(Date date) {
    const auto seconds = static_cast<std::time_t>(std::floor(date.secondsSince1970()));
    return fmt::format("{:%a, %d %b %Y %H:%M:%S} GMT", fmt::gmtime(seconds));
}

std::optional<Date> dateFromHTTP(const std::string& text) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    date::sys_seconds time;
    stream >> date::parse("%a, %d %b %Y %T GMT", time);
    const bool isWhole = !stream.fail() && stream.peek() == std::istringstream::traits_type::eof();
    const auto seconds = static_cast<double>(time.time_since_epoch().count());
    return isWhole ? std::optional(Date::fromSecondsSince1970(seconds)) : std::nullopt;
}

} // namespace tovrel::testing
