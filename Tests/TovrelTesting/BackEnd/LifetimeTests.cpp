#include <TovrelTesting/BackEnd/BackEndFixture.hpp>

#include <future>

namespace tovrel::testing {

class LocalBackEndLifetime : public BackEndOverBothVersions {
protected:
    void TearDown() override {}
};

INSTANTIATE_TEST_SUITE_P(, LocalBackEndLifetime, bothVersions, versionName);

TEST_P(LocalBackEndLifetime, EndsAtOnceWhateverIsGoingOn) {
    backEnd->on("GET", "/late",
                [](const ReceivedRequest&) { return ScriptedResponse::text("late").withDelay(std::chrono::hours(1)); });
    backEnd->on("GET", "/slow", [](const ReceivedRequest&) { return ScriptedResponse::generated(1'000'000); });
    const auto onlySlow = [](const ReceivedRequest& request) { return request.path() == "/slow"; };
    backEnd->inject(Fault::slowDrip(FaultPoint::responseStart, 1, std::chrono::seconds(1)),
                    FaultSelector::next().where(onlySlow));
    backEnd->inject(
        Fault::stall(FaultPoint::responseBody),
        FaultSelector::next().where([](const ReceivedRequest& request) { return request.path() == "/hello"; }));
    auto transfers = std::async(std::launch::async, [this] {
        return client->performTogether({requestFor("/late"), requestFor("/slow"), requestFor("/hello")});
    });
    backEnd->waitUntil(
        [](const BackEndStatistics& now) { return now.exchangesInProgress == 3 && now.exchangesStalled == 1; },
        deadline);

    const auto started = std::chrono::steady_clock::now();
    backEnd.reset();

    EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(2));
    for (const CurlResult& result : transfers.get()) {
        EXPECT_NE(result.code, CURLE_OK);
        EXPECT_NE(result.code, CURLE_OPERATION_TIMEDOUT);
    }
}

TEST_P(LocalBackEndLifetime, EndsDuringAStalledHandshake) {
    backEnd->inject(Fault::stall(FaultPoint::handshake));
    auto transfer = std::async(std::launch::async, [this] { return get("/hello"); });
    backEnd->waitUntil([](const BackEndStatistics& now) { return now.exchangesStalled == 1; }, deadline);
    const auto started = std::chrono::steady_clock::now();
    backEnd.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(2));
    EXPECT_EQ(transfer.get().code, CURLE_SSL_CONNECT_ERROR);
}

TEST_P(LocalBackEndLifetime, ClosesItsConnectionsOnDemandAndAcceptsNewOnes) {
    EXPECT_EQ(get("/hello").newConnections, 1);
    backEnd->closeConnections();
    const auto isClosed = [](const BackEndStatistics& now) { return now.connectionsOpen == 0; };
    EXPECT_TRUE(isClosed(backEnd->waitUntil(isClosed, deadline)));
    const CurlResult next = get("/hello");
    EXPECT_EQ(next.body, "Hello, world");
    EXPECT_EQ(next.newConnections, 1);
}

TEST_P(LocalBackEndLifetime, StartsAndEndsUnused) {
    for (int i = 0; i < 20; ++i) {
        const auto unused = LocalBackEnd::start();
        EXPECT_NE(unused->port(), 0);
        EXPECT_EQ(unused->plainPort(), 0);
    }
}

TEST(LocalBackEndDeathTest, StopsTheProcessWhenAHandlerDestroysItsOwnBackEnd) {
    ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_DEATH(
        {
            auto backEnd = LocalBackEnd::start();
            backEnd->on("GET", "/", [&](const ReceivedRequest&) {
                backEnd.reset();
                return ScriptedResponse();
            });
            CurlClient client(*backEnd);
            client.perform(CurlRequest(backEnd->url("/")));
        },
        "must not be destroyed by its own handlers");
}

} // namespace tovrel::testing
