#include <Platform/Concurrency/CancellationError.hpp>
#include <TovrelWebServices/SignIn/SignInServiceTest.hpp>
#include <TovrelWebServices/Transport/ErrorPredicates.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <gtest/gtest.h>

#include <stdexcept>

namespace tovrel::tests {

namespace {

using testing::FakeTovrelAccountsCall;
using testing::FakeTovrelAccountsWebService;
using Operation = FakeTovrelAccountsCall::Operation;

/// A provider that does not hear of cancellations.
class StubbornProvider final : public AuthorizationProvider {
public:
    Async<AuthorizationCredential> authorize(AuthorizationRequest /*request*/,
                                             std::shared_ptr<AuthorizationPresentation> /*presentation*/) override {
        asked->set();
        return answer(gate);
    }

    Async<TovrelAppleCredentialState> credentialState(std::string /*user*/) override {
        throw std::runtime_error("out of reach");
    }

    const std::shared_ptr<Event> asked = Event::make();
    const std::shared_ptr<Event> gate = Event::make();

private:
    static Async<AuthorizationCredential> answer(std::shared_ptr<Event> gate) {
        co_await shielded(Event::wait(std::move(gate)));
        co_return AuthorizationCredential::appleID(janesCredential());
    }
};

} // namespace

class AppleSignInService : public SignInServiceTest {
protected:
    std::optional<TovrelAccountsUserProfile> profileSentFor(const AppleIDCredential& credential) {
        Completions completions;
        provider_->answer(credential);
        request(completions);
        static_cast<void>(completions.result());
        return accounts_->calls().back().userProfile;
    }

    std::optional<TovrelAppleCredentialState> credentialState() {
        return getInTime(service_->getCredentialState(FakeTovrelAccountsWebService::exampleClient()));
    }

