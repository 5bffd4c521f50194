#include <TovrelTesting/BackEnd/BackEndFixture.hpp>

namespace tovrel::testing {

class LocalBackEndResponse : public BackEndOverBothVersions {};

INSTANTIATE_TEST_SUITE_P(, LocalBackEndResponse, bothVersions, versionName);

TEST_P(LocalBackEndResponse, StreamsALargeGeneratedBody) {
    constexpr std::size_t size = 10'000'000;
    backEnd->on("GET", "/large", [](const ReceivedRequest&) { return ScriptedResponse::generated(size); });
    const CurlResult result = get("/large");
    EXPECT_EQ(result.code, CURLE_OK);
    EXPECT_TRUE(result.body == generatedBytes(0, size));
}

TEST_P(LocalBackEndResponse, StreamsALargeBodyInChunks) {
    constexpr std::size_t size = 1'000'000;
    backEnd->on("GET", "/large", [](const ReceivedRequest&) {
        return ScriptedResponse::generated(size).withFraming(ResponseFraming::chunked);
    });
    EXPECT_TRUE(get("/large").body == generatedBytes(0, size));
}

TEST_P(LocalBackEndResponse, IsCompressedAsScripted) {
    backEnd->on("GET", "/coded/{coding}", [](const ReceivedRequest& request) {
        const bool isGzip = request.parameters.at("coding") == "gzip";
        return ScriptedResponse::text(std::string(5000, 'z'))
            .withCoding(isGzip ? ContentCoding::gzip : ContentCoding::deflate);
    });
    for (const std::string coding : {"gzip", "deflate"}) {
        CurlRequest request = requestFor("/coded/" + coding);
        request.acceptEncoding = coding;
        const CurlResult result = client->perform(request);
        EXPECT_EQ(result.code, CURLE_OK);
        EXPECT_EQ(result.body, std::string(5000, 'z'));
        EXPECT_THAT(result.head, ::testing::HasSubstr(": " + coding + "\r\n"));
    }
}

TEST_P(LocalBackEndResponse, ComesAfterTheScriptedDelay) {
    backEnd->on("GET", "/late", [](const ReceivedRequest&) {
        return ScriptedResponse::text("late").withDelay(std::chrono::milliseconds(100));
    });
    const auto started = std::chrono::steady_clock::now();
    EXPECT_EQ(get("/late").body, "late");
    EXPECT_GE(std::chrono::steady_clock::now() - started, std::chrono::milliseconds(100));
}

TEST_P(LocalBackEndResponse, IsGivenUpWhenTheClientLeavesDuringTheDelay) {
    backEnd->on("GET", "/late",
                [](const ReceivedRequest&) { return ScriptedResponse::text("late").withDelay(std::chrono::hours(1)); });
    CurlRequest request = requestFor("/late");
    request.timeout = std::chrono::milliseconds(200);
    EXPECT_EQ(client->perform(request).code, CURLE_OPERATION_TIMEDOUT);
    client.reset();
    const auto isIdle = [](const BackEndStatistics& now) {
        return now.exchangesInProgress == 0 && now.connectionsOpen == 0;
    };
    EXPECT_TRUE(isIdle(backEnd->waitUntil(isIdle, deadline)));
}

TEST_P(LocalBackEndResponse, CarriesAnyStatus) {
    backEnd->on("GET", "/status/{code}", [](const ReceivedRequest& request) {
        return ScriptedResponse(std::stoi(request.parameters.at("code")));
    });
    for (const long status : {204L, 304L, 404L, 418L, 503L, 599L}) {
        const CurlResult result = get("/status/" + std::to_string(status));
        EXPECT_EQ(result.code, CURLE_OK);
        EXPECT_EQ(result.status, status);
    }
    EXPECT_EQ(backEnd->statistics().connectionsAccepted, 1U);
}

TEST_P(LocalBackEndResponse, RedirectsToAnotherAddress) {
    backEnd->on("GET", "/old", [](const ReceivedRequest&) { return ScriptedResponse::redirect("/hello", 307); });
    const CurlResult result = get("/old");
    EXPECT_EQ(result.status, 307);
    EXPECT_THAT(result.head, ::testing::HasSubstr("ocation: /hello\r\n"));
}

TEST_P(LocalBackEndResponse, SendsTheLengthThatTheScriptAnnounces) {
    backEnd->on("GET", "/wrong",
                [](const ReceivedRequest&) { return ScriptedResponse::text("four").withContentLength(9); });
    EXPECT_EQ(get("/wrong").code, isHttp2() ? CURLE_HTTP2_STREAM : CURLE_PARTIAL_FILE);
}

TEST_P(LocalBackEndResponse, IsAnErrorWhereTheHandlerThrows) {
    backEnd->on("GET", "/throws", [](const ReceivedRequest&) -> ScriptedResponse { throw std::runtime_error("no"); });
    EXPECT_EQ(get("/throws").status, 500);
    EXPECT_EQ(get("/hello").status, 200);
}

} // namespace tovrel::testing
