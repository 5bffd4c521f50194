#include <TovrelTesting/BackEnd/FaultScript.hpp>

#include <utility>

namespace tovrel::testing {

FaultScript::Rule::Rule(Fault ruleFault, FaultSelector ruleSelector)
    : fault(std::move(ruleFault)), selector(std::move(ruleSelector)) {}

void FaultScript::add(Fault fault, FaultSelector selector) {
    const std::lock_guard lock(mutex_);
    rules_.emplace_back(std::move(fault), std::move(selector));
}

void FaultScript::clear() {
    const std::lock_guard lock(mutex_);
    rules_.clear();
}

template <class Fits>
std::optional<Fault> FaultScript::firstThatStrikes(Fits fits) {
    const std::lock_guard lock(mutex_);
    std::optional<Fault> chosen;
    for (auto rule = rules_.begin(); rule != rules_.end();) {
        FaultSelector& selector = rule->selector;
        if (selector.limit == 0U || !fits(*rule)) {
            ++rule;
        } else if (selector.skipped > 0) {
            --selector.skipped;
            ++rule;
        } else if (chosen) {
            ++rule;
        } else {
            chosen = rule->fault;
            const bool isUsedUp = selector.limit && --*selector.limit == 0;
            rule = isUsedUp ? rules_.erase(rule) : rule + 1;
        }
    }
    return chosen;
}

std::optional<Fault> FaultScript::selectForHandshake() {
    return firstThatStrikes(
        [](const Rule& rule) { return rule.fault.point == FaultPoint::handshake && !rule.selector.condition; });
}

std::optional<Fault> FaultScript::select(const ReceivedRequest& request) {
    return firstThatStrikes([&request](const Rule& rule) {
        return rule.fault.point != FaultPoint::handshake &&
               (!rule.selector.condition || rule.selector.condition(request));
    });
}

} // namespace tovrel::testing
