#pragma once

#include <Platform/Coding/Field.hpp>
#include <TovrelTesting/BackEnd/ScratchDirectory.hpp>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <sys/types.h>
#include <tuple>
#include <vector>

namespace tovrel::testing {

/// The value of an expression.
struct DevToolsValue {
    std::optional<std::string> value;

    DevToolsValue() = default;
    static constexpr auto fields() { return std::tuple{Field<&DevToolsValue::value, "value">{}}; }
};

/// What of the results of commands is of use here.
struct DevToolsResult {
    std::optional<std::string> targetId;
    std::optional<std::string> sessionId;
    std::optional<DevToolsValue> result;

    DevToolsResult() = default;
    static constexpr auto fields() {
        return std::tuple{Field<&DevToolsResult::targetId, "targetId">{},
                          Field<&DevToolsResult::sessionId, "sessionId">{}, Field<&DevToolsResult::result, "result">{}};
    }
};

/// A Chromium process and the pipes through which it takes commands: JSON texts that end with a NUL.
class DevToolsConnection {
public:
    using Instant = std::chrono::steady_clock::time_point;

    /// Starts the program, which keeps all its files in a directory of its own. Throws `ChromiumError`.
    explicit DevToolsConnection(std::vector<std::string> arguments);

    /// Ends the program and all that it has started.
    ~DevToolsConnection();
    DevToolsConnection(const DevToolsConnection&) = delete;
    DevToolsConnection& operator=(const DevToolsConnection&) = delete;

    /// Runs a command and waits for its result; absent where the browser refuses it. `parameters` is JSON. Throws
    /// `ChromiumError` ended and timedOut.
    std::optional<DevToolsResult> run(const std::string& method, const std::string& parameters,
                                      const std::string& session, Instant deadline);

private:
    void send(const std::string& message, Instant deadline);
    std::string receive(Instant deadline);
    bool endsBefore(Instant deadline) const;

    ScratchDirectory directory_;
    pid_t process_ = -1;
    int toBrowser_ = -1;
    int fromBrowser_ = -1;
    std::int64_t lastIdentifier_ = 0;
    std::string received_;
};

} // namespace tovrel::testing
