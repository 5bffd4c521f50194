#include <TovrelWebServices/SignIn/Web/Private/CallbackRequest.hpp>
#include <TovrelWebServices/SignIn/Web/Private/RequestHead.hpp>

#include <algorithm>

namespace tovrel::detail {

namespace {

constexpr std::string_view callbackPath = "/callback";

bool isForThisAddress(const RequestHead& head, std::uint16_t port) {
    return head.hosts.size() == 1 && head.hosts.front() == "127.0.0.1:" + std::to_string(port);
}

/// A path with or without a query; neither may have a fragment.
bool isLocal(std::string_view target) {
    return target.starts_with('/') && target.find('#') == std::string_view::npos;
}

} // namespace

CallbackVerdict judgeRequest(std::string_view text, std::uint16_t port, std::string_view expectedState) {
    const std::optional<RequestHead> head = RequestHead::parse(text);
    if (!head || !isForThisAddress(*head, port) || !isLocal(head->target)) {
        return CallbackVerdict(400);
    }
    const std::string_view path = head->target.substr(0, head->target.find('?'));
    if (path != callbackPath) {
        return CallbackVerdict(404);
    }
    if (head->method != "GET") {
        return CallbackVerdict(405);
    }
    const std::string_view query = head->target.substr(std::min(path.size() + 1, head->target.size()));
    const CallbackQuery callback = CallbackQuery::parse(query, expectedState);
    CallbackVerdict verdict(callback.origin == CallbackOrigin::ownAttempt ? 200 : 400);
    verdict.isOfOtherAttempt = callback.origin == CallbackOrigin::otherAttempt;
    if (callback.origin == CallbackOrigin::ownAttempt) {
        verdict.answer = callback.answer;
    }
    return verdict;
}

} // namespace tovrel::detail
