#include <TovrelTesting/BackEnd/BackEndFixture.hpp>

#include <thread>

namespace tovrel::testing {

class LocalBackEndRequest : public BackEndOverBothVersions {};

INSTANTIATE_TEST_SUITE_P(, LocalBackEndRequest, bothVersions, versionName);

TEST_P(LocalBackEndRequest, KeepsEveryHeaderLineInItsOrder) {
    CurlRequest request = requestFor("/hello");
    request.headers = {"X-First: 1", "x-FIRST: two", "X-Empty;", "Accept: a, b"};
    client->perform(request);
    const auto requests = backEnd->requests();
    ASSERT_EQ(requests.size(), 1U);
    HeaderList expected = {{"X-First", "1"}, {"x-FIRST", "two"}, {"X-Empty", ""}, {"Accept", "a, b"}};
    if (isHttp2()) {
        expected = {{"x-first", "1"}, {"x-first", "two"}, {"x-empty", ""}, {"accept", "a, b"}};
    }
    HeaderList received = requests[0].headers;
    std::erase_if(received, [](const HeaderLine& line) { return isSameHeaderName(line.name, "Host"); });
    EXPECT_EQ(received, expected);
}

TEST_P(LocalBackEndRequest, KeepsMethodTargetAndHostAsSent) {
    CurlRequest request = requestFor("/echo/a%2Fb?x=1&y=%20");
    request.method = "DELETE";
    client->perform(request);
    const auto requests = backEnd->requests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].method, "DELETE");
    EXPECT_EQ(requests[0].target, "/echo/a%2Fb?x=1&y=%20");
    EXPECT_EQ(requests[0].host, "localhost:" + std::to_string(backEnd->port()));
    EXPECT_EQ(requests[0].scheme, Scheme::https);
}

TEST_P(LocalBackEndRequest, ReceivesABodyByteForByte) {
    CurlRequest request = requestFor("/echo");
    request.method = "POST";
    request.body = generatedBytes(0, 300'000);
    EXPECT_TRUE(client->perform(request).body == request.body);
    ASSERT_EQ(backEnd->requests().size(), 1U);
    EXPECT_TRUE(backEnd->requests()[0].body == request.body);
    EXPECT_EQ(backEnd->requests()[0].received, ReceivedPart::everything);
}

TEST_P(LocalBackEndRequest, ShowsByItsConnectionWhetherOneWasReused) {
    get("/hello");
    get("/hello");
    CurlRequest request = requestFor("/hello");
    request.isOnFreshConnection = true;
    client->perform(request);
    const auto requests = backEnd->requests();
    ASSERT_EQ(requests.size(), 3U);
    EXPECT_EQ(requests[0].connection, requests[1].connection);
    EXPECT_NE(requests[0].connection, requests[2].connection);
    EXPECT_LE(requests[0].time, requests[1].time);
}

TEST_P(LocalBackEndRequest, IsCountedButNotKeptWhereRecordingIsOff) {
    LocalBackEndOptions options;
    options.recording = RequestRecording::off;
    startWith(options);
    EXPECT_EQ(get("/hello").body, "Hello, world");
    EXPECT_TRUE(backEnd->requests().empty());
    EXPECT_EQ(backEnd->statistics().requestsReceived, 1U);
}

TEST_P(LocalBackEndRequest, IsForgottenOnDemand) {
    get("/hello");
    backEnd->clearRequests();
    get("/hello");
    EXPECT_EQ(backEnd->requests().size(), 1U);
}

TEST_P(LocalBackEndRequest, CanBeWaitedFor) {
    EXPECT_TRUE(backEnd->waitForRequests(1, std::chrono::milliseconds(1)).empty());
    std::thread sender([this] { get("/hello"); });
    EXPECT_EQ(backEnd->waitForRequests(1, deadline).size(), 1U);
    sender.join();
}

} // namespace tovrel::testing
