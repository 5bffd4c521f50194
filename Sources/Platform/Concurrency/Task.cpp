#include <Platform/Concurrency/Cancellation.hpp>
#include <Platform/Concurrency/CancellationError.hpp>
#include <Platform/Concurrency/Task.hpp>

#include <boost/asio/bind_cancellation_slot.hpp>
#include <boost/asio/cancellation_signal.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/dispatch.hpp>
#include <boost/asio/error.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/this_coro.hpp>
#include <boost/system/system_error.hpp>

#include <atomic>

namespace tovrel {

namespace asio = boost::asio;

/// Touched on the task's executor only: Asio's cancellation is not thread-safe.
struct Task::Cancellation {
    asio::cancellation_signal signal;
};

namespace {

constinit std::atomic<std::size_t> runningTasks{0};

/// Asio reports its own cancellation as an aborted operation; callers know `CancellationError`.
std::exception_ptr translated(std::exception_ptr error) {
    if (!error) {
        return error;
    }
    try {
        std::rethrow_exception(error);
    } catch (const boost::system::system_error& failure) {
        if (failure.code() == asio::error::operation_aborted) {
            return std::make_exception_ptr(CancellationError());
        }
    } catch (...) {
        return error;
    }
    return error;
}

} // namespace

/// Owns the cancellation signal for as long as the coroutine can be reached through it.
class Task::Completion {
public:
    Completion(std::shared_ptr<Task> task, std::shared_ptr<Cancellation> cancellation)
        : task_(std::move(task)), cancellation_(std::move(cancellation)) {}

    void operator()(std::exception_ptr error) {
        task_->error_ = translated(std::move(error));
        --runningTasks;
        task_->ended_->set();
    }

private:
    std::shared_ptr<Task> task_;
    std::shared_ptr<Cancellation> cancellation_;
};

Task::Task(Executor executor) : executor_(std::move(executor)), ended_(Event::make()) {}

std::shared_ptr<Task> Task::spawn(Executor executor, Async<void> operation, bool isCancelled) {
    std::shared_ptr<Task> task(new Task(std::move(executor)));
    auto cancellation = std::make_shared<Cancellation>();
    task->cancellation_ = cancellation;
    ++runningTasks;
    // Posted, because co_spawn runs the body inside its caller when that is on the same executor.
    asio::post(task->executor_,
               [task, cancellation, body = run(cancellation, isCancelled, std::move(operation))]() mutable {
                   auto slot = cancellation->signal.slot();
                   asio::co_spawn(task->executor_, std::move(body),
                                  asio::bind_cancellation_slot(slot, Completion(task, std::move(cancellation))));
               });
    return task;
}

Async<void> Task::run(std::shared_ptr<Cancellation> cancellation, bool isCancelled, Async<void> operation) {
    // Cancellation is cooperative: it ends waits, it does not make every co_await throw.
    co_await asio::this_coro::throw_if_cancelled(false);
    if (isCancelled) {
        cancellation->signal.emit(asio::cancellation_type::terminal);
    }
    co_await std::move(operation);
}

void Task::cancel() {
    // Posted behind the start, so the operation has begun when it sees this; weak, because it may have ended by then.
    asio::post(executor_, [weak = cancellation_] {
        if (auto cancellation = weak.lock()) {
            cancellation->signal.emit(asio::cancellation_type::terminal);
        }
    });
}

Async<void> Task::join(std::shared_ptr<Task> task) {
    std::function<void()> onCancel = [task] { task->cancel(); };
    return joinThrough(std::move(task), std::move(onCancel));
}

Async<void> Task::joinThrough(std::shared_ptr<Task> task, std::function<void()> onCancel) {
    co_await Event::waitThrough(task->ended_, std::move(onCancel));
    task->rethrowError();
}

Async<void> Task::joinDetached(std::shared_ptr<Task> task) {
    co_await Event::wait(task->ended_);
    task->rethrowError();
}

void Task::notify(std::function<void()> observer) {
    ended_->notify([weak = weak_from_this(), observer = std::move(observer)] {
        // Whoever ends the task or asks after its end holds it.
        const auto self = weak.lock();
        asio::dispatch(self->executor_, [self, observer] { observer(); });
    });
}

std::exception_ptr Task::error() const {
    return error_;
}

void Task::rethrowError() const {
    if (error_) {
        std::rethrow_exception(error_);
    }
}

std::size_t Task::countOfRunning() {
    return runningTasks.load();
}

} // namespace tovrel
