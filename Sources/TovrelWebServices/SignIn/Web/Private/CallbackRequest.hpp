#pragma once

#include <TovrelWebServices/SignIn/Web/Private/CallbackAnswer.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tovrel::detail {

/// The longest head of a request that is read.
constexpr std::size_t longestRequestHead = 8192;

/// What the listener makes of a request.
struct CallbackVerdict {
    int status;
    /// Present when the request is the one that the attempt waits for.
    std::optional<CallbackAnswer> answer;
    /// Whether it looks like the answer to another attempt.
    bool isOfOtherAttempt = false;

    explicit CallbackVerdict(int responseStatus) : status(responseStatus) {}
};

/// Judges the head of a request (RFC 9112 section 2.1), up to and with its empty line.
///
/// Pages of the web can make a browser send requests here, under names of their own that lead to this machine too. So
/// the request has to name exactly the address that the relay was told.
CallbackVerdict judgeRequest(std::string_view text, std::uint16_t port, std::string_view expectedState);

} // namespace tovrel::detail
