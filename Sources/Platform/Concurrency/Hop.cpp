#include <Platform/Concurrency/Cancellation.hpp>
#include <Platform/Concurrency/Hop.hpp>

#include <boost/asio/this_coro.hpp>

namespace tovrel::detail {

namespace asio = boost::asio;

Async<void> runOn(Executor executor, Async<void> operation) {
    const bool isCancelled = co_await isTaskCancelled();
    std::shared_ptr<Task> task = Task::spawn(std::move(executor), std::move(operation), isCancelled);
    co_await Task::join(std::move(task));
}

Async<void> runShielded(Async<void> operation) {
    Executor executor = co_await asio::this_coro::executor;
    std::shared_ptr<Task> task = Task::spawn(std::move(executor), std::move(operation));
    std::function<void()> onCancel = [] {};
    co_await Task::joinThrough(std::move(task), std::move(onCancel));
}

} // namespace tovrel::detail
