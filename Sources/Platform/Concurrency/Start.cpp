#include <Platform/Concurrency/Start.hpp>
#include <Platform/System/FatalError.hpp>

#include <future>

namespace tovrel::detail {

void waitFor(Task& task) {
    if (TaskPool::isPoolThread()) {
        fatalError("get() on a thread of the task pool: await the operation there.");
    }
    // Shared: the notifying thread may still be inside set_value when the waiting one returns.
    auto ended = std::make_shared<std::promise<void>>();
    std::future<void> future = ended->get_future();
    task.notify([ended] { ended->set_value(); });
    future.wait();
    if (auto error = task.error()) {
        std::rethrow_exception(error);
    }
}

} // namespace tovrel::detail
