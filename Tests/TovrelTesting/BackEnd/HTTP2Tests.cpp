#include <TovrelTesting/BackEnd/BackEndFixture.hpp>

namespace tovrel::testing {

class LocalBackEndHTTP2 : public BackEndFixture {
protected:
    CurlRequest requestFor(const std::string& target) const {
        return BackEndFixture::requestFor(target, CURL_HTTP_VERSION_2TLS);
    }

    CurlResult get(const std::string& target) { return client->perform(requestFor(target)); }
};

TEST_F(LocalBackEndHTTP2, AnswersARouteAfterNegotiation) {
    const CurlResult result = get("/hello");
    EXPECT_EQ(result.code, CURLE_OK);
    EXPECT_EQ(result.version, CURL_HTTP_VERSION_2_0);
    EXPECT_EQ(result.body, "Hello, world");
    ASSERT_EQ(backEnd->requests().size(), 1U);
    EXPECT_EQ(backEnd->requests()[0].version, HTTPVersion::http2);
}

TEST_F(LocalBackEndHTTP2, SendsHeaderNamesInLowerCaseAndDropsConnectionLines) {
    backEnd->on("GET", "/lines", [](const ReceivedRequest&) {
        return ScriptedResponse::text("abc").withHeader("X-Second", "2").withHeader("Connection", "close");
    });
    EXPECT_EQ(get("/lines").head, "HTTP/2 200 \r\n"
                                  "content-type: text/plain; charset=utf-8\r\n"
                                  "x-second: 2\r\n"
                                  "content-length: 3\r\n\r\n");
}

TEST_F(LocalBackEndHTTP2, ServesManyStreamsOnOneConnection) {
    backEnd->on("GET", "/slow", [](const ReceivedRequest&) {
        return ScriptedResponse::text("slow").withDelay(std::chrono::milliseconds(200));
    });
    const auto started = std::chrono::steady_clock::now();
    const auto results = client->performTogether(std::vector<CurlRequest>(64, requestFor("/slow")));
    for (const CurlResult& result : results) {
        EXPECT_EQ(result.body, "slow");
    }
    EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(5));
    EXPECT_EQ(backEnd->statistics().connectionsAccepted, 1U);
    const auto requests = backEnd->requests();
    ASSERT_EQ(requests.size(), 64U);
    EXPECT_NE(requests[0].stream, requests[1].stream);
}

TEST_F(LocalBackEndHTTP2, SendsTrailers) {
    backEnd->on("GET", "/trailers",
                [](const ReceivedRequest&) { return ScriptedResponse::text("body").withTrailer("X-Checksum", "7"); });
    const CurlResult result = get("/trailers");
    EXPECT_EQ(result.body, "body");
    EXPECT_THAT(result.head, ::testing::EndsWith("\r\n\r\nx-checksum: 7\r\n"));
}

TEST_F(LocalBackEndHTTP2, AnswersAHeadRequestWithoutABody) {
    CurlRequest request = requestFor("/hello");
    request.method = "HEAD";
    const CurlResult result = client->perform(request);
    EXPECT_EQ(result.code, CURLE_OK);
    EXPECT_THAT(result.head, ::testing::HasSubstr("content-length: 12\r\n"));
    EXPECT_EQ(result.body, "");
}

TEST_F(LocalBackEndHTTP2, ReceivesAnUploadLargerThanItsWindows) {
    CurlRequest request = requestFor("/echo");
    request.method = "POST";
    request.body = generatedBytes(0, 20'000'000);
    const CurlResult result = client->perform(request);
    EXPECT_EQ(result.code, CURLE_OK);
    EXPECT_TRUE(result.body == request.body);
}

TEST_F(LocalBackEndHTTP2, IsNotOfferedWhereTheOptionsForbidIt) {
    LocalBackEndOptions options;
    options.protocols = OfferedProtocols::http1Only;
    startWith(options);
    const CurlResult result = get("/hello");
    EXPECT_EQ(result.version, CURL_HTTP_VERSION_1_1);
    EXPECT_EQ(result.body, "Hello, world");
}

TEST_F(LocalBackEndHTTP2, RefusesAClientThatSpeaksOnlyHTTP1WhereItIsTheOnlyOffer) {
    LocalBackEndOptions options;
    options.protocols = OfferedProtocols::http2Only;
    startWith(options);
    EXPECT_EQ(BackEndFixture::get("/hello").code, CURLE_SSL_CONNECT_ERROR);
    EXPECT_EQ(get("/hello").body, "Hello, world");
    EXPECT_EQ(backEnd->statistics().handshakesFailed, 1U);
}

} // namespace tovrel::testing
