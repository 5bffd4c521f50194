#include <Platform/URLLoading/SessionFixture.hpp>

#include <set>

namespace tovrel::testing {
namespace {

class URLSessionConnections : public SessionFixture {
protected:
    std::set<std::uint64_t> connections() const {
        std::set<std::uint64_t> numbers;
        for (const ReceivedRequest& request : backEnd->requests()) {
            numbers.insert(request.connection);
        }
        return numbers;
    }

    void loadMany(int count) const {
        std::vector<Loading> loadings;
        for (int i = 0; i < count; ++i) {
            loadings.push_back(begin(requestFor("/hello")));
        }
        for (Loading& loading : loadings) {
            EXPECT_EQ(loading.value().body, "Hello");
        }
    }
};

TEST_F(URLSessionConnections, AreUsedAgain) {
    startHTTP1();
    for (int i = 0; i < 5; ++i) {
        ASSERT_FALSE(load("/hello").error);
    }
    EXPECT_EQ(connections().size(), 1U);
}

TEST_F(URLSessionConnections, AreUsedAgainAfterACancellationElsewhereInTheSession) {
    start();
    ASSERT_FALSE(load("/hello").error);
    backEnd->inject(Fault::stall(FaultPoint::responseStart));
    Loading loading = begin(requestFor("/hello"));
    ASSERT_TRUE(waitForStall());
    loading.cancel();
    EXPECT_EQ(loading.value().error, URLError::cancelled());
    ASSERT_FALSE(load("/hello").error);
    EXPECT_EQ(connections().size(), 1U);
}

TEST_F(URLSessionConnections, AreNotMoreThanTheConfigurationSays) {
    startHTTP1();
    URLSessionConfiguration narrow = configuration();
    narrow.maximumConnectionsPerHost = 2;
    restart(narrow);
    loadMany(20);
    EXPECT_LE(backEnd->statistics().connectionsAccepted, 2U);
}

TEST_F(URLSessionConnections, AreSharedByManyRequestsOverHTTP2) {
    start();
    loadMany(60);
    EXPECT_EQ(backEnd->statistics().connectionsAccepted, 1U);
}

TEST_F(URLSessionConnections, ResumeTheTLSSessionOfAnEarlierOne) {
    startHTTP1();
    ASSERT_FALSE(load("/hello").error);
    backEnd->closeConnections();
    ASSERT_TRUE(waitFor([](const BackEndStatistics& now) { return now.connectionsOpen == 0; }));
    ASSERT_FALSE(load("/hello").error);
    EXPECT_EQ(backEnd->statistics().handshakesResumed, 1U);
}

TEST_F(URLSessionConnections, ThatDiedMeanwhileAreReplacedForAnyMethod) {
    startHTTP1();
    for (const char* method : {"GET", "POST"}) {
        ASSERT_FALSE(load("/hello").error);
        backEnd->closeConnections();
        ASSERT_TRUE(waitFor([](const BackEndStatistics& now) { return now.connectionsOpen == 0; }));
        EXPECT_EQ(load(requestFor("/hello", method)).body, "Hello") << method;
    }
}

TEST_F(URLSessionConnections, ThatDieUnderAnIdempotentRequestAreReplaced) {
    startHTTP1();
    const std::string body = generatedBytes(0, 300'000);
    for (const char* method : {"GET", "HEAD", "PUT", "DELETE"}) {
        ASSERT_FALSE(load("/hello").error);
        backEnd->clearRequests();
        backEnd->inject(Fault::close(FaultPoint::responseStart));
        URLRequest request = requestFor("/echo", method);
        if (method == std::string("PUT")) {
            request.body = Data(body);
        }
        const Loaded result = load(request);
        ASSERT_FALSE(result.error) << method << result.error->what();
        EXPECT_EQ(result.status, 200);
        EXPECT_TRUE(result.body == (request.body ? body : ""));
        EXPECT_EQ(connections().size(), 2U) << method;
    }
}

TEST_F(URLSessionConnections, ThatDieUnderAPostAreReportedAndNothingIsRepeated) {
    startHTTP1();
    for (const std::size_t size : {std::size_t(0), std::size_t(10), std::size_t(300'000)}) {
        ASSERT_FALSE(load("/hello").error);
        backEnd->clearRequests();
        backEnd->inject(Fault::close(FaultPoint::responseStart));
        EXPECT_EQ(failure(upload("/echo", generatedBytes(0, size))), URLError::Kind::networkConnectionLost);
        EXPECT_EQ(backEnd->requests().size(), 1U);
    }
}

TEST_F(URLSessionConnections, ThatAreNewAndDieAreReportedForAnyMethod) {
    startHTTP1();
    backEnd->inject(Fault::close(FaultPoint::responseStart));
    EXPECT_EQ(failure("/hello"), URLError::Kind::networkConnectionLost);
    EXPECT_EQ(backEnd->requests().size(), 1U);
}

TEST_F(URLSessionConnections, OutliveTheSessionWhileARequestIsUnderWay) {
    start();
    backEnd->inject(Fault::stall(FaultPoint::responseStart));
    Loading loading = begin(requestFor("/hello"));
    ASSERT_TRUE(waitForStall());
    const std::weak_ptr<URLSession> released = session;
    session.reset();
    EXPECT_TRUE(released.expired());
    EXPECT_FALSE(loading.hasEnded());
    backEnd->releaseStalled();
    EXPECT_EQ(loading.value().body, "Hello");
    EXPECT_TRUE(waitFor([](const BackEndStatistics& now) { return now.connectionsOpen == 0; }));
}

} // namespace
} // namespace tovrel::testing
