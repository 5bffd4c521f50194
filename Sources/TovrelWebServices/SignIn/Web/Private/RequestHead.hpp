#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace tovrel::detail {

/// The head of an HTTP/1 request, as far as it matters here. The views are into the text that it was read from.
struct RequestHead {
    std::string_view method;
    std::string_view target;
    /// The values of all "Host" lines.
    std::vector<std::string_view> hosts;

    RequestHead() = default;

    /// Reads a head with its empty line strictly by RFC 9112, sections 2 to 5; absent for anything else. Lines end with
    /// CR and LF, and none is continued on the next.
    static std::optional<RequestHead> parse(std::string_view text);
};

} // namespace tovrel::detail
