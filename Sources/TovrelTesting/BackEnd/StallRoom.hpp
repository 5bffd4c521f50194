#pragma once

#include <TovrelTesting/BackEnd/Event.hpp>
#include <TovrelTesting/BackEnd/Recorder.hpp>

#include <set>

namespace tovrel::testing {

/// Where stalled exchanges wait. Lives on the server's thread.
class StallRoom {
public:
    /// One stalled exchange, from construction to destruction.
    class Guest {
    public:
        Guest(StallRoom& room, Event& event);
        ~Guest();
        Guest(const Guest&) = delete;
        Guest& operator=(const Guest&) = delete;

        bool isReleased() const noexcept { return isReleased_; }

    private:
        friend class StallRoom;

        StallRoom& room_;
        Event& event_;
        bool isReleased_ = false;
    };

    explicit StallRoom(Recorder& recorder) : recorder_(recorder) {}

    /// Lets every guest go and notifies its event.
    void release();

private:
    Recorder& recorder_;
    std::set<Guest*> guests_;
};

} // namespace tovrel::testing
