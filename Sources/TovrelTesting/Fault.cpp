#include <Platform/System/FatalError.hpp>
#include <TovrelTesting/Fault.hpp>

#include <utility>

namespace tovrel::testing {

Fault::Fault(FaultKind faultKind, FaultPoint faultPoint) : kind(faultKind), point(faultPoint) {}

Fault Fault::close(FaultPoint point) {
    return {FaultKind::close, point};
}

Fault Fault::reset(FaultPoint point) {
    return {FaultKind::reset, point};
}

Fault Fault::stall(FaultPoint point) {
    return {FaultKind::stall, point};
}

Fault Fault::truncation(FaultPoint point) {
    return {FaultKind::truncation, point};
}

Fault Fault::garbage(FaultPoint point, std::string bytes) {
    Fault fault(FaultKind::garbage, point);
    fault.bytes = std::move(bytes);
    return fault;
}

Fault Fault::slowDrip(FaultPoint point, std::uint64_t bytesPerInterval, std::chrono::milliseconds interval) {
    Fault fault(FaultKind::slowDrip, point);
    fault.bytesPerInterval = bytesPerInterval;
    fault.interval = interval;
    return fault;
}

Fault Fault::wrongLength(std::int64_t difference) {
    Fault fault(FaultKind::wrongLength, FaultPoint::responseStart);
    fault.lengthDifference = difference;
    return fault;
}

Fault Fault::badTLS(FaultPoint point) {
    return {FaultKind::badTLS, point};
}

Fault Fault::after(std::uint64_t bodyBytes) && {
    afterBytes = bodyBytes;
    return std::move(*this);
}

FaultSelector::FaultSelector(std::uint64_t skippedCount, std::optional<std::uint64_t> limitCount)
    : skipped(skippedCount), limit(limitCount) {}

FaultSelector FaultSelector::next() {
    return {0, 1};
}

FaultSelector FaultSelector::nth(std::uint64_t n) {
    if (n == 0) {
        fatalError("FaultSelector::nth counts from 1");
    }
    return {n - 1, 1};
}

FaultSelector FaultSelector::every() {
    return {0, std::nullopt};
}

FaultSelector FaultSelector::where(std::function<bool(const ReceivedRequest&)> newCondition) && {
    condition = std::move(newCondition);
    return std::move(*this);
}

} // namespace tovrel::testing
