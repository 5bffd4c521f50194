#pragma once

#include <Platform/Events/Detail/EventChannel.hpp>
#include <Platform/Events/Subscription.hpp>

#include <functional>
#include <memory>
#include <utility>

namespace tovrel {

/// The receiving side of a `PassthroughSubject`: a stream of events that never fails and never ends. Copies stand for
/// the same stream. Thread-safe.
template <class T>
class Publisher {
public:
    explicit Publisher(std::shared_ptr<detail::EventChannel<T>> channel) : channel_(std::move(channel)) {}

    /// Calls `receive` with every event sent from now on, earlier ones excluded, on the thread of a sender and never
    /// twice at once. It may subscribe, cancel and send; it must not block and must not throw, which stops the process.
    [[nodiscard]] Subscription subscribe(std::function<void(const T&)> receive) const {
        return channel_->subscribe(std::move(receive));
    }

private:
    std::shared_ptr<detail::EventChannel<T>> channel_;
};

} // namespace tovrel
