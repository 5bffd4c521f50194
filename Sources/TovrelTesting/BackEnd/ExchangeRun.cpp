#include <TovrelTesting/BackEnd/ExchangeRun.hpp>

#include <algorithm>
#include <utility>

namespace tovrel::testing {

ExchangeRun::ExchangeRun(ServerState& state, Exchange& exchange)
    : state_(state), exchange_(exchange), fault_(state.faults.select(exchange.request())) {
    state_.recorder.update([](BackEndStatistics& statistics) {
        ++statistics.requestsReceived;
        ++statistics.exchangesInProgress;
    });
    if (hasFaultAt(FaultPoint::end) && fault_->kind == FaultKind::truncation) {
        fault_->point = FaultPoint::responseBody;
        fault_->afterBytes = Exchange::everything;
    }
}

ExchangeRun::~ExchangeRun() {
    recordOnce();
    state_.recorder.update([](BackEndStatistics& statistics) { --statistics.exchangesInProgress; });
}

void ExchangeRun::recordOnce() {
    if (!std::exchange(isRecorded_, true)) {
        state_.recorder.record(exchange_.request());
    }
}

Async<ExchangeEnd> ExchangeRun::run() {
    ExchangeEnd end = co_await receive();
    if (end == ExchangeEnd::complete) {
        recordOnce();
        end = co_await respond();
    }
    co_return end;
}

Async<ExchangeEnd> ExchangeRun::receive() {
    ExchangeEnd end = co_await meetFault(FaultPoint::requestStart);
    if (hasFaultAt(FaultPoint::requestBody)) {
        co_await exchange_.receiveBody(fault_->afterBytes.value_or(1));
        end = co_await meetFault(FaultPoint::requestBody);
    }
    if (end == ExchangeEnd::complete) {
        co_await exchange_.receiveBody(Exchange::everything);
    }
    co_return end;
}

Async<ExchangeEnd> ExchangeRun::respond() {
    ScriptedResponse scripted = state_.routes.respond(exchange_.request());
    if (scripted.delay.count() > 0) {
        co_await exchange_.pause(scripted.delay);
    }
    ExchangeEnd end = co_await meetFault(FaultPoint::responseStart);
    if (end == ExchangeEnd::brokenOff) {
        co_return end;
    }
    const std::int64_t lengthDifference = fault_ ? fault_->lengthDifference : 0;
    const auto response =
        std::make_shared<const PreparedResponse>(exchange_.request(), std::move(scripted), lengthDifference);
    exchange_.begin(response);
    if (hasFaultAt(FaultPoint::responseBody)) {
        co_await exchange_.sendBody(bytesBeforeFault(response->bodySize()));
        end = co_await meetFault(FaultPoint::responseBody);
    }
    if (end == ExchangeEnd::complete) {
        co_await exchange_.finish();
        end = co_await meetFault(FaultPoint::end);
    }
    co_return end;
}

std::uint64_t ExchangeRun::bytesBeforeFault(std::uint64_t bodySize) const {
    const std::uint64_t wanted = fault_->afterBytes.value_or(bodySize / 2);
    const bool keepsSomethingBack = fault_->kind == FaultKind::truncation && bodySize > 0;
    return std::min(wanted, keepsSomethingBack ? bodySize - 1 : bodySize);
}

Async<ExchangeEnd> ExchangeRun::meetFault(FaultPoint point) {
    if (!hasFaultAt(point)) {
        co_return ExchangeEnd::complete;
    }
    switch (fault_->kind) {
    case FaultKind::stall:
        co_await exchange_.stall();
        co_return ExchangeEnd::complete;
    case FaultKind::slowDrip:
        exchange_.slowDown(Pace(fault_->bytesPerInterval, fault_->interval));
        co_return ExchangeEnd::complete;
    case FaultKind::wrongLength:
        co_return ExchangeEnd::complete;
    case FaultKind::close:
    case FaultKind::reset:
    case FaultKind::truncation:
    case FaultKind::garbage:
    case FaultKind::badTLS:
        break;
    }
    recordOnce();
    co_await exchange_.breakOff(*fault_);
    co_return ExchangeEnd::brokenOff;
}

} // namespace tovrel::testing
