#include <Platform/Events/PassthroughSubject.hpp>
#include <TovrelWebServices/AccountScreens/Views/ScreenTextSize.hpp>

#include <algorithm>
#include <utility>

namespace tovrel {

namespace {

struct State {
    double factor = 1;
    PassthroughSubject<double> changes;
};

State& state() {
    static State& instance = *new State();
    return instance;
}

} // namespace

double ScreenTextSize::factor() {
    return state().factor;
}

void ScreenTextSize::choose(double factor) {
    const double chosen = std::clamp(factor, 0.5, 4.0);
    if (std::exchange(state().factor, chosen) != chosen) {
        state().changes.send(chosen);
    }
}

Publisher<double> ScreenTextSize::changes() {
    return state().changes.publisher();
}

} // namespace tovrel
