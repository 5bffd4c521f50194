#include <Platform/Concurrency/CancellationError.hpp>
#include <Platform/Concurrency/TaskGroup.hpp>
#include <Platform/URLLoading/URLError.hpp>
#include <TovrelTesting/ManualClock.hpp>
#include <TovrelWebServices/Services/DefaultApiWebService.hpp>
#include <TovrelWebServices/Services/DefaultCdnWebService.hpp>
#include <TovrelWebServices/Services/DomainServiceFixture.hpp>

#include <boost/asio/thread_pool.hpp>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace tovrel::tests {

/// Remembers where it was decoded.
struct Witness {
    bool wasDecodedOnThePool = false;

    Witness() = default;
};

} // namespace tovrel::tests

template <>
struct tovrel::Coding<tovrel::tests::Witness> {
    static tests::Witness decode(Decoder& decoder) {
        (void)decoder.singleValue().decode<std::string>();
        tests::Witness witness;
        witness.wasDecodedOnThePool = TaskPool::isPoolThread();
        return witness;
    }
    static void encode(const tests::Witness&, Encoder&) {}
};

namespace tovrel::tests {

using testing::FakeTovrelAccountsWebService;
using testing::ManualClock;

namespace {

/// An executor whose transfers last until they are cancelled.
class EndlessExecutor final : public WebRequestExecutor {
public:
    [[nodiscard]] Async<WebResponse> data(std::shared_ptr<const WebRequestable>) override { return transfer(started_); }
    [[nodiscard]] Async<void> execute(std::shared_ptr<const WebRequestable>) override { return drop(started_); }

    [[nodiscard]] int transfers() const { return started_->load(); }

private:
    using Count = std::shared_ptr<std::atomic<int>>;

    static Async<WebResponse> transfer(Count started) {
        ++*started;
        try {
            co_await Event::wait(Event::make());
        } catch (const CancellationError&) {
            throw URLError::cancelled();
        }
        co_return WebResponse();
    }

    static Async<void> drop(Count started) { co_await transfer(std::move(started)); }

    Count started_ = std::make_shared<std::atomic<int>>(0);
};

/// A call that has been started.
template <class T>
class Running {
public:
    explicit Running(Async<T> operation)
        : future_(outcome_->get_future()),
          handle_(start<T>(std::move(operation),
                           [outcome = outcome_](Outcome<T> ended) { outcome->set_value(std::move(ended)); })) {}

    void cancel() const { handle_.cancel(); }

    /// How the call ended.
    Outcome<T> outcome() {
        if (future_.wait_for(deadline) != std::future_status::ready) {
            throw std::runtime_error("the call does not end");
        }
        return future_.get();
    }

private:
    std::shared_ptr<std::promise<Outcome<T>>> outcome_ = std::make_shared<std::promise<Outcome<T>>>();
    std::future<Outcome<T>> future_;
    TaskHandle handle_;
};

template <class Condition>
bool becomesTrue(Condition condition) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::yield();
    }
    return true;
}

template <class E, class T>
bool failedWith(Outcome<T> outcome) {
    try {
        (void)outcome.value();
    } catch (const E&) {
        return true;
    }
    return false;
}

class DomainServiceConcurrency : public DomainServiceTest {
protected:
    using Envelope = ApiWebResponseObject<Item>;

    [[nodiscard]] ApiWebService::Request request() const { return service_->buildRequest("x", HttpMethod::get); }

    std::shared_ptr<ApiWebService> service_ = DefaultApiWebService::make(accounts_);
};

std::string envelopeOfText(std::size_t size) {
    return R"({"meta":{"code":"a","message":"b"},"data":")" + std::string(size, 'x') + "\"}";
}

} // namespace

TEST_F(DomainServiceConcurrency, EndsWhenItIsCancelledDuringTheLogin) {
    accounts_->hold();
    Running<Envelope> call(service_->executeEnvelope<Item>(request()));
    ASSERT_TRUE(becomesTrue([this] { return logins() == 1; }));
    call.cancel();
    EXPECT_TRUE(failedWith<CancellationError>(call.outcome()));
    EXPECT_EQ(executor_->requestCount(), 0U);
}

