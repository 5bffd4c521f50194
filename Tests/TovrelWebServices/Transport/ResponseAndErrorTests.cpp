#include <Platform/Concurrency/CancellationError.hpp>
#include <Platform/URLLoading/URLError.hpp>
#include <TovrelWebServices/Transport/ErrorPredicates.hpp>
#include <TovrelWebServices/Transport/URLSessionWebRequestExecutor.hpp>
#include <TovrelWebServices/Transport/WebResponse.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>
#include <TovrelWebServices/Transport/WebServiceUtility.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

namespace tovrel::tests {

namespace {

std::optional<WebServiceError> errorOf(std::int64_t code, StatusCodeRange range = StatusCodeRange::success()) {
    try {
        WebServiceUtility::validateStatusCode(code, range);
    } catch (const WebServiceError& error) {
        return error;
    }
    return std::nullopt;
}

template <class E>
std::exception_ptr pointer(const E& error) {
    return std::make_exception_ptr(error);
}

std::exception_ptr mapped(const std::exception_ptr& error) {
    return URLSessionWebRequestExecutor::ErrorMapper::mapToWebServiceError(error);
}

WebServiceError webServiceError(const std::exception_ptr& error) {
    try {
        std::rethrow_exception(error);
    } catch (const WebServiceError& webError) {
        return webError;
    }
}

} // namespace

TEST(StatusCodeValidation, AcceptsTheCodesOfTheRange) {
    EXPECT_FALSE(errorOf(200));
    EXPECT_FALSE(errorOf(204));
    EXPECT_FALSE(errorOf(299));
}

TEST(StatusCodeValidation, NamesTheCodesThatHaveAnErrorOfTheirOwn) {
    EXPECT_EQ(errorOf(400), WebServiceError::invalidServerResponse());
    EXPECT_EQ(errorOf(401), WebServiceError::unauthorized());
    EXPECT_EQ(errorOf(404), WebServiceError::notFound());
    EXPECT_EQ(errorOf(500), WebServiceError::internalServerError());
}

TEST(StatusCodeValidation, GivesEveryOtherCodeAsUnexpected) {
    for (const std::int64_t code : {100, 199, 300, 304, 403, 409, 502, 503, 0, -1}) {
        EXPECT_EQ(errorOf(code), WebServiceError::unexpectedServerStatusCode(code)) << code;
    }
}

TEST(StatusCodeValidation, AcceptsAnyCodeThatTheCallersRangeHolds) {
    EXPECT_FALSE(errorOf(404, StatusCodeRange(200, 405)));
    EXPECT_EQ(errorOf(404, StatusCodeRange(200, 404)), WebServiceError::notFound());
    EXPECT_EQ(errorOf(200, StatusCodeRange(300, 400)), WebServiceError::unexpectedServerStatusCode(200));
}

TEST(WebServiceError, IsEqualByKindAndStatusCode) {
    EXPECT_EQ(WebServiceError::unexpectedServerStatusCode(502), WebServiceError::unexpectedServerStatusCode(502));
    EXPECT_NE(WebServiceError::unexpectedServerStatusCode(502), WebServiceError::unexpectedServerStatusCode(503));
    EXPECT_NE(WebServiceError::unauthorized(), WebServiceError::notFound());
    EXPECT_EQ(WebServiceError::unexpectedServerStatusCode(502).statusCode(), 502);
}

TEST(ErrorMapper, TurnsNotConnectedAndTimedOutIntoTheTransportsVocabulary) {
    EXPECT_EQ(webServiceError(mapped(pointer(URLError::notConnectedToInternet("GET api.example")))),
              WebServiceError::notConnectedToInternet());
    EXPECT_EQ(webServiceError(mapped(pointer(URLError::timedOut()))), WebServiceError::timedOut());
}

TEST(ErrorMapper, PassesEveryOtherErrorAsItIs) {
    for (const auto& error : {pointer(URLError::cancelled()), pointer(URLError::cannotFindHost()),
                              pointer(URLError::networkConnectionLost()), pointer(WebServiceError::invalidUrl()),
                              pointer(CancellationError()), pointer(std::runtime_error("foreign"))}) {
        EXPECT_EQ(mapped(error), error);
    }
}

TEST(ErrorPredicates, RecogniseACancellationInBothForms) {
    EXPECT_TRUE(isCancelled(pointer(CancellationError())));
    EXPECT_TRUE(isCancelled(pointer(URLError::cancelled())));
    EXPECT_FALSE(isCancelled(pointer(URLError::timedOut())));
    EXPECT_FALSE(isCancelled(pointer(std::runtime_error("foreign"))));
}

TEST(ErrorPredicates, RecogniseADeviceThatIsNotConnected) {
    EXPECT_TRUE(isNotConnected(pointer(WebServiceError::notConnectedToInternet())));
    EXPECT_TRUE(isNotConnected(pointer(URLError::notConnectedToInternet())));
    EXPECT_FALSE(isNotConnected(pointer(WebServiceError::timedOut())));
    EXPECT_FALSE(isNotConnected(pointer(URLError::cannotConnectToHost())));
}

TEST(WebResponse, DistinguishesAnEmptyBodyFromNone) {
    const WebResponse none(std::nullopt, HTTPHeaders(), 200);
    const WebResponse empty(Data(""), HTTPHeaders(), 200);
    EXPECT_FALSE(rawData(none));
    ASSERT_TRUE(rawData(empty));
    EXPECT_TRUE(rawData(empty)->empty());
}

TEST(ResponseObjectWebResponse, KeepsWhatTheResponseHeldBesideTheDecodedBody) {
    HTTPHeaders headers;
    headers.append("ETag", "\"1\"");
    const ResponseObjectWebResponse<int> response(7, WebResponse(Data("7"), headers, 201));
    EXPECT_EQ(response.responseObject, 7);
    EXPECT_EQ(rawData(response), Data("7"));
    EXPECT_EQ(response.headers, headers);
    EXPECT_EQ(response.statusCode, 201);
}

} // namespace tovrel::tests