    void storeUser(const std::string& user) {
        getInTime(storage_->setAppleSignInUser(user, FakeTovrelAccountsWebService::exampleClient()));
    }
};

TEST_F(AppleSignInService, AsksForTheFullNameAndThenTheEmail) {
    Completions completions;
    provider_->answer(janesCredential());
    request(completions);
    static_cast<void>(completions.result());
    const AuthorizationRequest expected({AuthorizationScope::fullName, AuthorizationScope::email});
    EXPECT_EQ(provider_->requests(), std::vector{expected});
}

TEST_F(AppleSignInService, ExchangesTheIdentityTokenAndGivesTheAccountsToken) {
    TovrelAccountsToken token = FakeTovrelAccountsWebService::exampleToken();
    token.accessToken = "for Jane";
    accounts_->answerLoginWithApple([token] { return token; });
    Completions completions;
    provider_->answer(janesCredential());
    request(completions);
    EXPECT_EQ(std::get<TovrelAccountsToken>(completions.result()), token);
    FakeTovrelAccountsCall expected(Operation::loginWithApple);
    expected.identityToken = "header.payload.signature";
    expected.user = "jane";
    expected.userProfile = TovrelAccountsUserProfile("Jane", "Doe", "jane@example.org");
    EXPECT_EQ(accounts_->calls(), std::vector{expected});
}

TEST_F(AppleSignInService, RefusesACredentialOfAnotherKindWithoutALogin) {
    const auto error = errorAfter(AuthorizationCredential::other("password"));
    EXPECT_EQ(error.kind(), Kind::credentialsNotFound);
    EXPECT_TRUE(accounts_->calls().empty());
}

TEST_F(AppleSignInService, RefusesACredentialWithoutAnIdentityToken) {
    const auto error = errorAfter(AuthorizationCredential::appleID(AppleIDCredential("jane")));
    EXPECT_EQ(error.kind(), Kind::identityTokenNotFound);
    EXPECT_TRUE(accounts_->calls().empty());
}

TEST_F(AppleSignInService, RefusesAnIdentityTokenThatIsNoText) {
    for (const std::string bytes : {"\xFF", "\xC0\x80", "\xED\xA0\x80", "ab\xE2\x82"}) {
        AppleIDCredential credential("jane");
        credential.identityToken = Data(bytes);
        EXPECT_EQ(errorAfter(AuthorizationCredential::appleID(credential)).kind(), Kind::identityTokenInvalid);
    }
    EXPECT_TRUE(accounts_->calls().empty());
}

TEST_F(AppleSignInService, LeavesItToTheServerToRefuseAnEmptyIdentityToken) {
    AppleIDCredential credential("jane");
    credential.identityToken = Data();
    EXPECT_EQ(profileSentFor(credential), std::nullopt);
    EXPECT_EQ(accounts_->calls().back().identityToken, "");
}

TEST_F(AppleSignInService, SendsNoProfileWithoutAnEmailOrWithoutAName) {
    AppleIDCredential withoutEmail = janesCredential();
    withoutEmail.email.reset();
    EXPECT_EQ(profileSentFor(withoutEmail), std::nullopt);
    AppleIDCredential withoutName = janesCredential();
    withoutName.fullName.reset();
    EXPECT_EQ(profileSentFor(withoutName), std::nullopt);
}

TEST_F(AppleSignInService, SendsAProfileWhoseNameIsIncomplete) {
    AppleIDCredential credential = janesCredential();
    credential.fullName = PersonNameComponents(std::nullopt, "Doe");
    EXPECT_EQ(profileSentFor(credential), TovrelAccountsUserProfile(std::nullopt, "Doe", "jane@example.org"));
    credential.fullName = PersonNameComponents();
    EXPECT_EQ(profileSentFor(credential), TovrelAccountsUserProfile(std::nullopt, std::nullopt, "jane@example.org"));
}

TEST_F(AppleSignInService, CarriesTheUsersCancellation) {
    Completions completions;
    provider_->fail(AuthorizationError::cancelled());
    request(completions);
    const TovrelAppleSignInError error = completions.error();
    EXPECT_EQ(error.kind(), Kind::authorizeApple);
    EXPECT_EQ(unwrapped<AuthorizationError>(error.underlying()), AuthorizationError::cancelled());
    EXPECT_TRUE(isCancelled(std::make_exception_ptr(error)));
    EXPECT_TRUE(accounts_->calls().empty());
}

TEST_F(AppleSignInService, CarriesAnyErrorOfTheProvider) {
    Completions completions;
    provider_->fail(std::runtime_error("the sheet fell down"));
    request(completions);
    const TovrelAppleSignInError error = completions.error();
    EXPECT_EQ(error.kind(), Kind::authorizeApple);
    ASSERT_TRUE(unwrapped<std::runtime_error>(error.underlying()));
    EXPECT_STREQ(unwrapped<std::runtime_error>(error.underlying())->what(), "the sheet fell down");
}

TEST_F(AppleSignInService, CarriesTheFailureOfTheLogin) {
    accounts_->answerLoginWithApple([]() -> TovrelAccountsToken { throw WebServiceError::timedOut(); });
    const auto error = errorAfter(AuthorizationCredential::appleID(janesCredential()));
    EXPECT_EQ(error.kind(), Kind::authorizeTovrelAccounts);
    EXPECT_EQ(unwrapped<WebServiceError>(error.underlying()), WebServiceError::timedOut());
}

TEST_F(AppleSignInService, NeverAnswersWithinTheRequest) {
    Completions completions;
    provider_->answer(janesCredential());
    MainThread::get().run([&] {
        service_->requestAuthorization(completions.next());
        EXPECT_EQ(completions.count(), 0U);
        EXPECT_EQ(provider_->requestCount(), 0U);
    });
    static_cast<void>(completions.result());
}

TEST_F(AppleSignInService, TakesARequestThatWantsNoAnswer) {
    provider_->answer(janesCredential());
    MainThread::get().run([&] { service_->requestAuthorization(TovrelAppleSignInService::Completion()); });
    EXPECT_TRUE(allTasksEnd());
    EXPECT_EQ(accounts_->callCount(Operation::loginWithApple), 1U);
}

TEST_F(AppleSignInService, AnswersOnlyTheSecondOfTwoRequests) {
    Completions first;
    Completions second;
    provider_->answer(AppleIDCredential("the first"));
    provider_->answer(janesCredential());
    requestAndHold(first);
    requestAndHold(second);
    EXPECT_TRUE(comesTrue([&] { return provider_->cancelledCount() == 1; }));
    provider_->release();
    EXPECT_TRUE(std::holds_alternative<TovrelAccountsToken>(second.result()));
    EXPECT_EQ(first.count(), 0U);
    ASSERT_EQ(accounts_->calls().size(), 1U);
    EXPECT_EQ(accounts_->calls().front().user, "jane");
}

TEST_F(AppleSignInService, CancelsTheExchangeOfARequestThatIsReplaced) {
    Completions first;
    Completions second;
    provider_->answer(janesCredential());
    provider_->fail(AuthorizationError::cancelled());
    accounts_->hold();
    request(first);
    ASSERT_TRUE(comesTrue([&] { return accounts_->callCount(Operation::loginWithApple) == 1; }));
    request(second);
    EXPECT_EQ(second.error().kind(), Kind::authorizeApple);
    EXPECT_EQ(first.count(), 0U);
    accounts_->release();
}

TEST_F(AppleSignInService, MakesNothingOfACredentialThatComesAfterTheNextRequest) {
    const auto stubborn = std::make_shared<StubbornProvider>();
    const auto service = DefaultTovrelAppleSignInService::make(storage_, stubborn);
    Completions first;
    Completions second;
    request(first, service);
    getInTime(Event::wait(stubborn->asked));
    request(second, service);
    stubborn->gate->set();
    static_cast<void>(second.result());
    EXPECT_EQ(first.count(), 0U);
    EXPECT_EQ(accounts_->callCount(Operation::loginWithApple), 1U);
}

TEST_F(AppleSignInService, LetsACompletionMakeTheNextRequest) {
    Completions last;
    provider_->fail(AuthorizationError::cancelled());
    provider_->answer(janesCredential());
    MainThread::get().run([&] {
        service_->requestAuthorization(
            [&](const TovrelAppleSignInResult&) { service_->requestAuthorization(last.next()); });
    });
    EXPECT_TRUE(std::holds_alternative<TovrelAccountsToken>(last.result()));
}

TEST_F(AppleSignInService, AnswersThoughItsOwnerHasLetGoOfIt) {
    Completions completions;
    provider_->answer(janesCredential());
    requestAndHold(completions);
    const std::weak_ptr<DefaultTovrelAppleSignInService> weak = service_;
    service_.reset();
    provider_->release();
    EXPECT_TRUE(std::holds_alternative<TovrelAccountsToken>(completions.result()));
    EXPECT_TRUE(weak.expired());
}

TEST_F(AppleSignInService, ReportsARequestThatIsTakenBackAsCancelled) {
    Completions completions;
    provider_->answer(janesCredential());
    requestAndHold(completions);
    MainThread::get().run([&] { service_->cancelAuthorization(); });
    const TovrelAppleSignInError error = completions.error();
    EXPECT_EQ(error.kind(), Kind::authorizeApple);
    EXPECT_TRUE(unwrapped<CancellationError>(error.underlying()));
}

TEST_F(AppleSignInService, HasNothingToTakeBackBetweenRequests) {
    MainThread::get().run([&] { service_->cancelAuthorization(); });
    Completions completions;
    provider_->answer(janesCredential());
    request(completions);
    EXPECT_TRUE(std::holds_alternative<TovrelAccountsToken>(completions.result()));
    MainThread::get().run([&] { service_->cancelAuthorization(); });
    EXPECT_EQ(completions.count(), 1U);
}

TEST_F(AppleSignInService, HasNoCredentialStateForAClientWithoutAUserAndAsksNoOne) {
    EXPECT_EQ(credentialState(), std::nullopt);
    EXPECT_TRUE(provider_->credentialStateRequests().empty());
}

TEST_F(AppleSignInService, GivesTheStateThatTheProviderReportsForTheStoredUser) {
    storeUser("jane");
    EXPECT_EQ(credentialState(), TovrelAppleCredentialState::notFound);
    for (const auto state : {TovrelAppleCredentialState::revoked, TovrelAppleCredentialState::authorized,
                             TovrelAppleCredentialState::notFound, TovrelAppleCredentialState::transferred}) {
        provider_->setCredentialState("jane", state);
        EXPECT_EQ(credentialState(), state);
    }
    EXPECT_EQ(provider_->credentialStateRequests(), std::vector<std::string>(5, "jane"));
}

TEST_F(AppleSignInService, TakesAProvidersErrorForAnUnknownUser) {
    storeUser("jane");
    const auto service = DefaultTovrelAppleSignInService::make(storage_, std::make_shared<StubbornProvider>());
    EXPECT_EQ(getInTime(service->getCredentialState(FakeTovrelAccountsWebService::exampleClient())),
              TovrelAppleCredentialState::notFound);
}

namespace {

Async<void> readState(std::shared_ptr<TovrelAppleSignInService> service,
                      std::shared_ptr<std::optional<TovrelAppleCredentialState>> state) {
    *state = co_await service->getCredentialState(FakeTovrelAccountsWebService::exampleClient());
}

} // namespace

TEST_F(AppleSignInService, GivesTheCredentialStateInACancelledTaskToo) {
    storeUser("jane");
    provider_->setCredentialState("jane", TovrelAppleCredentialState::authorized);
    const auto state = std::make_shared<std::optional<TovrelAppleCredentialState>>();
    const auto task = Task::spawn(TaskPool::compute(), readState(service_, state), true);
    getInTime(Task::join(task));
    EXPECT_EQ(*state, TovrelAppleCredentialState::authorized);
}

TEST_F(AppleSignInService, SharesTheOneAccountsServiceOfTheProcess) {
    const auto other = DefaultTovrelAppleSignInService::make(storage_, provider_);
    for (const auto& service : {service_, other}) {
        Completions completions;
        provider_->answer(janesCredential());
        request(completions, service);
        static_cast<void>(completions.result());
    }
    EXPECT_EQ(accounts_->callCount(Operation::loginWithApple), 2U);
}

TEST(AppleSignInServiceDeathTest, NeedsAnAccountsService) {
    EXPECT_DEATH(DefaultTovrelAppleSignInService::make(testing::InMemoryTovrelAccountsStorage::make(),
                                                       testing::ScriptedAuthorizationProvider::make()),
                 ServiceContainerError::notRegistered(typeid(TovrelAccountsWebService)).what());
}

} // namespace tovrel::tests
