#include <TovrelWebServices/Services/ApiEmptyDataResponse.hpp>
#include <TovrelWebServices/Services/Records.hpp>
#include <TovrelWebServices/Services/TovrelDomainServiceError.hpp>
#include <TovrelWebServices/Services/TovrelDomainWebService.hpp>
#include <TovrelWebServices/Transport/DecodingStrategy.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <gtest/gtest.h>

#include <functional>

namespace tovrel::tests {

namespace {

const JSONDecoder decoder = DecodingStrategy::snakeCaseAndMilliseconds().jsonDecoder();
constexpr std::string_view envelope = R"({"meta":{"code":"C1","message":"M1"},"data":{"id":7,"title":"t"}})";

WebResponse reply(std::int64_t status, std::string_view body) {
    return WebResponse(Data(body), HTTPHeaders{HTTPHeader("X", "y")}, status);
}

template <class T = Item>
auto validated(std::int64_t status, std::string_view body = envelope) {
    return TovrelDomainWebService::validatedTovrelResponse<T>(reply(status, body), Data(body), decoder);
}

template <class E>
std::optional<E> errorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const E& error) {
        return error;
    }
    return std::nullopt;
}

} // namespace

TEST(TovrelDomainWebService, DecodesAnEnvelope) {
    EXPECT_EQ(TovrelDomainWebService::decode<Item>(Data(envelope), decoder),
              ApiWebResponseObject<Item>(ApiResponseMeta("C1", "M1"), Item(7, "t")));
}

TEST(TovrelDomainWebService, ReplacesEveryDecodingErrorByAnInvalidResponse) {
    for (const std::string_view body : {"", "<html>", "{}", R"({"meta":{"code":"a","message":"b"},"data":[]})"}) {
        EXPECT_EQ(errorOf<WebServiceError>([&] { (void)TovrelDomainWebService::decode<Item>(Data(body), decoder); }),
                  WebServiceError::invalidServerResponse())
            << body;
    }
    EXPECT_EQ(errorOf<WebServiceError>([] { (void)TovrelDomainWebService::decode<Stubborn>(Data(envelope), decoder); }),
              WebServiceError::invalidServerResponse());
}

TEST(TovrelDomainWebService, ReturnsBodyHeadersAndStatusBesideTheEnvelope) {
    const auto response = validated(201);
    EXPECT_EQ(response.responseObject.data, Item(7, "t"));
    EXPECT_EQ(response.statusCode, 201);
    EXPECT_EQ(response.rawData, Data(envelope));
    EXPECT_TRUE(response.headers.contains("x"));
}

TEST(TovrelDomainWebService, SucceedsFrom200To299WhateverTheCodeSays) {
    for (const std::int64_t status : {200, 204, 250, 299}) {
        EXPECT_EQ(validated(status).responseObject.meta.code, "C1") << status;
    }
}

TEST(TovrelDomainWebService, RefusesEveryOtherStatusWithTheWordsOfTheEnvelope) {
    for (const std::int64_t status : {0, 100, 199, 300, 304, 400, 401, 403, 404, 500, 503, 599}) {
        EXPECT_EQ(errorOf<TovrelDomainServiceError>([&] { (void)validated(status); }),
                  TovrelDomainServiceError(status, "C1", "M1"))
            << status;
    }
}

TEST(TovrelDomainWebService, LooksAtTheBodyBeforeTheStatus) {
    for (const std::int64_t status : {200, 404, 500}) {
        EXPECT_EQ(errorOf<WebServiceError>([&] { (void)validated(status, "<html>"); }),
                  WebServiceError::invalidServerResponse());
        EXPECT_EQ(errorOf<WebServiceError>([&] { (void)validated<std::vector<Item>>(status); }),
                  WebServiceError::invalidServerResponse());
    }
}

TEST(TovrelDomainWebService, RefusesAFailureWithoutAPayload) {
    EXPECT_EQ(errorOf<TovrelDomainServiceError>(
                  [] { (void)validated(409, R"({"meta":{"code":"taken","message":"try another"}})"); }),
              TovrelDomainServiceError(409, "taken", "try another"));
}

TEST(TovrelDomainServiceError, IsEqualFieldByField) {
    const TovrelDomainServiceError error(404, "code", "message");
    EXPECT_EQ(error, TovrelDomainServiceError(404, "code", "message"));
    EXPECT_NE(error, TovrelDomainServiceError(500, "code", "message"));
    EXPECT_NE(error, TovrelDomainServiceError(404, "other", "message"));
    EXPECT_NE(error, TovrelDomainServiceError(404, "code", "other"));
}

TEST(TovrelDomainServiceError, KeepsTheServersWordsOutOfItsText) {
    const TovrelDomainServiceError error(404, "canary-code", "canary-message");
    EXPECT_EQ(std::string_view(error.what()), "The server refused the call with the status 404.");
}

} // namespace tovrel::tests
