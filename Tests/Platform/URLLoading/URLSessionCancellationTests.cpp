#include <Platform/URLLoading/SessionFixture.hpp>

#include <boost/asio/io_context.hpp>

#include <thread>

namespace tovrel::testing {
namespace {

using URLSessionCancellation = SessionOverBothVersions;
TOVREL_OVER_BOTH_VERSIONS(URLSessionCancellation);

TEST_P(URLSessionCancellation, EndsARequestAtAnyPointOfItsExchange) {
    backEnd->on("POST", "/body", [](const ReceivedRequest&) { return ScriptedResponse::generated(1'000'000); });
    for (const FaultPoint point : {FaultPoint::handshake, FaultPoint::requestStart, FaultPoint::requestBody,
                                   FaultPoint::responseStart, FaultPoint::responseBody}) {
        restart(configuration());
        backEnd->inject(Fault::stall(point));
        Loading loading = begin(upload("/body", generatedBytes(0, 500'000)));
        ASSERT_TRUE(waitForStall()) << static_cast<int>(point);
        EXPECT_FALSE(loading.hasEnded());
        loading.cancel();
        EXPECT_EQ(loading.value().error, URLError::cancelled()) << static_cast<int>(point);
        backEnd->clearFaults();
        backEnd->releaseStalled();
    }
}

TEST_P(URLSessionCancellation, EndsARequestInTheQueue) {
    backEnd->inject(Fault::stall(FaultPoint::handshake));
    URLSessionConfiguration narrow = configuration();
    narrow.maximumConnectionsPerHost = 1;
    restart(narrow);
    Loading first = begin(requestFor("/hello"));
    ASSERT_TRUE(waitForStall());
    Loading second = begin(requestFor("/hello"));
    second.cancel();
    EXPECT_EQ(second.value().error, URLError::cancelled());
    backEnd->releaseStalled();
    EXPECT_EQ(first.value().body, "Hello");
    EXPECT_EQ(backEnd->requests().size(), 1U);
}

TEST_P(URLSessionCancellation, EndsARequestBehindARedirect) {
    backEnd->on("GET", "/a", [](const ReceivedRequest&) { return ScriptedResponse::redirect("/hello"); });
    backEnd->inject(Fault::stall(FaultPoint::responseStart), FaultSelector::nth(2));
    Loading loading = begin(requestFor("/a"));
    ASSERT_TRUE(waitForStall());
    loading.cancel();
    EXPECT_EQ(loading.value().error, URLError::cancelled());
}

TEST_P(URLSessionCancellation, LeavesOtherRequestsOfTheSessionAlone) {
    backEnd->inject(Fault::stall(FaultPoint::responseStart), FaultSelector::every());
    Loading first = begin(requestFor("/hello"));
    Loading second = begin(requestFor("/hello"));
    ASSERT_TRUE(waitFor([](const BackEndStatistics& now) { return now.exchangesStalled == 2; }));
    first.cancel();
    EXPECT_EQ(first.value().error, URLError::cancelled());
    EXPECT_FALSE(second.hasEnded());
    backEnd->releaseStalled();
    EXPECT_EQ(second.value().body, "Hello");
}

TEST_P(URLSessionCancellation, BeforeTheStartKeepsARequestOffTheNetwork) {
    auto operation = session->data(requestFor("/hello"));
    auto task = Task::spawn(
        TaskPool::compute(),
        detail::keepResult(std::move(operation), std::make_shared<std::optional<URLSessionResult>>()), true);
    std::promise<void> ended;
    task->notify([&ended] { ended.set_value(); });
    ASSERT_EQ(ended.get_future().wait_for(deadline), std::future_status::ready);
    try {
        std::rethrow_exception(task->error());
    } catch (const URLError& error) {
        EXPECT_EQ(error, URLError::cancelled());
    }
    EXPECT_EQ(backEnd->statistics().connectionsAccepted, 0U);
}

TEST_P(URLSessionCancellation, AfterTheEndDoesNothing) {
    Loading loading = begin(requestFor("/hello"));
    ASSERT_TRUE(loading.hasEnded(deadline));
    loading.cancel();
    EXPECT_EQ(loading.value().body, "Hello");
    EXPECT_EQ(load("/hello").body, "Hello");
}

TEST_P(URLSessionCancellation, ComesWithTheEndOfTheExecutorsContext) {
    backEnd->inject(Fault::stall(FaultPoint::responseStart));
    auto context = std::make_unique<boost::asio::io_context>();
    auto work = boost::asio::make_work_guard(*context);
    std::thread thread([&context] { context->run(); });
    URLSessionConfiguration own = configuration();
    own.executor = context->get_executor();
    restart(own);
    Loading loading = begin(requestFor("/hello"));
    ASSERT_TRUE(waitForStall());
    session.reset();
    context->stop();
    thread.join();
    EXPECT_FALSE(loading.hasEnded());
    work.reset();
    context.reset();
    EXPECT_EQ(loading.value().error, URLError::cancelled());
}

} // namespace
} // namespace tovrel::testing
