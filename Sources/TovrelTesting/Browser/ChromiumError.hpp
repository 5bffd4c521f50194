#pragma once

#include <Platform/System/Error.hpp>
#include <Platform/System/Export.hpp>

#include <string>

namespace tovrel::testing {

/// Why a browser did not do what a test wants.
class TOVREL_EXPORT ChromiumError : public Error {
public:
    enum class Kind {
        /// There is no such program, or it ended at once.
        couldNotStart,
        /// It ended, or hung up.
        ended,
        /// It refused a command.
        refused,
        /// What was waited for did not come in time.
        timedOut,
    };

    static ChromiumError couldNotStart();
    static ChromiumError ended();
    static ChromiumError refused(const std::string& command);
    static ChromiumError timedOut(const std::string& what);

    Kind kind() const noexcept { return kind_; }

    /// Compares the kinds.
    bool operator==(const ChromiumError& other) const noexcept { return kind_ == other.kind_; }

private:
    ChromiumError(Kind kind, std::string message);

    Kind kind_;
};

} // namespace tovrel::testing
