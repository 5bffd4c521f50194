#include <Platform/Concurrency/Cancellation.hpp>
#include <Platform/Concurrency/CancellationError.hpp>
#include <Platform/Concurrency/Event.hpp>

#include <boost/asio/associated_cancellation_slot.hpp>
#include <boost/asio/associated_executor.hpp>
#include <boost/asio/async_result.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/prefer.hpp>
#include <boost/asio/use_awaitable.hpp>

#include <exception>
#include <optional>
#include <utility>

namespace tovrel {

namespace asio = boost::asio;

/// One suspended task. `set` and a cancellation compete for it under the event's mutex, so it resumes exactly once.
class Event::Waiter : public std::enable_shared_from_this<Waiter> {
public:
    using Handler = asio::async_result<asio::use_awaitable_t<>, void(std::exception_ptr)>::handler_type;

    explicit Waiter(Handler handler)
        : executor_(asio::prefer(asio::get_associated_executor(handler), asio::execution::outstanding_work.tracked)),
          handler_(std::move(handler)) {}

    static Async<void> suspend(std::shared_ptr<Event> event, std::function<void()> onCancel) {
        return asio::async_initiate<const asio::use_awaitable_t<>, void(std::exception_ptr)>(
            Initiation(), asio::use_awaitable, std::move(event), std::move(onCancel));
    }

private:
    struct Initiation {
        void operator()(Handler handler, std::shared_ptr<Event> event, std::function<void()> onCancel) const {
            std::make_shared<Waiter>(std::move(handler))->start(event, std::move(onCancel));
        }
    };

    /// Registers with the cancellation slot and the event. Runs on the task's own executor, as cancellations do.
    void start(const std::shared_ptr<Event>& event, std::function<void()> onCancel) {
        auto slot = asio::get_associated_cancellation_slot(*handler_);
        if (slot.is_connected()) {
            slot.assign(
                [weak = weak_from_this(), event, onCancel = std::move(onCancel)](asio::cancellation_type) mutable {
                    if (auto waiter = weak.lock()) {
                        waiter->cancel(*event, onCancel);
                    }
                });
        }
        identifier_ = event->observe([waiter = shared_from_this()] { waiter->resume(nullptr); });
        if (identifier_ == 0) {
            resume(nullptr);
        }
    }

    void cancel(Event& event, std::function<void()>& onCancel) {
        if (onCancel) {
            std::exchange(onCancel, nullptr)();
        } else if (event.forget(identifier_)) {
            resume(std::make_exception_ptr(CancellationError()));
        }
    }

    /// Always posts: resuming inside `start` or inside another task's `set` would nest two coroutines.
    void resume(std::exception_ptr error) {
        asio::post(executor_, [waiter = shared_from_this(), error = std::move(error)]() mutable {
            // The slot belongs to the task's executor: it is let go here and nowhere else.
            auto slot = asio::get_associated_cancellation_slot(*waiter->handler_);
            if (slot.is_connected()) {
                slot.clear();
            }
            Handler handler = std::move(*waiter->handler_);
            waiter->handler_.reset();
            waiter.reset();
            std::move(handler)(std::move(error));
        });
    }

    Executor executor_;
    std::optional<Handler> handler_;
    std::uint64_t identifier_ = 0;
};

std::shared_ptr<Event> Event::make() {
    return std::shared_ptr<Event>(new Event());
}

Event::Event() = default;

void Event::set() {
    std::map<std::uint64_t, std::function<void()>> observers;
    {
        const std::scoped_lock lock(mutex_);
        isSet_ = true;
        observers.swap(observers_);
    }
    for (auto& [identifier, observer] : observers) {
        observer();
    }
}

bool Event::isSet() const {
    const std::scoped_lock lock(mutex_);
    return isSet_;
}

Async<void> Event::wait(std::shared_ptr<Event> event) {
    co_await checkCancellation();
    if (!event->isSet()) {
        co_await Waiter::suspend(std::move(event), nullptr);
    }
}

Async<void> Event::waitThrough(std::shared_ptr<Event> event, std::function<void()> onCancel) {
    const bool isCancelled = co_await isTaskCancelled();
    if (isCancelled) {
        onCancel();
    }
    if (!event->isSet()) {
        co_await Waiter::suspend(std::move(event), std::move(onCancel));
    }
}

void Event::notify(std::function<void()> observer) {
    if (observe(observer) == 0) {
        observer();
    }
}

/// The registration's number, or 0 without a registration when the event has happened.
std::uint64_t Event::observe(std::function<void()> observer) {
    const std::scoped_lock lock(mutex_);
    if (isSet_) {
        return 0;
    }
    observers_.emplace(++lastIdentifier_, std::move(observer));
    return lastIdentifier_;
}

/// False when the observer is already on its way.
bool Event::forget(std::uint64_t identifier) {
    std::function<void()> forgotten;
    const std::scoped_lock lock(mutex_);
    const auto found = observers_.find(identifier);
    if (found == observers_.end()) {
        return false;
    }
    forgotten = std::move(found->second);
    observers_.erase(found);
    return true;
}

} // namespace tovrel
