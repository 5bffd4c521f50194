#include <TovrelTesting/BackEnd/BackEndFixture.hpp>

#include <algorithm>
#include <thread>
#include <tuple>

namespace tovrel::testing {

namespace {

using std::chrono::milliseconds;

constexpr std::size_t bodySize = 1000;

/// A fault that ends an exchange, and what a careful client sees of it on a connection of its own.
struct EndingFault {
    std::string name;
    Fault fault;
    CURLcode http1Code;
    std::size_t http1Body;
    CURLcode http2Code;
    std::size_t http2Body;
};

std::vector<EndingFault> endingFaults() {
    using P = FaultPoint;
    const CURLcode notHttp = CURLE_UNSUPPORTED_PROTOCOL;
    std::vector<EndingFault> faults;
    const std::vector<std::pair<std::string, FaultPoint>> silentPoints = {
        {"AtRequestStart", P::requestStart}, {"InRequestBody", P::requestBody}, {"AtResponseStart", P::responseStart}};
    for (const auto& [where, point] : silentPoints) {
        faults.push_back({"Close" + where, Fault::close(point), CURLE_GOT_NOTHING, 0, CURLE_PARTIAL_FILE, 0});
        faults.push_back({"Garbage" + where, Fault::garbage(point), notHttp, 0, CURLE_GOT_NOTHING, 0});
        faults.push_back({"BadTLS" + where, Fault::badTLS(point), CURLE_RECV_ERROR, 0, CURLE_RECV_ERROR, 0});
        // libcurl takes the half of a status line for a response; a truncated stream contradicts its Content-Length.
        faults.push_back({"Truncation" + where, Fault::truncation(point), CURLE_OK, 0, CURLE_HTTP2_STREAM, 0});
    }
    faults.push_back({"ResetInRequestBody", Fault::reset(P::requestBody), CURLE_RECV_ERROR, 0, CURLE_HTTP2_STREAM, 0});
    faults.push_back(
        {"ResetAtResponseStart", Fault::reset(P::responseStart), CURLE_RECV_ERROR, 0, CURLE_HTTP2_STREAM, 0});
    const std::size_t half = bodySize / 2;
    faults.push_back(
        {"CloseInResponseBody", Fault::close(P::responseBody), CURLE_PARTIAL_FILE, half, CURLE_PARTIAL_FILE, half});
    faults.push_back(
        {"ResetInResponseBody", Fault::reset(P::responseBody), CURLE_RECV_ERROR, half, CURLE_HTTP2_STREAM, half});
    faults.push_back({"TruncationInResponseBody", Fault::truncation(P::responseBody), CURLE_PARTIAL_FILE, half,
                      CURLE_HTTP2_STREAM, half});
    faults.push_back({"GarbageInResponseBody", Fault::garbage(P::responseBody, "\1\2\3"), CURLE_PARTIAL_FILE, half + 3,
                      CURLE_PARTIAL_FILE, half});
    faults.push_back(
        {"BadTLSInResponseBody", Fault::badTLS(P::responseBody), CURLE_RECV_ERROR, half, CURLE_RECV_ERROR, half});
    faults.push_back({"CloseLateInResponseBody", Fault::close(P::responseBody).after(990), CURLE_PARTIAL_FILE, 990,
                      CURLE_PARTIAL_FILE, 990});
    faults.push_back({"CloseBeforeResponseBody", Fault::close(P::responseBody).after(0), CURLE_PARTIAL_FILE, 0,
                      CURLE_PARTIAL_FILE, 0});
    faults.push_back({"TruncationAtEnd", Fault::truncation(P::end), CURLE_PARTIAL_FILE, bodySize - 1,
                      CURLE_HTTP2_STREAM, bodySize - 1});
    faults.push_back({"CloseAtEnd", Fault::close(P::end), CURLE_OK, bodySize, CURLE_OK, bodySize});
    faults.push_back({"ResetAtEnd", Fault::reset(P::end), CURLE_OK, bodySize, CURLE_OK, bodySize});
    faults.push_back({"GarbageAtEnd", Fault::garbage(P::end), CURLE_OK, bodySize, CURLE_OK, bodySize});
    faults.push_back({"BadTLSAtEnd", Fault::badTLS(P::end), CURLE_OK, bodySize, CURLE_OK, bodySize});
    return faults;
}

} // namespace

class LocalBackEndEndingFault : public BackEndFixture,
                                public ::testing::WithParamInterface<std::tuple<EndingFault, long>> {};

std::string endingFaultName(const ::testing::TestParamInfo<std::tuple<EndingFault, long>>& test) {
    const bool isHttp2 = std::get<1>(test.param) == CURL_HTTP_VERSION_2TLS;
    return std::get<0>(test.param).name + (isHttp2 ? "OverHTTP2" : "OverHTTP1");
}

INSTANTIATE_TEST_SUITE_P(, LocalBackEndEndingFault,
                         ::testing::Combine(::testing::ValuesIn(endingFaults()), bothVersions), endingFaultName);

TEST_P(LocalBackEndEndingFault, StrikesOneExchangeAndLeavesTheBackEndSound) {
    const auto& [expected, version] = GetParam();
    const bool isHttp2 = version == CURL_HTTP_VERSION_2TLS;
    backEnd->on("POST", "/big", [](const ReceivedRequest&) { return ScriptedResponse::generated(bodySize); });
    backEnd->inject(expected.fault);
    CurlRequest request = requestFor("/big", version);
    request.method = "POST";
    request.body = "some body";
    request.isOnFreshConnection = true;

    const CurlResult result = client->perform(request);

    EXPECT_EQ(result.code, isHttp2 ? expected.http2Code : expected.http1Code) << curl_easy_strerror(result.code);
    EXPECT_EQ(result.body.size(), isHttp2 ? expected.http2Body : expected.http1Body);
    EXPECT_EQ(backEnd->waitForRequests(1, deadline).size(), 1U);
    CurlRequest next = requestFor("/hello", version);
    next.isOnFreshConnection = true;
    EXPECT_EQ(client->perform(next).body, "Hello, world");
}

class LocalBackEndFault : public BackEndOverBothVersions {
protected:
    void SetUp() override {
        BackEndOverBothVersions::SetUp();
        backEnd->on("GET", "/big", [](const ReceivedRequest&) { return ScriptedResponse::generated(bodySize); });
    }

