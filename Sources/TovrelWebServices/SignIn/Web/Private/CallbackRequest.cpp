#include <TovrelWebServices/SignIn/Web/Private/CallbackRequest.hpp>

#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/parser.hpp>

namespace tovrel::detail {

namespace http = boost::beast::http;

namespace {

constexpr std::string_view callbackPath = "/callback";

using Request = http::request<http::empty_body>;

/// Absent where the text is no head of a request.
std::optional<Request> parsed(std::string_view head) {
    http::request_parser<http::empty_body> parser;
    parser.header_limit(longestRequestHead);
    boost::system::error_code error;
    parser.put(boost::asio::buffer(head.data(), head.size()), error);
    // A body that does not come with the head does not matter: no request with a body is accepted.
    if (!parser.is_header_done()) {
        return std::nullopt;
    }
    return parser.release();
}

bool isForThisAddress(const Request& request, std::uint16_t port) {
    return request.count(http::field::host) == 1 && request[http::field::host] == "127.0.0.1:" + std::to_string(port);
}

std::string_view viewOf(boost::beast::string_view text) {
    return {text.data(), text.size()};
}

} // namespace

CallbackVerdict judgeRequest(std::string_view head, std::uint16_t port, std::string_view expectedState) {
    const std::optional<Request> request = parsed(head);
    if (!request || !isForThisAddress(*request, port) || !request->target().starts_with('/') ||
        request->target().find('#') != boost::beast::string_view::npos) {
        return CallbackVerdict(400);
    }
    const std::string_view target = viewOf(request->target());
    const std::string_view path = target.substr(0, target.find('?'));
    if (path != callbackPath) {
        return CallbackVerdict(404);
    }
    if (request->method() != http::verb::get) {
        return CallbackVerdict(405);
    }
    const CallbackQuery query =
        CallbackQuery::parse(target.substr(std::min(path.size() + 1, target.size())), expectedState);
    CallbackVerdict verdict(query.origin == CallbackOrigin::ownAttempt ? 200 : 400);
    verdict.isOfOtherAttempt = query.origin == CallbackOrigin::otherAttempt;
    if (query.origin == CallbackOrigin::ownAttempt) {
        verdict.answer = query.answer;
    }
    return verdict;
}

} // namespace tovrel::detail
