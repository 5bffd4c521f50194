#include <Platform/System/FatalError.hpp>
#include <Platform/URLLoading/Detail/Cache/CacheControl.hpp>
#include <Platform/URLLoading/Detail/Cache/CacheDecision.hpp>
#include <Platform/URLLoading/Detail/Cache/Freshness.hpp>
#include <Platform/URLLoading/Detail/Cache/HTTPDate.hpp>
#include <Platform/URLLoading/Detail/Cache/Storability.hpp>
#include <Platform/URLLoading/Detail/Cache/StoredResponse.hpp>
#include <Platform/URLLoading/Detail/Cache/Validation.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace tovrel::fuzz {
namespace {

constexpr Date now = Date::fromSecondsSince1970(1795262400);

void require(bool condition, const char* what) {
    if (!condition) {
        fatalError(what);
    }
}

/// Lines "Name: value", as a transfer hands them over: without control characters.
HTTPHeaders headersOf(std::string_view text) {
    HTTPHeaders headers;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        const std::size_t colon = line.find(':');
        if (colon != 0 && colon != std::string_view::npos &&
            line.find_first_of(std::string_view("\r\0", 2)) == line.npos) {
            headers.append(std::string(line.substr(0, colon)), std::string(line.substr(colon + 1)));
        }
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return headers;
}

/// The part up to an empty line goes to the request, the rest comes with the response.
void judge(std::string_view text) {
    const std::size_t border = text.find("\n\n");
    URLRequest request(*URL::parse("https://api.example/"));
    request.headers = headersOf(text.substr(0, border));
    const HTTPHeaders received = headersOf(border == std::string_view::npos ? "" : text.substr(border + 2));

    const StoredResponse stored(request, 200, "HTTP/1.1", received, now, now);
    require(currentAge(stored, now) >= 0, "an age before the birth");
    require(freshnessLifetime(stored) >= 0, "a negative lifetime");
    require(variesAlways(received) || stored.isSelectedBy(request), "a response that is not for its own request");

    const auto decoded = StoredResponse::decoded(stored.encoded());
    require(variesAlways(received) ||
                (decoded && decoded->headers == stored.headers && decoded->selectingFields == stored.selectingFields),
            "a stored form that reads as something else");

    const auto decision = decide(now, request, URLRequestCachePolicy::useProtocolCachePolicy, &stored);
    if (decision.action == CacheDecision::Action::answer) {
        const CacheControl control(received);
        require(!control.noCache, "an answer that had to be validated");
    }
    static_cast<void>(isStorable(200, "HTTP/1.1", received));
    static_cast<void>(answeredFields(freshened(stored, stored), now, false));
    static_cast<void>(httpDate(text, now));
    static_cast<void>(StoredResponse::decoded(text));
}

} // namespace
} // namespace tovrel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tovrel::fuzz::judge(std::string_view(reinterpret_cast<const char*>(data), size));
    return 0;
}
