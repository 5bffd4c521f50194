#pragma once

#include <Platform/System/Export.hpp>

#include <functional>
#include <string_view>

namespace tovrel {

/// Decides what a failed assertion does: stop, or report and go on. Thread-safe.
class TOVREL_EXPORT AssertionCoordinator {
public:
    using Handler = std::function<void(std::string_view message, std::string_view file, int line)>;

    AssertionCoordinator() = delete;

    /// Hands the failure to the handler; execution goes on when that returns.
    static void assertionFailure(std::string_view message, std::string_view file, int line);

    /// Replaces the handler; an empty one stands for the initial one, which writes a fault to the system log and
    /// returns.
    static void setHandler(Handler handler);
};

} // namespace tovrel
