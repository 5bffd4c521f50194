#pragma once

#include <TovrelTesting/Fault.hpp>

#include <mutex>
#include <optional>
#include <vector>

namespace tovrel::testing {

/// The scripted faults. Any thread adds, the server's thread asks.
class FaultScript {
public:
    void add(Fault fault, FaultSelector selector);
    void clear();

    /// The fault for a connection that was just accepted.
    std::optional<Fault> selectForHandshake();

    /// The fault for an exchange, by the head of its request.
    std::optional<Fault> select(const ReceivedRequest& request);

private:
    struct Rule {
        Fault fault;
        FaultSelector selector;

        Rule(Fault fault, FaultSelector selector);
    };

    template <class Fits>
    std::optional<Fault> firstThatStrikes(Fits fits);

    std::mutex mutex_;
    std::vector<Rule> rules_;
};

} // namespace tovrel::testing