    CurlRequest postOf(std::size_t size) const {
        CurlRequest request = requestFor("/echo");
        request.method = "POST";
        request.body = generatedBytes(0, size);
        request.headers = {"Expect:"};
        return request;
    }

    /// Performs a request that must run into its time limit, and ends its connection.
    CURLcode giveUpOn(CurlRequest request) {
        request.timeout = milliseconds(300);
        return CurlClient(*backEnd).perform(request).code;
    }
};

INSTANTIATE_TEST_SUITE_P(, LocalBackEndFault, bothVersions, versionName);

TEST_P(LocalBackEndFault, ResetsBeforeAnythingWasProcessed) {
    backEnd->inject(Fault::reset(FaultPoint::requestStart));
    CurlRequest request = requestFor("/big");
    request.isOnFreshConnection = true;
    const CurlResult result = client->perform(request);
    // A refused stream is one that the server did not look at, so the client sends it again by itself.
    EXPECT_EQ(result.code, isHttp2() ? CURLE_OK : CURLE_RECV_ERROR);
    EXPECT_EQ(backEnd->statistics().requestsReceived, isHttp2() ? 2U : 1U);
}

TEST_P(LocalBackEndFault, TruncatesAChunkedBodyBeforeItsLastChunk) {
    backEnd->on("GET", "/chunks", [](const ReceivedRequest&) {
        return ScriptedResponse::text("chunks").withFraming(ResponseFraming::chunked);
    });
    backEnd->inject(Fault::truncation(FaultPoint::end));
    const CurlResult result = get("/chunks");
    EXPECT_EQ(result.body, "chunk");
    EXPECT_EQ(result.code, isHttp2() ? CURLE_OK : CURLE_PARTIAL_FILE);
}

TEST_P(LocalBackEndFault, StallsSilentlyUntilReleased) {
    for (const FaultPoint point :
         {FaultPoint::requestStart, FaultPoint::requestBody, FaultPoint::responseStart, FaultPoint::responseBody}) {
        backEnd->inject(Fault::stall(point));
        std::thread release([this] {
            backEnd->waitUntil([](const BackEndStatistics& now) { return now.exchangesStalled == 1; }, deadline);
            backEnd->releaseStalled();
        });
        const CurlResult result = get("/big");
        release.join();
        EXPECT_EQ(result.code, CURLE_OK);
        EXPECT_EQ(result.body, generatedBytes(0, bodySize));
        const auto isReleased = [](const BackEndStatistics& now) { return now.exchangesStalled == 0; };
        EXPECT_TRUE(isReleased(backEnd->waitUntil(isReleased, deadline)));
    }
    EXPECT_EQ(backEnd->statistics().connectionsAccepted, 1U);
}

TEST_P(LocalBackEndFault, StallsUntilTheClientGivesUp) {
    for (const FaultPoint point :
         {FaultPoint::requestStart, FaultPoint::requestBody, FaultPoint::responseStart, FaultPoint::responseBody}) {
        backEnd->inject(Fault::stall(point));
        EXPECT_EQ(giveUpOn(requestFor("/big")), CURLE_OPERATION_TIMEDOUT);
        const auto isIdle = [](const BackEndStatistics& now) { return now.exchangesInProgress == 0; };
        EXPECT_TRUE(isIdle(backEnd->waitUntil(isIdle, deadline)));
    }
}

TEST_P(LocalBackEndFault, StallsAnUploadWhoseBytesNobodyTakes) {
    constexpr std::size_t size = 30'000'000;
    backEnd->inject(Fault::stall(FaultPoint::requestBody));
    EXPECT_EQ(giveUpOn(postOf(size)), CURLE_OPERATION_TIMEDOUT);
    backEnd->releaseStalled();
    const auto requests = backEnd->waitForRequests(1, deadline);
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].received, ReceivedPart::partOfBody);
    EXPECT_LT(requests[0].body.size(), size);
}

