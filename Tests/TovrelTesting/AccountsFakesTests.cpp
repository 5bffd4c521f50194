#include <Platform/Concurrency/CancellationError.hpp>
#include <TovrelTesting/FakeTovrelAccountsWebService.hpp>
#include <TovrelTesting/FakeWebRequestExecutor.hpp>
#include <TovrelTesting/InMemoryTovrelAccountsStorage.hpp>

#include <gtest/gtest.h>

#include <future>
#include <stdexcept>
#include <Support/Await.hpp>

namespace tovrel::tests {

namespace {

using testing::FakeTovrelAccountsCall;
using testing::FakeTovrelAccountsWebService;
using testing::FakeWebRequestExecutor;
using testing::InMemoryTovrelAccountsStorage;

constexpr auto appleSignIn = TovrelAccountsType::appleSignIn;

class FakeAccountsService : public AsyncTest {
protected:
    std::shared_ptr<FakeTovrelAccountsWebService> service_ =
        FakeTovrelAccountsWebService::make(FakeWebRequestExecutor::make());
};

} // namespace

TEST_F(FakeAccountsService, SucceedsWithoutAScript) {
    EXPECT_EQ(getInTime(service_->loginWithClient()).tokenType, "Bearer");
    EXPECT_TRUE(getInTime(service_->retrieveAccessToken()));
    getInTime(service_->logout());
    getInTime(service_->deleteAccount());
    EXPECT_TRUE(getInTime(service_->isLoggedIn(appleSignIn)));
    EXPECT_TRUE(getInTime(service_->userHasSignedUp(appleSignIn)));
    EXPECT_FALSE(getInTime(service_->userProfile(appleSignIn)));
    EXPECT_EQ(service_->calls().size(), 7U);
}

TEST_F(FakeAccountsService, AnswersByItsScriptAndRemembersTheCalls) {
    service_->answerLoginWithApple([]() -> TovrelAccountsToken { throw std::runtime_error("refused"); });
    service_->answerIsLoggedIn([](TovrelAccountsType type) { return type == appleSignIn; });
    const TovrelAccountsUserProfile ada("Ada", std::nullopt, std::nullopt);
    EXPECT_THROW(getInTime(service_->loginWithApple("token", "user", ada)), std::runtime_error);
    EXPECT_FALSE(getInTime(service_->isLoggedIn(TovrelAccountsType::anonymous)));
    FakeTovrelAccountsCall login(FakeTovrelAccountsCall::Operation::loginWithApple);
    login.identityToken = "token";
    login.user = "user";
    login.userProfile = ada;
    FakeTovrelAccountsCall question(FakeTovrelAccountsCall::Operation::isLoggedIn);
    question.type = TovrelAccountsType::anonymous;
    EXPECT_EQ(service_->calls(), (std::vector{login, question}));
    EXPECT_EQ(service_->callCount(FakeTovrelAccountsCall::Operation::isLoggedIn), 1U);
}

TEST_F(FakeAccountsService, SendsTheEventsOfTheTest) {
    std::vector<TovrelAccountsEvent> received;
    const Subscription subscription =
        service_->eventPublisher().subscribe([&](const TovrelAccountsEvent& event) { received.push_back(event); });
    service_->send(TovrelAccountsEvent::didLogin());
    EXPECT_EQ(received, std::vector{TovrelAccountsEvent::didLogin()});
}

TEST_F(FakeAccountsService, HoldsOperationsUntilTheyAreReleased) {
    service_->hold();
    std::promise<bool> loggedOut;
    std::promise<bool> cancelled;
    const TaskHandle logout = start<void>(
        service_->logout(), [&loggedOut](Outcome<void> outcome) { loggedOut.set_value(outcome.hasValue()); });
    const TaskHandle deletion = start<void>(service_->deleteAccount(), [&cancelled](const Outcome<void>& outcome) {
        cancelled.set_value(!outcome.hasValue());
    });
    deletion.cancel();
    EXPECT_TRUE(cancelled.get_future().get());
    service_->release();
    EXPECT_TRUE(loggedOut.get_future().get());
    service_->release();
}

TEST(InMemoryTovrelAccountsStorage, KeepsEachItemOfEachRealmAndStage) {
    const auto storage = InMemoryTovrelAccountsStorage::make();
    const TovrelAccountsClient client = FakeTovrelAccountsWebService::exampleClient();
    TovrelAccountsClient sibling = client;
    sibling.identifier = "sibling";
    TovrelAccountsClient stranger = client;
    stranger.environment = TovrelAccountsEnvironment::test();
    const TovrelAccountsToken token = FakeTovrelAccountsWebService::exampleToken();
    const TovrelAccountsUserProfile ada("Ada", std::nullopt, std::nullopt);
    const TovrelAccountsUserProfile bob("Bob", std::nullopt, std::nullopt);
    getInTime(storage->setToken(client, token));
    getInTime(storage->setClientIdentifier(client));
    getInTime(storage->setUserProfile(client, ada));
    getInTime(storage->setAppleUserProfile(client, bob));
    getInTime(storage->setAppleSignInUser("user", client));
    EXPECT_EQ(getInTime(storage->token(sibling)), token);
    EXPECT_EQ(getInTime(storage->clientIdentifier(sibling)), client.identifier);
    EXPECT_EQ(getInTime(storage->userProfile(sibling)), ada);
    EXPECT_EQ(getInTime(storage->appleUserProfile(sibling)), bob);
    EXPECT_EQ(getInTime(storage->appleSignInUser(sibling)), "user");
    EXPECT_EQ(getInTime(storage->token(stranger)), std::nullopt);
    getInTime(storage->removeToken(sibling));
    getInTime(storage->removeClientIdentifier(sibling));
    EXPECT_EQ(getInTime(storage->token(client)), std::nullopt);
    EXPECT_EQ(getInTime(storage->clientIdentifier(client)), std::nullopt);
    EXPECT_EQ(getInTime(storage->userProfile(client)), ada);
    getInTime(storage->removeToken(client));
}

} // namespace tovrel::tests
