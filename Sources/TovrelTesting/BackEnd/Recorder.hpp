#pragma once

#include <TovrelTesting/BackEndStatistics.hpp>
#include <TovrelTesting/LocalBackEndOptions.hpp>
#include <TovrelTesting/ReceivedRequest.hpp>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <vector>

namespace tovrel::testing {

/// Keeps what the server sees, for any thread to look at.
class Recorder {
public:
    explicit Recorder(RequestRecording recording) : recording_(recording) {}

    void record(const ReceivedRequest& request);

    /// Changes the statistics and wakes who waits for them.
    template <class Change>
    void update(Change change) {
        {
            const std::lock_guard lock(mutex_);
            change(statistics_);
        }
        changed_.notify_all();
    }

    std::vector<ReceivedRequest> requests() const;
    void clear();
    std::vector<ReceivedRequest> waitForRequests(std::size_t count, std::chrono::milliseconds deadline) const;
    BackEndStatistics statistics() const;
    BackEndStatistics waitUntil(const std::function<bool(const BackEndStatistics&)>& condition,
                                std::chrono::milliseconds deadline) const;

private:
    const RequestRecording recording_;
    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    std::vector<ReceivedRequest> requests_;
    BackEndStatistics statistics_;
};

} // namespace tovrel::testing
