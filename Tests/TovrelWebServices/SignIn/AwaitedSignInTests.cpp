#include <Platform/Concurrency/CancellationError.hpp>
#include <TovrelWebServices/SignIn/SignInServiceTest.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <gtest/gtest.h>

namespace tovrel::tests {

namespace {

using testing::FakeTovrelAccountsWebService;
using Operation = testing::FakeTovrelAccountsCall::Operation;

/// A service that keeps its completions and cannot take a question back.
class SlowSignIn final : public TovrelAppleSignInService {
public:
    using TovrelAppleSignInService::requestAuthorization;

    Async<std::optional<TovrelAppleCredentialState>> getCredentialState(TovrelAccountsClient /*client*/) override {
        co_return std::nullopt;
    }
    void requestAuthorization(Completion completion) override {
        completion_ = std::move(completion);
        asked->set();
    }
    void answer(TovrelAppleSignInResult result) { completion_(std::move(result)); }

    const std::shared_ptr<Event> asked = Event::make();

private:
    Completion completion_;
};

Async<void> signIn(std::shared_ptr<TovrelAppleSignInService> service) {
    static_cast<void>(co_await service->requestAuthorization());
}

} // namespace

class AwaitedSignIn : public SignInServiceTest {
protected:
    std::shared_ptr<Task> startAndHold() {
        provider_->answer(janesCredential());
        provider_->hold();
        const std::size_t before = provider_->requestCount();
        const auto task = Task::spawn(TaskPool::compute(), signIn(service_));
        EXPECT_TRUE(comesTrue([&] { return provider_->requestCount() == before + 1; }));
        return task;
    }
};

TEST_F(AwaitedSignIn, GivesTheAccountsToken) {
    const TovrelAccountsToken token = FakeTovrelAccountsWebService::exampleToken();
    accounts_->answerLoginWithApple([token] { return token; });
    provider_->answer(janesCredential());
    EXPECT_EQ(getInTime(service_->requestAuthorization()), token);
}

TEST_F(AwaitedSignIn, ThrowsWhatACompletionWouldBeCalledWith) {
    accounts_->answerLoginWithApple([]() -> TovrelAccountsToken { throw WebServiceError::unauthorized(); });
    provider_->answer(janesCredential());
    try {
        static_cast<void>(getInTime(service_->requestAuthorization()));
        ADD_FAILURE() << "signed in";
    } catch (const TovrelAppleSignInError& error) {
        EXPECT_EQ(error.kind(), Kind::authorizeTovrelAccounts);
        EXPECT_EQ(unwrapped<WebServiceError>(error.underlying()), WebServiceError::unauthorized());
    }
}

TEST_F(AwaitedSignIn, TellsTheUsersCancellationFromItsCallers) {
    provider_->fail(AuthorizationError::cancelled());
    EXPECT_THROW(static_cast<void>(getInTime(service_->requestAuthorization())), TovrelAppleSignInError);
}

TEST_F(AwaitedSignIn, EndsAsCancelledWhenAnotherRequestTakesItsPlace) {
    const auto task = startAndHold();
    Completions later;
    provider_->answer(janesCredential());
    request(later);
    EXPECT_THROW(getInTime(Task::joinDetached(task)), CancellationError);
    provider_->release();
    EXPECT_TRUE(std::holds_alternative<TovrelAccountsToken>(later.result()));
}

TEST_F(AwaitedSignIn, TakesTheQuestionBackWhenItsCallerIsCancelled) {
    const auto task = startAndHold();
    task->cancel();
    EXPECT_THROW(getInTime(Task::joinDetached(task)), CancellationError);
    EXPECT_EQ(provider_->cancelledCount(), 1U);
    EXPECT_TRUE(accounts_->calls().empty());
}

TEST_F(AwaitedSignIn, LeavesTheRequestAloneThatTookItsPlace) {
    const auto task = startAndHold();
    Completions later;
    provider_->answer(janesCredential());
    MainThread::get().run([&] {
        service_->requestAuthorization(later.next());
        task->cancel();
    });
    EXPECT_THROW(getInTime(Task::joinDetached(task)), CancellationError);
    provider_->release();
    EXPECT_TRUE(std::holds_alternative<TovrelAccountsToken>(later.result()));
    EXPECT_EQ(provider_->cancelledCount(), 1U);
}

TEST_F(AwaitedSignIn, AsksNobodyInACancelledTask) {
    const auto task = Task::spawn(TaskPool::compute(), signIn(service_), true);
    EXPECT_THROW(getInTime(Task::join(task)), CancellationError);
    EXPECT_EQ(provider_->requestCount(), 0U);
}

TEST_F(AwaitedSignIn, WaitsForAServiceThatCannotTakeItsQuestionBack) {
    const auto slow = std::make_shared<SlowSignIn>();
    const auto task = Task::spawn(TaskPool::compute(), signIn(slow));
    getInTime(Event::wait(slow->asked));
    task->cancel();
    MainThread::get().run([&] { slow->answer(FakeTovrelAccountsWebService::exampleToken()); });
    EXPECT_NO_THROW(getInTime(Task::joinDetached(task)));
}

TEST_F(AwaitedSignIn, KeepsAFailureThatIsNoCancellation) {
    const auto slow = std::make_shared<SlowSignIn>();
    const auto task = Task::spawn(TaskPool::compute(), signIn(slow));
    getInTime(Event::wait(slow->asked));
    task->cancel();
    MainThread::get().run([&] { slow->answer(TovrelAppleSignInError::credentialsNotFound()); });
    EXPECT_THROW(getInTime(Task::joinDetached(task)), TovrelAppleSignInError);
}

} // namespace tovrel::tests