TEST_F(DomainServiceConcurrency, EndsWhenItIsCancelledDuringTheTransfer) {
    const auto endless = std::make_shared<EndlessExecutor>();
    const auto accounts = FakeTovrelAccountsWebService::make(endless);
    Running<Envelope> api(DefaultApiWebService::make(accounts)->executeEnvelope<Item>(request()));
    const auto cdnService = DefaultCdnWebService::make(accounts);
    Running<WebResponse> cdn(cdnService->execute(cdnService->buildRequest("x", HttpMethod::get)));
    ASSERT_TRUE(becomesTrue([&] { return endless->transfers() == 2; }));
    api.cancel();
    cdn.cancel();
    EXPECT_TRUE(failedWith<URLError>(api.outcome()));
    EXPECT_TRUE(failedWith<URLError>(cdn.outcome()));
    EXPECT_EQ(accounts->callCount(Call::logout), 0U);
}

TEST_F(DomainServiceConcurrency, DoesNotSendAgainWhenItIsCancelledDuringTheTransferWithRetriesLeft) {
    const auto endless = std::make_shared<EndlessExecutor>();
    const auto service = DefaultApiWebService::make(FakeTovrelAccountsWebService::make(endless));
    std::atomic<int> observed{0};
    const auto sent =
        request()->setRetryStrategy(TimesRetryLogicStrategy::make(5, 60))->setWillRetryObserver([&] { ++observed; });
    Running<Envelope> call(service->executeEnvelope<Item>(sent));
    ASSERT_TRUE(becomesTrue([&] { return endless->transfers() == 1; }));
    call.cancel();
    EXPECT_TRUE(failedWith<CancellationError>(call.outcome()));
    EXPECT_EQ(endless->transfers(), 1);
    EXPECT_EQ(observed, 0);
}

TEST_F(DomainServiceConcurrency, SpendsItsRetriesAtOnceWhenItIsCancelledAndNothingIsWaitedFor) {
    const auto endless = std::make_shared<EndlessExecutor>();
    const auto service = DefaultApiWebService::make(FakeTovrelAccountsWebService::make(endless));
    const auto sent = request()->setRetryStrategy(TimesRetryLogicStrategy::make(2, 0));
    Running<Envelope> call(service->executeEnvelope<Item>(sent));
    ASSERT_TRUE(becomesTrue([&] { return endless->transfers() == 1; }));
    call.cancel();
    EXPECT_TRUE(failedWith<URLError>(call.outcome()));
    EXPECT_EQ(endless->transfers(), 3);
}

TEST_F(DomainServiceConcurrency, EndsWhenItIsCancelledDuringTheBackOff) {
    const auto clock = ManualClock::make();
    const auto strategy = TimesRetryLogicStrategy::make(5, 60, clock);
    std::atomic<int> observed{0};
    executor_->fail(WebServiceError::timedOut());
    Running<Envelope> call(service_->executeEnvelope<Item>(
        request()->setRetryStrategy(strategy)->setWillRetryObserver([&] { ++observed; })));
    ASSERT_TRUE(clock->waitForSleepers(1));
    call.cancel();
    EXPECT_TRUE(failedWith<CancellationError>(call.outcome()));
    EXPECT_EQ(executor_->requestCount(), 1U);
    EXPECT_EQ(strategy->currentRetries(), 1);
    EXPECT_EQ(observed, 0);
}

TEST_F(DomainServiceConcurrency, FailsWithTheLogoutsErrorWhenItIsCancelledDuringTheLogout) {
    executor_->answer([this](const WebRequestable&) {
        accounts_->hold();
        return reply(401);
    });
    Running<Envelope> call(service_->executeEnvelope<Item>(request()));
    ASSERT_TRUE(becomesTrue([this] { return logouts().size() == 1; }));
    call.cancel();
    EXPECT_TRUE(failedWith<CancellationError>(call.outcome()));
}

