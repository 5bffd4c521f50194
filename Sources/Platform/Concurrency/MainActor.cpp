#include <Platform/Concurrency/MainActor.hpp>
#include <Platform/Concurrency/TaskPool.hpp>
#include <Platform/System/FatalError.hpp>

#include <mutex>
#include <optional>

namespace tovrel {

namespace {

struct Installation {
    std::mutex mutex;
    std::optional<Executor> executor;
};

Installation& installation() {
    static Installation instance;
    return instance;
}

} // namespace

void MainActor::install(Executor executor) {
    const std::scoped_lock lock(installation().mutex);
    if (installation().executor) {
        fatalError("The main actor is installed once, before anything uses it.");
    }
    installation().executor = std::move(executor);
}

Executor MainActor::executor() {
    const std::scoped_lock lock(installation().mutex);
    if (!installation().executor) {
        installation().executor = TaskPool::compute();
    }
    return *installation().executor;
}

} // namespace tovrel