TEST_P(LocalBackEndFault, DripsTheBodyOfAResponse) {
    backEnd->inject(Fault::slowDrip(FaultPoint::responseBody, 10, milliseconds(20)).after(900));
    const CurlResult result = get("/big");
    EXPECT_EQ(result.body, generatedBytes(0, bodySize));
    ASSERT_GE(result.arrivals.size(), 10U);
    EXPECT_GE(result.arrivals.back() - result.arrivals.front(), milliseconds(150));
}

TEST_P(LocalBackEndFault, DripsAWholeResponse) {
    backEnd->inject(Fault::slowDrip(FaultPoint::responseStart, 100, milliseconds(10)));
    const CurlResult result = get("/big");
    EXPECT_EQ(result.body, generatedBytes(0, bodySize));
    EXPECT_GE(result.arrivals.size(), 10U);
}

TEST_P(LocalBackEndFault, TakesTheBodyOfARequestSlowly) {
    backEnd->inject(Fault::slowDrip(FaultPoint::requestStart, 1000, milliseconds(20)));
    const auto started = std::chrono::steady_clock::now();
    const CurlRequest request = postOf(5000);
    EXPECT_EQ(client->perform(request).body, request.body);
    EXPECT_GE(std::chrono::steady_clock::now() - started, milliseconds(80));
}

TEST_P(LocalBackEndFault, AnnouncesMoreThanItSends) {
    backEnd->inject(Fault::wrongLength(5));
    EXPECT_EQ(get("/hello").code, isHttp2() ? CURLE_HTTP2_STREAM : CURLE_PARTIAL_FILE);
}

TEST_P(LocalBackEndFault, AnnouncesLessThanItSends) {
    backEnd->inject(Fault::wrongLength(-5));
    const CurlResult result = get("/hello");
    EXPECT_EQ(result.code, isHttp2() ? CURLE_HTTP2_STREAM : CURLE_OK);
    EXPECT_EQ(result.body, isHttp2() ? "" : "Hello, ");
}

TEST_P(LocalBackEndFault, StrikesTheExchangeThatTheSelectorCountsTo) {
    backEnd->inject(Fault::close(FaultPoint::responseBody), FaultSelector::nth(3));
    EXPECT_EQ(get("/big").code, CURLE_OK);
    EXPECT_EQ(get("/big").code, CURLE_OK);
    EXPECT_EQ(get("/big").code, CURLE_PARTIAL_FILE);
    EXPECT_EQ(get("/big").code, CURLE_OK);
}

TEST_P(LocalBackEndFault, StrikesOnlyExchangesThatFulfilTheCondition) {
    backEnd->inject(
        Fault::close(FaultPoint::responseBody),
        FaultSelector::every().where([](const ReceivedRequest& request) { return request.path() == "/big"; }));
    EXPECT_EQ(get("/hello").code, CURLE_OK);
    EXPECT_EQ(get("/big").code, CURLE_PARTIAL_FILE);
    EXPECT_EQ(get("/hello").code, CURLE_OK);
    EXPECT_EQ(get("/big").code, CURLE_PARTIAL_FILE);
}

TEST_P(LocalBackEndFault, IsForgottenWhenFaultsAreCleared) {
    backEnd->inject(Fault::close(FaultPoint::responseBody), FaultSelector::every());
    EXPECT_EQ(get("/big").code, CURLE_PARTIAL_FILE);
    backEnd->clearFaults();
    EXPECT_EQ(get("/big").code, CURLE_OK);
}

using LocalBackEndStreamFault = BackEndFixture;

TEST_F(LocalBackEndStreamFault, StrikesNoOtherStreamOfTheConnection) {
    backEnd->on("GET", "/big", [](const ReceivedRequest&) { return ScriptedResponse::generated(bodySize); });
    backEnd->inject(Fault::reset(FaultPoint::responseBody), FaultSelector::nth(3));
    const auto results =
        client->performTogether(std::vector<CurlRequest>(8, requestFor("/big", CURL_HTTP_VERSION_2TLS)));
    EXPECT_EQ(std::ranges::count(results, CURLE_OK, &CurlResult::code), 7);
    EXPECT_EQ(std::ranges::count(results, CURLE_HTTP2_STREAM, &CurlResult::code), 1);
    EXPECT_EQ(backEnd->statistics().connectionsAccepted, 1U);
}

} // namespace tovrel::testing
