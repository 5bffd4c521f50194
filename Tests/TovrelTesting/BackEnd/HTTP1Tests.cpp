#include <TovrelTesting/BackEnd/BackEndFixture.hpp>

namespace tovrel::testing {

using LocalBackEndHTTP1 = BackEndFixture;

TEST_F(LocalBackEndHTTP1, AnswersARouteOverTLS) {
    const CurlResult result = get("/hello");
    EXPECT_EQ(result.code, CURLE_OK);
    EXPECT_EQ(result.status, 200);
    EXPECT_EQ(result.version, CURL_HTTP_VERSION_1_1);
    EXPECT_EQ(result.body, "Hello, world");
}

TEST_F(LocalBackEndHTTP1, SendsTheHeaderLinesAsScriptedAndTheLengthBehind) {
    backEnd->on("GET", "/lines", [](const ReceivedRequest&) {
        return ScriptedResponse::text("abc").withHeader("X-Second", "2").withHeader("x-second", "3");
    });
    EXPECT_EQ(get("/lines").head, "HTTP/1.1 200 OK\r\n"
                                  "Content-Type: text/plain; charset=utf-8\r\n"
                                  "X-Second: 2\r\n"
                                  "x-second: 3\r\n"
                                  "Content-Length: 3\r\n\r\n");
}

TEST_F(LocalBackEndHTTP1, KeepsTheConnectionForTheNextRequest) {
    EXPECT_EQ(get("/hello").newConnections, 1);
    EXPECT_EQ(get("/hello").newConnections, 0);
    EXPECT_EQ(backEnd->statistics().connectionsAccepted, 1U);
    const auto requests = backEnd->requests();
    ASSERT_EQ(requests.size(), 2U);
    EXPECT_EQ(requests[0].connection, requests[1].connection);
}

TEST_F(LocalBackEndHTTP1, ClosesTheConnectionWhenTheScriptSaysSo) {
    backEnd->on("GET", "/bye",
                [](const ReceivedRequest&) { return ScriptedResponse::text("bye").withHeader("Connection", "close"); });
    EXPECT_EQ(get("/bye").body, "bye");
    EXPECT_EQ(get("/bye").newConnections, 1);
}

TEST_F(LocalBackEndHTTP1, MarksTheEndOfABodyByClosing) {
    backEnd->on("GET", "/until-close", [](const ReceivedRequest&) {
        return ScriptedResponse::text("tail").withFraming(ResponseFraming::untilClose);
    });
    const CurlResult result = get("/until-close");
    EXPECT_EQ(result.code, CURLE_OK);
    EXPECT_EQ(result.body, "tail");
    EXPECT_EQ(result.head.find("Content-Length"), std::string::npos);
}

TEST_F(LocalBackEndHTTP1, SendsChunksAndTrailers) {
    backEnd->on("GET", "/chunks", [](const ReceivedRequest&) {
        return ScriptedResponse::text("in chunks").withTrailer("X-Checksum", "7");
    });
    const CurlResult result = get("/chunks");
    EXPECT_EQ(result.body, "in chunks");
    EXPECT_THAT(result.head, ::testing::HasSubstr("Transfer-Encoding: chunked\r\n"));
    EXPECT_THAT(result.head, ::testing::EndsWith("\r\n\r\nX-Checksum: 7\r\n"));
    EXPECT_EQ(get("/hello").newConnections, 0);
}

TEST_F(LocalBackEndHTTP1, AnswersAHeadRequestFromTheRouteForGetWithoutABody) {
    CurlRequest request = requestFor("/hello");
    request.method = "HEAD";
    const CurlResult result = client->perform(request);
    EXPECT_EQ(result.code, CURLE_OK);
    EXPECT_THAT(result.head, ::testing::HasSubstr("Content-Length: 12\r\n"));
    EXPECT_EQ(result.body, "");
    EXPECT_EQ(get("/hello").newConnections, 0);
}

TEST_F(LocalBackEndHTTP1, InvitesTheBodyOfARequestThatExpectsIt) {
    CurlRequest request = requestFor("/echo");
    request.method = "POST";
    request.body = std::string(100000, 'x');
    request.headers = {"Expect: 100-continue"};
    const CurlResult result = client->perform(request);
    EXPECT_EQ(result.body, request.body);
    EXPECT_THAT(result.head, ::testing::StartsWith("HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200 OK\r\n"));
}

TEST_F(LocalBackEndHTTP1, ReceivesAChunkedUpload) {
    CurlRequest request = requestFor("/echo");
    request.method = "POST";
    request.body = std::string(200000, 'y');
    request.headers = {"Transfer-Encoding: chunked", "Expect:"};
    EXPECT_EQ(client->perform(request).body, request.body);
    const auto requests = backEnd->requests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].header("content-length"), std::nullopt);
    EXPECT_EQ(requests[0].received, ReceivedPart::everything);
}

TEST_F(LocalBackEndHTTP1, ServesPlainHTTPOnItsOwnPort) {
    LocalBackEndOptions options;
    options.plainListener = PlainListener::present;
    startWith(options);
    const CurlResult result = client->perform(CurlRequest(backEnd->plainUrl("/hello")));
    EXPECT_EQ(result.body, "Hello, world");
    ASSERT_EQ(backEnd->requests().size(), 1U);
    EXPECT_EQ(backEnd->requests()[0].scheme, Scheme::http);
    EXPECT_EQ(backEnd->statistics().handshakesCompleted, 0U);
}

TEST_F(LocalBackEndHTTP1, AnswersNothingMoreOnAConnectionThatStallsAfterAResponse) {
    backEnd->inject(Fault::stall(FaultPoint::end));
    EXPECT_EQ(get("/hello").body, "Hello, world");
    CurlRequest next = requestFor("/hello");
    next.timeout = std::chrono::milliseconds(200);
    EXPECT_EQ(client->perform(next).code, CURLE_OPERATION_TIMEDOUT);
    EXPECT_EQ(backEnd->statistics().requestsReceived, 1U);
}

TEST_F(LocalBackEndHTTP1, ServesManyConnectionsAtOnce) {
    const auto results = client->performTogether(std::vector<CurlRequest>(64, requestFor("/hello")));
    for (const CurlResult& result : results) {
        EXPECT_EQ(result.body, "Hello, world");
    }
    EXPECT_EQ(backEnd->statistics().requestsReceived, 64U);
}

} // namespace tovrel::testing
