#include <Platform/Concurrency/Start.hpp>
#include <Platform/URLLoading/URL.hpp>
#include <TovrelTesting/ManualClock.hpp>

#include <iostream>

namespace {

tovrel::Async<bool> keepsTimeStill(std::shared_ptr<tovrel::Clock> clock) {
    const auto before = clock->now();
    co_await clock->sleep(tovrel::Clock::Duration::zero());
    co_return clock->now() == before;
}

} // namespace

int main() {
    const bool isStill = tovrel::get(keepsTimeStill(tovrel::testing::ManualClock::make()));
    std::cout << (isStill ? "linked" : "broken") << '\n';
    return isStill ? 0 : 1;
}
