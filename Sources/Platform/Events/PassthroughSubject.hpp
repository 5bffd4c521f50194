#pragma once

#include <Platform/Events/Publisher.hpp>

#include <memory>
#include <utility>

namespace tovrel {

/// Where events are sent into a publisher. Copies stand for the same subject. Thread-safe.
template <class T>
class PassthroughSubject {
public:
    PassthroughSubject() : channel_(std::make_shared<detail::EventChannel<T>>()) {}

    /// Delivers the event to every subscriber of this moment, in the order in which they subscribed.
    ///
    /// Events are delivered one after the other, in the order in which they were sent, and no subscriber is called from
    /// two threads at once. Therefore, when another event is being delivered, this returns at once and whoever
    /// delivers that one delivers this one next: so it is for events that a subscriber sends within its callback.
    /// Otherwise all subscribers have been called when this returns.
    void send(T event) { channel_->send(std::move(event)); }

    /// Whether an event sent now would reach anyone.
    [[nodiscard]] bool hasSubscribers() const { return channel_->hasSubscribers(); }

    [[nodiscard]] Publisher<T> publisher() const { return Publisher<T>(channel_); }

private:
    std::shared_ptr<detail::EventChannel<T>> channel_;
};

} // namespace tovrel
