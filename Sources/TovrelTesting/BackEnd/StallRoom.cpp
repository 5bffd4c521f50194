#include <TovrelTesting/BackEnd/StallRoom.hpp>

namespace tovrel::testing {

StallRoom::Guest::Guest(StallRoom& room, Event& event) : room_(room), event_(event) {
    room_.guests_.insert(this);
    room_.recorder_.update([](BackEndStatistics& statistics) { ++statistics.exchangesStalled; });
}

StallRoom::Guest::~Guest() {
    room_.guests_.erase(this);
    room_.recorder_.update([](BackEndStatistics& statistics) { --statistics.exchangesStalled; });
}

void StallRoom::release() {
    for (Guest* guest : guests_) {
        guest->isReleased_ = true;
        guest->event_.notify();
    }
}

} // namespace tovrel::testing
