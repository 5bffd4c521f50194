#include <Platform/Concurrency/Cancellation.hpp>
#include <Platform/Concurrency/CancellationError.hpp>
#include <TovrelWebServices/SignIn/AuthorizationError.hpp>
#include <TovrelWebServices/SignIn/Web/Private/TimeLimit.hpp>
#include <TovrelWebServices/Transport/ErrorPredicates.hpp>

#include <boost/asio/this_coro.hpp>

#include <exception>
#include <functional>

namespace tovrel::detail {

namespace asio = boost::asio;

namespace {

Async<void> cancelLater(std::shared_ptr<Clock> clock, Clock::Duration limit, std::shared_ptr<Task> task,
                        std::shared_ptr<bool> isOver) {
    try {
        co_await clock->sleep(limit);
    } catch (const CancellationError&) {
        co_return;
    }
    *isOver = true;
    task->cancel();
}

} // namespace

// All three coroutines are on one executor, which runs one step at a time.
Async<void> runWithinTimeLimit(std::shared_ptr<Clock> clock, Clock::Duration limit, Async<void> operation) {
    const Executor executor = co_await asio::this_coro::executor;
    const bool isAlreadyCancelled = co_await isTaskCancelled();
    const std::shared_ptr<Task> work = Task::spawn(executor, std::move(operation), isAlreadyCancelled);
    auto isOver = std::make_shared<bool>(false);
    const std::shared_ptr<Task> alarm = Task::spawn(executor, cancelLater(std::move(clock), limit, work, isOver));
    std::exception_ptr failure;
    try {
        co_await Task::join(work);
    } catch (...) {
        failure = std::current_exception();
    }
    alarm->cancel();
    std::function<void()> onCancel = [] {};
    co_await Task::joinThrough(alarm, std::move(onCancel));
    if (failure && *isOver && isCancelled(failure)) {
        throw AuthorizationError::timedOut();
    }
    if (failure) {
        std::rethrow_exception(failure);
    }
}

} // namespace tovrel::detail
