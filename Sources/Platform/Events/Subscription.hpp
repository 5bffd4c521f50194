#pragma once

#include <Platform/System/Export.hpp>

#include <cstdint>
#include <memory>

namespace tovrel {

namespace detail {

/// What a subscription can be taken back from.
class TOVREL_EXPORT EventSource {
public:
    virtual void remove(std::uint64_t identifier) = 0;

protected:
    EventSource() = default;
    EventSource(const EventSource&) = delete;
    EventSource& operator=(const EventSource&) = delete;
    ~EventSource() = default;
};

} // namespace detail

/// A callback's place among the subscribers of a publisher; it lasts as long as this object. One thread at a time may
/// use it.
class TOVREL_EXPORT Subscription {
public:
    /// A subscription to nothing.
    Subscription() = default;
    Subscription(std::weak_ptr<detail::EventSource> source, std::uint64_t identifier);
    Subscription(Subscription&& other) noexcept;
    Subscription& operator=(Subscription&& other) noexcept;
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    /// Cancels.
    ~Subscription();

    /// Ends the subscription; harmless when it has ended. It may be called within the callback.
    ///
    /// No call of the callback begins from here on. It does not wait either: a call that has begun on another thread
    /// may still be running, so a callback owns what it uses, or holds it weakly.
    void cancel() noexcept;

private:
    std::weak_ptr<detail::EventSource> source_;
    std::uint64_t identifier_ = 0;
};

} // namespace tovrel
