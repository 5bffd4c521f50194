#include <Platform/Coding/JSONDecoder.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/Private/TokenResponse.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsWebService.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <optional>
#include <tuple>

namespace tovrel::detail {

namespace {

/// Tells whether the server set the time itself.
struct Timestamp {
    std::optional<double> value;

    Timestamp() = default;
    static constexpr auto fields() { return std::tuple{Field<&Timestamp::value, "timestamp">{}}; }
};

std::optional<TovrelAccountsErrorResponse> errorResponseIn(const std::optional<Data>& body,
                                                           const JSONDecoder& decoder) {
    if (!body) {
        return std::nullopt;
    }
    try {
        return decoder.decode<TovrelAccountsErrorResponse>(*body);
    } catch (const DecodingError&) {
        return std::nullopt;
    }
}

} // namespace

TovrelAccountsToken tokenOf(const WebResponse& response, Date now) {
    const JSONDecoder decoder;
    TovrelAccountsWebService::validateStatusCode(response.statusCode, StatusCodeRange::success(),
                                                 errorResponseIn(response.data, decoder));
    if (!response.data) {
        throw WebServiceError::invalidServerResponse();
    }
    auto token = decoder.decode<TovrelAccountsToken>(*response.data);
    if (!decoder.decode<Timestamp>(*response.data).value) {
        token.timestamp = now.secondsSince1970();
    }
    return token;
}

} // namespace tovrel::detail
