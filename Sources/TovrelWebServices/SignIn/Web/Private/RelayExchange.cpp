#include <Platform/Coding/JSONDecoder.hpp>
#include <QZFrameworkCoreLogic/StringURLEncoding.hpp>
#include <TovrelWebServices/SignIn/AuthorizationError.hpp>
#include <TovrelWebServices/SignIn/Web/Private/RelayExchange.hpp>
#include <TovrelWebServices/Transport/WebRequest.hpp>

#include <tuple>
#include <utility>

namespace tovrel::detail {

namespace {

constexpr std::size_t longestAnswer = 65536;
constexpr double idleTimeout = 60.0;

/// The answer as it travels.
struct ExchangeResponse {
    std::string identityToken;
    std::optional<std::string> user;

    ExchangeResponse() = default;
    static constexpr auto fields() {
        return std::tuple{Field<&ExchangeResponse::identityToken, "id_token">{},
                          Field<&ExchangeResponse::user, "user">{}};
    }
};

std::shared_ptr<WebRequest<RequestType::HTTP>> exchangeRequest(const URL& relay, const std::string& code,
                                                               const std::string& codeVerifier) {
    // Both are ASCII, which encodes always.
    const std::string form =
        "code=" + *urlEncodeQueryParameter(code) + "&code_verifier=" + *urlEncodeQueryParameter(codeVerifier);
    return WebRequest<RequestType::HTTP>::make(relay, HttpMethod::post, ContentType::applicationFormUrlEncoded(),
                                               idleTimeout, CachePolicy::reloadIgnoringLocalCacheData)
        ->setBody(Data(form), ContentType::applicationFormUrlEncoded());
}

RelayedAnswer answerIn(const WebResponse& response) {
    if (response.statusCode != 200) {
        throw AuthorizationError::relayRefused();
    }
    if (!response.data || response.data->size() > longestAnswer) {
        throw AuthorizationError::invalidResponse();
    }
    try {
        auto decoded = JSONDecoder().decode<ExchangeResponse>(*response.data);
        RelayedAnswer answer;
        answer.identityToken = std::move(decoded.identityToken);
        answer.user = std::move(decoded.user);
        return answer;
    } catch (const DecodingError&) {
        throw AuthorizationError::invalidResponse();
    }
}

} // namespace

Async<RelayedAnswer> fetchAnswer(std::shared_ptr<WebRequestExecutor> executor, URL relay, std::string code,
                                 std::string codeVerifier) {
    const std::shared_ptr<const WebRequestable> request = exchangeRequest(relay, code, codeVerifier);
    const WebResponse response = co_await executor->data(request);
    co_return answerIn(response);
}

} // namespace tovrel::detail
