#include <TovrelTesting/BackEnd/BackEndFixture.hpp>

#include <thread>

namespace tovrel::testing {

using LocalBackEndHandshakeFault = BackEndFixture;

TEST_F(LocalBackEndHandshakeFault, EndsOneConnectionBeforeItIsSecure) {
    for (const Fault& fault : {Fault::close(FaultPoint::handshake), Fault::reset(FaultPoint::handshake),
                               Fault::garbage(FaultPoint::handshake), Fault::badTLS(FaultPoint::handshake)}) {
        backEnd->inject(fault);
        CurlRequest request = requestFor("/hello");
        request.isOnFreshConnection = true;
        EXPECT_EQ(client->perform(request).code, CURLE_SSL_CONNECT_ERROR);
        EXPECT_EQ(client->perform(request).body, "Hello, world");
    }
    EXPECT_EQ(backEnd->statistics().handshakesFailed, 4U);
    EXPECT_EQ(backEnd->statistics().handshakesCompleted, 4U);
}

TEST_F(LocalBackEndHandshakeFault, StallsUntilTheClientGivesUp) {
    backEnd->inject(Fault::stall(FaultPoint::handshake));
    CurlRequest request = requestFor("/hello");
    request.timeout = std::chrono::milliseconds(300);
    EXPECT_EQ(client->perform(request).code, CURLE_OPERATION_TIMEDOUT);
    const auto isClosed = [](const BackEndStatistics& now) { return now.connectionsOpen == 0; };
    EXPECT_TRUE(isClosed(backEnd->waitUntil(isClosed, deadline)));
}

TEST_F(LocalBackEndHandshakeFault, StallsUntilReleasedAndThenGoesOn) {
    backEnd->inject(Fault::stall(FaultPoint::handshake));
    std::thread release([this] {
        backEnd->waitUntil([](const BackEndStatistics& now) { return now.exchangesStalled == 1; }, deadline);
        backEnd->releaseStalled();
    });
    EXPECT_EQ(get("/hello").body, "Hello, world");
    release.join();
}

TEST_F(LocalBackEndHandshakeFault, StrikesTheConnectionThatTheSelectorCountsTo) {
    backEnd->inject(Fault::close(FaultPoint::handshake), FaultSelector::nth(2));
    CurlRequest request = requestFor("/hello");
    request.isOnFreshConnection = true;
    EXPECT_EQ(client->perform(request).code, CURLE_OK);
    EXPECT_EQ(client->perform(request).code, CURLE_SSL_CONNECT_ERROR);
    EXPECT_EQ(client->perform(request).code, CURLE_OK);
}

} // namespace tovrel::testing
