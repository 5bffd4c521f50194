#pragma once

#include <TovrelTesting/BackEnd/Exchange.hpp>
#include <TovrelTesting/BackEnd/ServerState.hpp>

#include <optional>

namespace tovrel::testing {

/// How an exchange ended: as HTTP has it, or by a fault.
enum class ExchangeEnd { complete, brokenOff };

/// Leads one exchange through its steps, with the fault that the script has for it.
class ExchangeRun {
public:
    /// The head of the request has arrived.
    ExchangeRun(ServerState& state, Exchange& exchange);
    ~ExchangeRun();
    ExchangeRun(const ExchangeRun&) = delete;
    ExchangeRun& operator=(const ExchangeRun&) = delete;

    Async<ExchangeEnd> run();

private:
    Async<ExchangeEnd> meetFault(FaultPoint point);
    Async<ExchangeEnd> receive();
    Async<ExchangeEnd> respond();
    std::uint64_t bytesBeforeFault(std::uint64_t bodySize) const;
    bool hasFaultAt(FaultPoint point) const { return fault_ && fault_->point == point; }
    void recordOnce();

    ServerState& state_;
    Exchange& exchange_;
    std::optional<Fault> fault_;
    bool isRecorded_ = false;
};

} // namespace tovrel::testing
