#include <TovrelTesting/BackEnd/Recorder.hpp>

namespace tovrel::testing {

void Recorder::record(const ReceivedRequest& request) {
    if (recording_ == RequestRecording::off) {
        return;
    }
    {
        const std::lock_guard lock(mutex_);
        requests_.push_back(request);
    }
    changed_.notify_all();
}

std::vector<ReceivedRequest> Recorder::requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

void Recorder::clear() {
    const std::lock_guard lock(mutex_);
    requests_.clear();
}

std::vector<ReceivedRequest> Recorder::waitForRequests(std::size_t count, std::chrono::milliseconds deadline) const {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, deadline, [this, count] { return requests_.size() >= count; });
    return requests_;
}

BackEndStatistics Recorder::statistics() const {
    const std::lock_guard lock(mutex_);
    return statistics_;
}

BackEndStatistics Recorder::waitUntil(const std::function<bool(const BackEndStatistics&)>& condition,
                                      std::chrono::milliseconds deadline) const {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, deadline, [&] { return condition(statistics_); });
    return statistics_;
}

} // namespace tovrel::testing
