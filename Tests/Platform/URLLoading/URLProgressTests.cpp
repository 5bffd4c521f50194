#include <Platform/Concurrency/Hop.hpp>
#include <Platform/Concurrency/MainActor.hpp>
#include <Platform/Concurrency/TaskPool.hpp>
#include <Platform/URLLoading/CacheFixture.hpp>
#include <Platform/URLLoading/URLProgressObserver.hpp>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <future>
#include <memory>
#include <mutex>
#include <vector>

namespace tovrel::testing {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::uint64_t large = 20'000'000;

/// Keeps what an observer is told.
class ProgressLog : public std::enable_shared_from_this<ProgressLog> {
public:
    std::shared_ptr<const URLProgressObserver> observer(Executor executor) {
        return URLProgressObserver::make(
            [self = shared_from_this()](const URLProgress& progress) {
                const std::scoped_lock lock(self->mutex_);
                self->reports_.push_back(progress);
                self->reported_.notify_all();
            },
            std::move(executor));
    }

    std::vector<URLProgress> reports() const {
        const std::scoped_lock lock(mutex_);
        return reports_;
    }

    /// Blocks until this is the latest report.
    bool waitFor(const URLProgress& progress) {
        std::unique_lock lock(mutex_);
        return reported_.wait_for(lock, tests::deadline,
                                  [&] { return !reports_.empty() && reports_.back() == progress; });
    }

private:
    mutable std::mutex mutex_;
    std::condition_variable reported_;
    std::vector<URLProgress> reports_;
};

Async<std::optional<URLError::Kind>> outcomeOf(std::shared_ptr<URLSession> session, URLRequest request) {
    try {
        static_cast<void>(co_await session->data(std::move(request)));
    } catch (const URLError& error) {
        co_return error.kind();
    }
    co_return std::nullopt;
}

/// Awaits the request where it is observed, so that all reports are in when it has ended.
std::vector<URLProgress> watched(const std::shared_ptr<URLSession>& session, URLRequest request,
                                 std::optional<URLError::Kind> expected = std::nullopt) {
    const auto log = std::make_shared<ProgressLog>();
    const Executor executor = TaskPool::compute();
    request.progressObserver = log->observer(executor);
    EXPECT_EQ(tests::getInTime(hop(executor, outcomeOf(session, std::move(request)))), expected);
    return log->reports();
}

bool isSorted(const std::vector<URLProgress>& reports) {
    return std::ranges::is_sorted(reports, {}, &URLProgress::receivedBytes);
}

class ProgressOverBothVersions : public SessionOverBothVersions {};

class ProgressOfCached : public CacheFixture {};

} // namespace

TOVREL_OVER_BOTH_VERSIONS(ProgressOverBothVersions);

TEST_P(ProgressOverBothVersions, RunsFromZeroToTheWholeBody) {
    backEnd->on("GET", "/file", [](const ReceivedRequest&) { return ScriptedResponse::generated(large); });
    const auto reports = watched(session, requestFor("/file"));
    ASSERT_GE(reports.size(), 2U);
    EXPECT_TRUE(isSorted(reports));
    EXPECT_TRUE(std::ranges::all_of(reports, [](const URLProgress& report) { return report.expectedBytes == large; }));
    EXPECT_EQ(reports.back(), URLProgress(large, large));
}

TEST_P(ProgressOverBothVersions, IsReportedWhileTheBodyIsOnItsWay) {
    backEnd->on("GET", "/file", [](const ReceivedRequest&) { return ScriptedResponse::generated(1000); });
    backEnd->inject(Fault::stall(FaultPoint::responseBody).after(500));
    const auto log = std::make_shared<ProgressLog>();
    URLRequest request = requestFor("/file");
    request.progressObserver = log->observer(TaskPool::compute());
    Loading loading = begin(request);
    EXPECT_TRUE(log->waitFor(URLProgress(500, 1000)));
    EXPECT_TRUE(waitForStall());
    EXPECT_FALSE(loading.hasEnded());
    backEnd->releaseStalled();
    EXPECT_EQ(loading.value().status, 200);
}

