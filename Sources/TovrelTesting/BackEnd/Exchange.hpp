#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <TovrelTesting/BackEnd/Channel.hpp>
#include <TovrelTesting/BackEnd/PreparedResponse.hpp>
#include <TovrelTesting/Fault.hpp>
#include <TovrelTesting/ReceivedRequest.hpp>

#include <chrono>
#include <cstdint>
#include <limits>
#include <memory>

namespace tovrel::testing {

/// How fast a dripping exchange goes.
struct Pace {
    std::uint64_t bytesPerInterval;
    std::chrono::milliseconds interval;

    Pace(std::uint64_t bytes, std::chrono::milliseconds time) : bytesPerInterval(bytes), interval(time) {}
};

/// One request and its response on a connection of either protocol version: the steps, and the ways to fail. The steps
/// come in the order of the members. They throw `boost::system::system_error` when the peer is gone.
class Exchange {
public:
    static constexpr std::uint64_t everything = std::numeric_limits<std::uint64_t>::max();

    virtual ~Exchange() = default;

    virtual ReceivedRequest& request() = 0;

    /// Waits until the body has at least that many bytes or is complete.
    virtual Async<void> receiveBody(std::uint64_t upTo) = 0;

    /// Takes the response; nothing need be sent yet.
    virtual void begin(std::shared_ptr<const PreparedResponse> response) = 0;

    /// Returns when the head and that many bytes of the body are handed to the socket.
    virtual Async<void> sendBody(std::uint64_t upTo) = 0;

    /// Sends what is left and marks the end.
    virtual Async<void> finish() = 0;

    /// From here on the bodies come and go at that pace.
    virtual void slowDown(Pace pace) = 0;

    virtual Async<void> pause(std::chrono::milliseconds duration) = 0;

    /// Waits until stalled exchanges are released.
    virtual Async<void> stall() = 0;

    /// Ends the exchange as the fault says, which is one of close, reset, truncation, garbage and bad TLS.
    virtual Async<void> breakOff(const Fault& fault) = 0;
};

} // namespace tovrel::testing