TEST_F(DomainServiceConcurrency, SendsAgainOnlyAfterTheBackOff) {
    const auto clock = ManualClock::make();
    executor_->fail(WebServiceError::timedOut());
    executor_->answer(reply(200));
    Running<Envelope> call(
        service_->executeEnvelope<Item>(request()->setRetryStrategy(TimesRetryLogicStrategy::make(1, 1, clock))));
    ASSERT_TRUE(clock->waitForSleepers(1));
    EXPECT_EQ(executor_->requestCount(), 1U);
    EXPECT_EQ(logins(), 1U);
    clock->advance(std::chrono::seconds(1));
    EXPECT_EQ(call.outcome().value().data, Item(7, "t", Date(60)));
    EXPECT_EQ(logins(), 2U);
}

TEST_F(DomainServiceConcurrency, DecodesALargeBodyOnThePoolAndResumesItsCallerWhereItWas) {
    boost::asio::thread_pool place(1);
    for (const std::size_t size : {std::size_t{10}, std::size_t{5} * 1024 * 1024}) {
        executor_->answer(reply(200, envelopeOfText(size)));
        std::promise<bool> resumedInPlace;
        std::promise<Outcome<ApiWebResponseObject<Witness>>> ended;
        start<ApiWebResponseObject<Witness>>(place.get_executor(), service_->executeEnvelope<Witness>(request()),
                                             [&](Outcome<ApiWebResponseObject<Witness>> outcome) {
                                                 resumedInPlace.set_value(
                                                     place.get_executor().running_in_this_thread());
                                                 ended.set_value(std::move(outcome));
                                             });
        auto future = ended.get_future();
        ASSERT_EQ(future.wait_for(deadline), std::future_status::ready);
        EXPECT_EQ(future.get().value().data->wasDecodedOnThePool, size > 16U * 1024U);
        EXPECT_TRUE(resumedInPlace.get_future().get());
    }
    place.join();
}

TEST_F(DomainServiceConcurrency, JudgesALargeBodyAsASmallOne) {
    executor_->answer(reply(200, std::string(100'000, 'x')));
    EXPECT_EQ(webServiceErrorOf(service_->executeEnvelope<Witness>(request())),
              WebServiceError::invalidServerResponse());
    executor_->answer(reply(404, envelopeOfText(100'000)));
    EXPECT_EQ(domainErrorOf(service_->executeEnvelope<Witness>(request())), TovrelDomainServiceError(404, "a", "b"));
}

TEST_F(DomainServiceConcurrency, RunsManyCallsAtOnceEachWithItsOwnAnswer) {
    executor_->answerAll([](const WebRequestable& request) {
        const std::string path = request.url().absoluteString();
        const std::string number = path.substr(path.rfind('/') + 1);
        return reply(200, R"({"meta":{"code":"a","message":"b"},"data":{"id":)" + number + R"(,"title":"t"}})");
    });
    TaskGroup group;
    std::vector<ChildTask<Envelope>> calls;
    for (int number = 0; number < 200; ++number) {
        calls.push_back(group.add(
            service_->executeEnvelope<Item>(service_->buildRequest(std::to_string(number), HttpMethod::get))));
    }
    for (int number = 0; number < 200; ++number) {
        EXPECT_EQ(getInTime(calls[static_cast<std::size_t>(number)].value()).data, Item(number, "t"));
    }
    EXPECT_EQ(logins(), 200U);
}

TEST_F(DomainServiceConcurrency, LogsOutOnceForEachOfManyRefusals) {
    executor_->answerAll([](const WebRequestable&) { return reply(401); });
    TaskGroup group;
    std::vector<ChildTask<Envelope>> calls;
    for (int number = 0; number < 50; ++number) {
        calls.push_back(group.add(service_->executeEnvelope<Item>(request())));
    }
    for (const ChildTask<Envelope>& call : calls) {
        EXPECT_EQ(webServiceErrorOf(call.value()), WebServiceError::unauthorized());
    }
    EXPECT_EQ(logouts().size(), 50U);
}

} // namespace tovrel::tests