TEST_P(ProgressOverBothVersions, HasNoExpectationWhereTheBodyIsEncoded) {
    const std::string text(100'000, 'a');
    backEnd->on("GET", "/encoded", [text](const ReceivedRequest&) {
        return ScriptedResponse::text(text).withCoding(ContentCoding::gzip);
    });
    const auto reports = watched(session, requestFor("/encoded"));
    ASSERT_FALSE(reports.empty());
    EXPECT_EQ(reports.back(), URLProgress(text.size(), std::nullopt));
}

TEST_P(ProgressOverBothVersions, OfAnEmptyBodyIsComplete) {
    backEnd->on("GET", "/empty", [](const ReceivedRequest&) { return ScriptedResponse::text(""); });
    EXPECT_THAT(watched(session, requestFor("/empty")), ElementsAre(URLProgress(0, 0)));
}

TEST_P(ProgressOverBothVersions, IsThatOfTheLastResponseAfterARedirect) {
    backEnd->on("GET", "/here", [](const ReceivedRequest&) {
        ScriptedResponse response = ScriptedResponse::redirect("/hello");
        response.body = std::string(1000, 'x');
        return response;
    });
    const auto reports = watched(session, requestFor("/here"));
    ASSERT_FALSE(reports.empty());
    EXPECT_EQ(reports.back(), URLProgress(5, 5));
    EXPECT_TRUE(std::ranges::all_of(reports, [](const URLProgress& report) { return report.expectedBytes == 5; }));
}

TEST_P(ProgressOverBothVersions, IsNoneWithoutABody) {
    backEnd->on("GET", "/same", [](const ReceivedRequest&) { return ScriptedResponse(304); });
    EXPECT_THAT(watched(session, requestFor("/hello", "HEAD")), IsEmpty());
    EXPECT_THAT(watched(session, requestFor("/same")), IsEmpty());
}

TEST_P(ProgressOverBothVersions, EndsWhereTheTransferBreaks) {
    backEnd->on("GET", "/file", [](const ReceivedRequest&) { return ScriptedResponse::generated(1000); });
    backEnd->inject(Fault::reset(FaultPoint::responseBody).after(500));
    const auto reports = watched(session, requestFor("/file"), URLError::Kind::networkConnectionLost);
    EXPECT_TRUE(isSorted(reports));
    if (!reports.empty()) {
        EXPECT_LE(reports.back().receivedBytes, 500U);
    }
}

TEST_P(ProgressOverBothVersions, SkipsWhatASlowObserverDoesNotTake) {
    backEnd->on("GET", "/file", [](const ReceivedRequest&) { return ScriptedResponse::generated(large); });
    const Executor executor = TaskPool::blocking();
    auto released = std::make_shared<std::promise<void>>();
    auto count = std::make_shared<std::atomic<int>>(0);
    auto last = std::make_shared<std::promise<URLProgress>>();
    URLRequest request = requestFor("/file");
    request.progressObserver = URLProgressObserver::make(
        [released, count, last](const URLProgress& progress) {
            if (++*count == 1) {
                released->get_future().wait();
            }
            if (progress.fraction() == 1.0) {
                last->set_value(progress);
            }
        },
        executor);
    EXPECT_EQ(load(request).status, 200);
    released->set_value();
    EXPECT_EQ(last->get_future().get(), URLProgress(large, large));
    EXPECT_LE(*count, 2);
}

TEST_F(ProgressOfCached, IsReportedWhileAResponseIsStoredAndOnceWhenItComesFromTheCache) {
    serve("/cached", {{"Cache-Control", "max-age=60"}});
    EXPECT_EQ(watched(session, plain("/cached")).back(), URLProgress(1, 1));
    EXPECT_THAT(watched(session, plain("/cached")), ElementsAre(URLProgress(1, 1)));
    EXPECT_EQ(requestsTo("/cached"), 1U);
}

TEST_F(ProgressOfCached, IsReportedOnceWhenTheOriginConfirmsWhatIsStored) {
    serveTagged("/tagged", "\"1\"", {{"Cache-Control", "no-cache"}});
    EXPECT_EQ(body("/tagged"), "1");
    EXPECT_THAT(watched(session, plain("/tagged")), ElementsAre(URLProgress(1, 1)));
    EXPECT_EQ(requestsTo("/tagged"), 2U);
}

TEST(URLProgress, IsAFractionOfWhatIsExpected) {
    EXPECT_EQ(URLProgress(1, 4).fraction(), 0.25);
    EXPECT_EQ(URLProgress(0, 0).fraction(), 1.0);
    EXPECT_EQ(URLProgress(1, std::nullopt).fraction(), std::nullopt);
}

TEST(URLProgressObserver, IsOnTheMainActorUnlessItIsToldAnother) {
    const auto ignore = [](const URLProgress&) {};
    EXPECT_EQ(URLProgressObserver::make(ignore)->executor(), MainActor::executor());
    const Executor executor = TaskPool::compute();
    EXPECT_EQ(URLProgressObserver::make(ignore, executor)->executor(), executor);
}

TEST(URLProgressObserverDeathTest, StopsTheProcessWithoutACallback) {
    EXPECT_DEATH(URLProgressObserver::make(nullptr), "callback");
}

} // namespace tovrel::testing
