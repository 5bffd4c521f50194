#include <Platform/System/Logger.hpp>
#include <TovrelContracts/AssertionCoordinator.hpp>

#include <mutex>
#include <string>
#include <utility>

namespace tovrel {

namespace {

struct State {
    std::mutex mutex;
    AssertionCoordinator::Handler handler;
};

State& state() {
    static State instance;
    return instance;
}

void report(std::string_view message, std::string_view file, int line) {
    const std::string text =
        "Assertion failed: " + std::string(message) + " (" + std::string(file) + ":" + std::to_string(line) + ")";
    Logger("com.tovrel.contracts", "Assertions").log(OSLogType::fault, text);
}

} // namespace

void AssertionCoordinator::assertionFailure(std::string_view message, std::string_view file, int line) {
    Handler handler;
    {
        const std::scoped_lock lock(state().mutex);
        handler = state().handler;
    }
    if (handler) {
        handler(message, file, line);
    } else {
        report(message, file, line);
    }
}

void AssertionCoordinator::setHandler(Handler handler) {
    const std::scoped_lock lock(state().mutex);
    state().handler = std::move(handler);
}

} // namespace tovrel
