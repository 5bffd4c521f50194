#include <Platform/Concurrency/CancellationError.hpp>
#include <Platform/URLLoading/URLError.hpp>
#include <TovrelTesting/FakeWebRequestExecutor.hpp>
#include <TovrelTesting/ManualClock.hpp>
#include <TovrelWebServices/Services/DefaultHttpWebService.hpp>
#include <TovrelWebServices/Services/TimesRetryLogicStrategy.hpp>
#include <TovrelWebServices/Transport/WebRequest.hpp>

#include <gmock/gmock.h>

#include <Support/WebServiceErrors.hpp>

namespace tovrel::tests {

using namespace std::chrono_literals;
using testing::FakeWebRequestExecutor;
using testing::ManualClock;

namespace {

struct Item {
    std::string title;
    Date createdAt;

    Item() = default;

    static constexpr auto fields() {
        return std::tuple{Field<&Item::title, "title">{}, Field<&Item::createdAt, "createdAt">{}};
    }
};

struct Loose {
    std::optional<std::string> title;

    Loose() = default;

    static constexpr auto fields() { return std::tuple{Field<&Loose::title, "title">{}}; }
};

std::shared_ptr<WebRequest<RequestType::HTTP>> request() {
    return WebRequest<RequestType::HTTP>::build(TovrelEnvironment::test, "h", "x");
}

WebResponse reply(std::string_view body, std::int64_t status = 200) {
    return WebResponse(Data(body), HTTPHeaders{HTTPHeader("X", "y")}, status);
}

WebResponse replyWithoutBody() {
    return WebResponse(std::nullopt, HTTPHeaders(), 200);
}

class HttpWebServiceTest : public AsyncTest {
protected:
    std::shared_ptr<FakeWebRequestExecutor> executor_ = FakeWebRequestExecutor::make();
    std::shared_ptr<HttpWebService> service_ = DefaultHttpWebService::make(executor_);
};

} // namespace

TEST_F(HttpWebServiceTest, ReturnsAResponseOfAnyStatusAsItIs) {
    for (const std::int64_t status : {200, 204, 301, 404, 500}) {
        executor_->answer(reply("body", status));
        const WebResponse response = getInTime(service_->execute(request()));
        EXPECT_EQ(response.statusCode, status);
        EXPECT_EQ(response.data, Data("body"));
        EXPECT_TRUE(response.headers.contains("x"));
    }
}

TEST_F(HttpWebServiceTest, ReturnsAResponseWithoutABodyAsItIs) {
    executor_->answer(replyWithoutBody());
    EXPECT_FALSE(getInTime(service_->execute(request())).data);
}

TEST_F(HttpWebServiceTest, FailsOnceAndAtOnceWithoutABudget) {
    executor_->fail(URLError::cannotConnectToHost());
    EXPECT_THROW(getInTime(service_->execute(request())), URLError);
    EXPECT_EQ(executor_->requestCount(), 1U);
}

TEST_F(HttpWebServiceTest, SendsAgainWhileTheStrategyAllowsAndReportsTheLastFailure) {
    executor_->fail(WebServiceError::notConnectedToInternet());
    executor_->fail(URLError::cannotFindHost());
    executor_->fail(WebServiceError::timedOut());
    int retries = 0;
    const auto sent =
        request()->setRetryStrategy(TimesRetryLogicStrategy::make(2, 0))->setWillRetryObserver([&retries] {
            ++retries;
        });
    EXPECT_EQ(webServiceErrorOf(service_->execute(sent)), WebServiceError::timedOut());
    EXPECT_EQ(executor_->requestCount(), 3U);
    EXPECT_EQ(retries, 2);
}

TEST_F(HttpWebServiceTest, ReturnsTheAnswerToARetry) {
    executor_->fail(WebServiceError::timedOut());
    executor_->answer(reply("second"));
    const auto sent = request()->setRetryStrategy(TimesRetryLogicStrategy::make(2, 0));
    EXPECT_EQ(getInTime(service_->execute(sent)).data, Data("second"));
    EXPECT_EQ(executor_->requests().front(), executor_->requests().back());
}

TEST_F(HttpWebServiceTest, CallsTheObserverBeforeEachSendingAgainAndNeverAfterTheLastFailure) {
    std::vector<std::string> order;
    executor_->answerAll([&order](const WebRequestable&) -> WebResponse {
        order.emplace_back("sent");
        throw WebServiceError::timedOut();
    });
    const auto sent = request()->setRetryStrategy(TimesRetryLogicStrategy::make(2, 0))->setWillRetryObserver([&order] {
        order.emplace_back("observed");
    });
    EXPECT_TRUE(webServiceErrorOf(service_->execute(sent)));
    EXPECT_THAT(order, ::testing::ElementsAre("sent", "observed", "sent", "observed", "sent"));
}

TEST_F(HttpWebServiceTest, ReportsACancelledBackOffInPlaceOfTheFailure) {
    executor_->fail(WebServiceError::timedOut());
    auto clock = ManualClock::make();
    std::promise<std::exception_ptr> error;
    const TaskHandle task =
        start<WebResponse>(service_->execute(request()->setRetryStrategy(TimesRetryLogicStrategy::make(2, 10, clock))),
                           [&](Outcome<WebResponse> outcome) { error.set_value(outcome.error()); });
    ASSERT_TRUE(clock->waitForSleepers(1));
    task.cancel();
    EXPECT_THROW(std::rethrow_exception(error.get_future().get()), CancellationError);
    EXPECT_EQ(executor_->requestCount(), 1U);
}

TEST_F(HttpWebServiceTest, ReportsACancelledTransferAsItIsWithoutABudget) {
    executor_->fail(URLError::cancelled());
    try {
        getInTime(service_->execute(request()));
        FAIL() << "no error";
    } catch (const URLError& error) {
        EXPECT_EQ(error, URLError::cancelled());
    }
}

TEST_F(HttpWebServiceTest, DecodesTheBodyAndKeepsTheRest) {
    executor_->answer(reply(R"({"title":"a","createdAt":60})", 201));
    const auto response = getInTime(service_->execute<Item>(request()));
    EXPECT_EQ(response.responseObject.title, "a");
    EXPECT_EQ(response.responseObject.createdAt, Date(60));
    EXPECT_EQ(response.statusCode, 201);
    EXPECT_EQ(response.rawData, Data(R"({"title":"a","createdAt":60})"));
    EXPECT_TRUE(response.headers.contains("X"));
}

TEST_F(HttpWebServiceTest, DecodesARequestOfAnyKindWithTheGeneralDefault) {
    executor_->answer(reply(R"({"title":"a","created_at":60000})"));
    const auto api = WebRequest<RequestType::API>::build(TovrelEnvironment::test, "x");
    EXPECT_THROW(getInTime(service_->execute<Item>(api)), DecodingError);
    executor_->answer(reply(R"({"title":"a","createdAt":60})"));
    EXPECT_EQ(getInTime(service_->execute<Item>(api)).responseObject.createdAt, Date(60));
}

TEST_F(HttpWebServiceTest, DecodesWithTheCustomStrategyOfTheRequest) {
    executor_->answer(reply(R"({"title":"a","created_at":978307260000})"));
    const auto sent = request()->setDecodingStrategy(DecodingStrategy::snakeCaseAndMilliseconds());
    EXPECT_EQ(getInTime(service_->execute<Item>(sent)).responseObject.createdAt, Date(60));
}

TEST_F(HttpWebServiceTest, SucceedsWhateverTheStatusWhenTheBodyDecodes) {
    for (const std::int64_t status : {200, 404, 500}) {
        executor_->answer(reply("{}", status));
        EXPECT_EQ(getInTime(service_->execute<Loose>(request())).statusCode, status);
    }
}

TEST_F(HttpWebServiceTest, ReportsABodyThatDoesNotDecodeAtOnceAndSpendsNoRetry) {
    const auto strategy = TimesRetryLogicStrategy::make(3, 0);
    for (const std::string_view body : {"<html>", "", "[]", "{\"title\":"}) {
        executor_->answer(reply(body, 500));
        EXPECT_THROW(getInTime(service_->execute<Item>(request()->setRetryStrategy(strategy))), DecodingError) << body;
    }
    EXPECT_EQ(strategy->currentRetries(), 0);
    EXPECT_EQ(executor_->requestCount(), 4U);
}

TEST_F(HttpWebServiceTest, RetriesAResponseWithoutABodyThenReportsItAsInvalid) {
    executor_->answer(replyWithoutBody());
    executor_->answer(replyWithoutBody());
    const auto sent = request()->setRetryStrategy(TimesRetryLogicStrategy::make(1, 0));
    EXPECT_EQ(webServiceErrorOf(service_->execute<Loose>(sent)), WebServiceError::invalidServerResponse());
    EXPECT_EQ(executor_->requestCount(), 2U);
}

TEST_F(HttpWebServiceTest, DecodesTheAnswerToARetry) {
    executor_->answer(replyWithoutBody());
    executor_->fail(WebServiceError::timedOut());
    executor_->answer(reply(R"({"title":"third"})"));
    const auto sent = request()->setRetryStrategy(TimesRetryLogicStrategy::make(2, 0));
    EXPECT_EQ(getInTime(service_->execute<Loose>(sent)).responseObject.title, "third");
}

TEST_F(HttpWebServiceTest, PassesForeignErrorsOfAHostsExecutorThrough) {
    executor_->fail(std::out_of_range("foreign"));
    EXPECT_THROW(getInTime(service_->execute<Loose>(request())), std::out_of_range);
}

} // namespace tovrel::tests
