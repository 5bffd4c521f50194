#include <Platform/Coding/JSONDecoder.hpp>
#include <TovrelTesting/FakeTovrelAccountsWebService.hpp>
#include <TovrelTesting/FakeWebRequestExecutor.hpp>
#include <TovrelWebServices/Tovrel Accounts/AccountsErrorPredicates.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsError.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <Support/Await.hpp>

namespace tovrel::tests {

namespace {

using testing::FakeTovrelAccountsWebService;
using testing::FakeWebRequestExecutor;

TovrelAccountsErrorResponse response() {
    return TovrelAccountsErrorResponse("invalid_grant", "expired", std::nullopt);
}

void validate(std::int64_t statusCode, const std::optional<TovrelAccountsErrorResponse>& errorResponse) {
    TovrelAccountsWebService::validateStatusCode(statusCode, StatusCodeRange::success(), errorResponse);
}

std::optional<WebServiceError> transportErrorOf(std::int64_t statusCode) {
    try {
        validate(statusCode, std::nullopt);
    } catch (const WebServiceError& error) {
        return error;
    }
    return std::nullopt;
}

std::optional<TovrelAccountsError> accountsErrorOf(std::int64_t statusCode,
                                                   const TovrelAccountsErrorResponse& errorResponse) {
    try {
        validate(statusCode, errorResponse);
    } catch (const TovrelAccountsError& error) {
        return error;
    }
    return std::nullopt;
}

} // namespace

TEST(TovrelAccountsErrorResponse, DecodesTheBodyOfARefusal) {
    const auto decoded = JSONDecoder().decode<TovrelAccountsErrorResponse>(
        Data(R"({"error":"invalid_grant","error_description":"expired","error_uri":"https://e"})"));
    EXPECT_EQ(decoded, TovrelAccountsErrorResponse("invalid_grant", "expired", "https://e"));
    EXPECT_EQ(JSONDecoder().decode<TovrelAccountsErrorResponse>(Data(R"({"error":"x"})")),
              TovrelAccountsErrorResponse("x", std::nullopt, std::nullopt));
}

TEST(TovrelAccountsErrorResponse, NeedsAnError) {
    for (const char* json : {R"({"error_description":"x"})", R"({"error":null})", R"({"error":1})", "[]", "", "{"}) {
        EXPECT_THROW(static_cast<void>(JSONDecoder().decode<TovrelAccountsErrorResponse>(Data(json))), DecodingError)
            << json;
    }
}

TEST(TovrelAccountsError, IsEqualByAllFields) {
    const TovrelAccountsError error(400, "a", "b", "c");
    EXPECT_EQ(error, TovrelAccountsError(400, "a", "b", "c"));
    EXPECT_NE(error, TovrelAccountsError(401, "a", "b", "c"));
    EXPECT_NE(error, TovrelAccountsError(400, "x", "b", "c"));
    EXPECT_NE(error, TovrelAccountsError(400, "a", std::nullopt, "c"));
    EXPECT_NE(error, TovrelAccountsError(400, "a", "b", "x"));
}

TEST(TovrelAccountsError, SaysNothingOfTheServersOwnWords) {
    EXPECT_STREQ(TovrelAccountsError(400, "invalid_grant", "canary", "canary").what(),
                 "The accounts server refused the request with status 400 (invalid_grant).");
    EXPECT_STREQ(TovrelAccountsError(503, "canary", "canary", "canary").what(),
                 "The accounts server refused the request with status 503.");
}

TEST(AccountsErrorPredicates, KnowsWhenTheLoginIsOver) {
    const auto isOver = [](const auto& error) { return isSignedOut(std::make_exception_ptr(error)); };
    EXPECT_TRUE(isOver(WebServiceError::unauthorized()));
    EXPECT_TRUE(isOver(TovrelAccountsError(400, "invalid_grant", std::nullopt, std::nullopt)));
    EXPECT_FALSE(isOver(TovrelAccountsError(401, "invalid_client", std::nullopt, std::nullopt)));
    EXPECT_FALSE(isOver(WebServiceError::timedOut()));
    EXPECT_FALSE(isOver(1));
}

TEST(AccountsStatus, IsAcceptedInItsRangeWhateverTheBodySays) {
    EXPECT_NO_THROW(validate(200, response()));
    EXPECT_NO_THROW(validate(299, std::nullopt));
    EXPECT_NO_THROW(
        TovrelAccountsWebService::validateStatusCode(404, StatusCodeRange(404, 405), TovrelAccountsErrorResponse()));
}

TEST(AccountsStatus, BecomesTheErrorOfTheBody) {
    for (const std::int64_t statusCode : {199, 300, 400, 401, 404, 500, 503}) {
        EXPECT_EQ(accountsErrorOf(statusCode, response()),
                  TovrelAccountsError(statusCode, "invalid_grant", "expired", std::nullopt));
    }
    EXPECT_EQ(accountsErrorOf(503, TovrelAccountsErrorResponse("x", std::nullopt, std::nullopt)),
              TovrelAccountsError(503, "x", std::nullopt, std::nullopt));
}

TEST(AccountsStatus, BecomesATransportErrorWithoutABody) {
    EXPECT_EQ(transportErrorOf(400), WebServiceError::invalidServerResponse());
    EXPECT_EQ(transportErrorOf(401), WebServiceError::unauthorized());
    EXPECT_EQ(transportErrorOf(404), WebServiceError::notFound());
    EXPECT_EQ(transportErrorOf(500), WebServiceError::internalServerError());
    for (const std::int64_t statusCode : {0, 100, 199, 300, 302, 403, 503, 600}) {
        EXPECT_EQ(transportErrorOf(statusCode), WebServiceError::unexpectedServerStatusCode(statusCode));
    }
}

TEST(TovrelAccountsWebService, LogsOutForTheUserUnlessToldOtherwise) {
    const auto service = FakeTovrelAccountsWebService::make(FakeWebRequestExecutor::make());
    getInTime(service->logout());
    ASSERT_EQ(service->calls().size(), 1U);
    EXPECT_EQ(service->calls().front().reason, TovrelAccountsLogoutReason::userInitiated());
}

TEST(TovrelAccountsWebService, HasAProfileWhenThereIsOne) {
    const auto service = FakeTovrelAccountsWebService::make(FakeWebRequestExecutor::make());
    EXPECT_FALSE(getInTime(service->hasProfile(TovrelAccountsType::appleSignIn)));
    service->answerUserProfile([](TovrelAccountsType type) -> std::optional<TovrelAccountsUserProfile> {
        if (type == TovrelAccountsType::anonymous) {
            throw WebServiceError::timedOut();
        }
        return TovrelAccountsUserProfile();
    });
    EXPECT_TRUE(getInTime(service->hasProfile(TovrelAccountsType::appleSignIn)));
    EXPECT_THROW(getInTime(service->hasProfile(TovrelAccountsType::anonymous)), WebServiceError);
}

} // namespace tovrel::tests
