#include <TovrelTesting/Browser/ChromiumError.hpp>

#include <utility>

namespace tovrel::testing {

ChromiumError::ChromiumError(Kind kind, std::string message) : Error(std::move(message)), kind_(kind) {}

ChromiumError ChromiumError::couldNotStart() {
    return {Kind::couldNotStart, "Chromium could not be started"};
}

ChromiumError ChromiumError::ended() {
    return {Kind::ended, "Chromium has ended"};
}

ChromiumError ChromiumError::refused(const std::string& command) {
    return {Kind::refused, "Chromium refused the command " + command};
}

ChromiumError ChromiumError::timedOut(const std::string& what) {
    return {Kind::timedOut, "Chromium did not come to this in time: " + what};
}

} // namespace tovrel::testing
