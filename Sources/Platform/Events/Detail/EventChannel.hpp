#pragma once

#include <Platform/Events/Subscription.hpp>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace tovrel::detail {

/// The subscribers of one stream and the events on their way to them.
template <class T>
class EventChannel final : public EventSource, public std::enable_shared_from_this<EventChannel<T>> {
public:
    Subscription subscribe(std::function<void(const T&)> receive) {
        auto subscriber = std::make_shared<Subscriber>(std::move(receive));
        const std::scoped_lock lock(mutex_);
        subscriber->identifier = ++lastIdentifier_;
        subscribers_.push_back(subscriber);
        return Subscription(this->weak_from_this(), subscriber->identifier);
    }

    void remove(std::uint64_t identifier) override {
        std::shared_ptr<Subscriber> removed; // let go of outside the lock: its captures may do anything
        const std::scoped_lock lock(mutex_);
        const auto found = std::find_if(subscribers_.begin(), subscribers_.end(), [identifier](const auto& subscriber) {
            return subscriber->identifier == identifier;
        });
        if (found != subscribers_.end()) {
            removed = std::move(*found);
            removed->isCancelled = true;
            subscribers_.erase(found);
        }
    }

    bool hasSubscribers() const {
        const std::scoped_lock lock(mutex_);
        return !subscribers_.empty();
    }

    void send(T event) noexcept {
        {
            const std::scoped_lock lock(mutex_);
            if (subscribers_.empty()) {
                return;
            }
            pending_.emplace_back(std::move(event), subscribers_);
            if (isDelivering_) {
                return;
            }
            isDelivering_ = true;
        }
        while (const auto delivery = next()) {
            for (const auto& subscriber : delivery->subscribers) {
                if (!subscriber->isCancelled) {
                    subscriber->receive(delivery->event);
                }
            }
        }
    }

private:
    struct Subscriber {
        explicit Subscriber(std::function<void(const T&)> function) : receive(std::move(function)) {}

        std::function<void(const T&)> receive;
        std::uint64_t identifier = 0;
        std::atomic<bool> isCancelled = false;
    };

    struct Delivery {
        Delivery(T itsEvent, std::vector<std::shared_ptr<Subscriber>> itsSubscribers)
            : event(std::move(itsEvent)), subscribers(std::move(itsSubscribers)) {}

        T event;
        std::vector<std::shared_ptr<Subscriber>> subscribers;
    };

    std::optional<Delivery> next() {
        const std::scoped_lock lock(mutex_);
        if (pending_.empty()) {
            isDelivering_ = false;
            return std::nullopt;
        }
        std::optional<Delivery> delivery(std::move(pending_.front()));
        pending_.pop_front();
        return delivery;
    }

    mutable std::mutex mutex_;
    std::uint64_t lastIdentifier_ = 0;
    std::vector<std::shared_ptr<Subscriber>> subscribers_;
    std::deque<Delivery> pending_;
    bool isDelivering_ = false;
};

} // namespace tovrel::detail
