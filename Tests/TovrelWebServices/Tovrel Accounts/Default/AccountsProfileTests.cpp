#include <Platform/Concurrency/CancellationError.hpp>
#include <Platform/Concurrency/TaskGroup.hpp>
#include <QZFrameworkCoreLogic/Services.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/AccountsServiceTest.hpp>

#include <stdexcept>
#include <Support/UserAgent.hpp>

namespace tovrel::tests {

namespace {

constexpr auto anonymous = TovrelAccountsType::anonymous;
constexpr auto appleSignIn = TovrelAccountsType::appleSignIn;

} // namespace

class AccountsProfile : public AccountsServiceTest {
protected:
    const TovrelAccountsUserProfile ada_{"Ada", "Lovelace", "ada@example.org"};

    AccountsProfile() {
        server_->answer(profileLine, 200,
                        envelope(R"({"id":"7","first_name":"Ada","last_name":"Lovelace","email":"ada@example.org",)"
                                 R"("created_at":"2024-02-29T12:30:00+01:00"})"));
    }
};

TEST_F(AccountsProfile, ComesFromTheServerWithTheToken) {
    store(storedToken());
    EXPECT_EQ(getInTime(service_->userProfile(appleSignIn)), ada_);
    ASSERT_EQ(server_->lines(), Steps{profileLine});
    const auto sent = server_->requests().front();
    EXPECT_EQ(sent.request->headers(), (WebRequestable::HeaderMap{{"Content-Type", "application/json"},
                                                                  {"Authorization", "Bearer canary-stored"}}));
    EXPECT_EQ(sent.request->timeoutInterval(), 60.0);
    EXPECT_TRUE(sent.request->queryParameters().empty());
    EXPECT_EQ(sent.request->url().absoluteString(),
              "https://" + std::string(TovrelAccountsEnvironment::test().domain()) + "/api/v0/profiles/me");
    EXPECT_TRUE(getInTime(service_->hasProfile(appleSignIn)));
}

TEST_F(AccountsProfile, ComesFromTheStorageForAnonymousAccounts) {
    EXPECT_EQ(getInTime(service_->userProfile(anonymous)), std::nullopt);
    getInTime(storage_->setUserProfile(client_, ada_));
    EXPECT_EQ(getInTime(service_->userProfile(anonymous)), ada_);
    EXPECT_TRUE(server_->requests().empty());
}

TEST_F(AccountsProfile, IsFetchedOnceForAllWhoAskAtTheSameTime) {
    store(storedToken());
    server_->hold(profileLine);
    TaskGroup callers;
    std::vector<ChildTask<std::optional<TovrelAccountsUserProfile>>> profiles;
    for (int caller = 0; caller < 10; ++caller) {
        profiles.push_back(callers.add(service_->userProfile(appleSignIn)));
    }
    ASSERT_TRUE(server_->waitForRequests(1));
    server_->release(profileLine);
    getInTime(callers.waitForAll());
    for (const auto& profile : profiles) {
        EXPECT_EQ(getInTime(profile.value()), ada_);
    }
    EXPECT_EQ(server_->mostAtOnce(profileLine), 1);
}

TEST_F(AccountsProfile, IsFetchedAgainAfterTheFetchHasEnded) {
    store(storedToken());
    static_cast<void>(getInTime(service_->userProfile(appleSignIn)));
    static_cast<void>(getInTime(service_->userProfile(appleSignIn)));
    EXPECT_EQ(server_->requests().size(), 2U);
}

TEST_F(AccountsProfile, GoesOnForTheOthersWhenOneStopsWaiting) {
    store(storedToken());
    server_->hold(profileLine);
    std::promise<bool> cancelled;
    const TaskHandle impatient = start<std::optional<TovrelAccountsUserProfile>>(
        service_->userProfile(appleSignIn), [&cancelled](Outcome<std::optional<TovrelAccountsUserProfile>> outcome) {
            cancelled.set_value(!outcome.hasValue());
        });
    ASSERT_TRUE(server_->waitForRequests(1));
    std::promise<std::optional<TovrelAccountsUserProfile>> profile;
    const TaskHandle patient = start<std::optional<TovrelAccountsUserProfile>>(
        service_->userProfile(appleSignIn),
        [&profile](Outcome<std::optional<TovrelAccountsUserProfile>> outcome) { profile.set_value(outcome.value()); });
    impatient.cancel();
    EXPECT_TRUE(cancelled.get_future().get());
    server_->release(profileLine);
    EXPECT_EQ(profile.get_future().get(), ada_);
    EXPECT_EQ(server_->mostAtOnce(profileLine), 1);
}

TEST_F(AccountsProfile, IsAbsentAndTheFailureLoggedWhenTheServerHasNone) {
    store(storedToken());
    server_->answer(profileLine, 404, R"({"meta":{"code":"none","message":"canary-body"}})");
    const auto messages = captureLog([this] {
        EXPECT_EQ(getInTime(service_->userProfile(appleSignIn)), std::nullopt);
        EXPECT_EQ(getInTime(service_->userProfile(appleSignIn)), std::nullopt);
    });
    EXPECT_EQ(server_->requests().size(), 2U);
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_NE(messages.front().find("Attempted to retrieve user profile but failed. Chances are the user does not have "
                                    "a profile yet. Error: "),
              std::string::npos);
    EXPECT_EQ(messages.front().find("canary"), std::string::npos) << messages.front();
}

TEST_F(AccountsProfile, IsAbsentForEveryFailureOfTheFetch) {
    store(storedToken());
    const std::vector<std::pair<std::int64_t, std::optional<std::string>>> answers{
        {200, std::nullopt},     {200, "<html>"},
        {200, envelope("null")}, {200, envelope(R"({"first_name":"Ada"})")},
        {500, envelope("null")}, {200, envelope(R"({"id":"7","created_at":"yesterday"})")}};
    for (const auto& [statusCode, body] : answers) {
        server_->answer(profileLine, statusCode, body);
        EXPECT_EQ(captureLog([this] { EXPECT_EQ(getInTime(service_->userProfile(appleSignIn)), std::nullopt); }).size(),
                  1U)
            << statusCode << body.value_or("");
    }
    server_->answer(profileLine, []() -> WebResponse { throw 1; });
    const auto messages =
        captureLog([this] { EXPECT_EQ(getInTime(service_->userProfile(appleSignIn)), std::nullopt); });
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_NE(messages.front().find("Error: unknown error"), std::string::npos);
}

TEST_F(AccountsProfile, IsAbsentWhenNobodyCanLogIn) {
    server_->answer(tokenLine, 500, "");
    captureLog([this] { EXPECT_FALSE(getInTime(service_->hasProfile(appleSignIn))); });
    EXPECT_EQ(server_->lines(), Steps{tokenLine});
}

TEST_F(AccountsProfile, LogsOutWhenTheServerRefusesTheToken) {
    observe();
    store(storedToken());
    server_->answer(profileLine, 401, "");
    captureLog([this] { EXPECT_EQ(getInTime(service_->userProfile(appleSignIn)), std::nullopt); });
    EXPECT_EQ(journal_->take(), (Steps{"didLogin", "removeToken", "removeClientIdentifier", "didLogout"}));
}

using AccountsLoginStatus = AccountsProfile;

TEST_F(AccountsLoginStatus, IsThatOfTheTokenForAnonymousAccounts) {
    EXPECT_FALSE(getInTime(service_->isLoggedIn(anonymous)));
    store(storedToken());
    EXPECT_TRUE(getInTime(service_->isLoggedIn(anonymous)));
    advance(300.0);
    EXPECT_TRUE(getInTime(service_->isLoggedIn(anonymous)));
    EXPECT_EQ(tokenInStorage(), storedToken());
    advance(1500.0);
    EXPECT_FALSE(getInTime(service_->isLoggedIn(anonymous)));
    EXPECT_TRUE(server_->requests().empty());
}

TEST_F(AccountsLoginStatus, NeedsTokenProfileAndCredentialForUsers) {
    store(storedToken());
    EXPECT_TRUE(getInTime(service_->isLoggedIn(appleSignIn)));
}

TEST_F(AccountsLoginStatus, IsLoggedOutWithoutAProfile) {
    store(storedToken());
    server_->answer(profileLine, 404, envelope("null"));
    captureLog([this] { EXPECT_FALSE(getInTime(service_->isLoggedIn(appleSignIn))); });
}

TEST_F(AccountsLoginStatus, IsLoggedOutUnlessTheCredentialIsAuthorized) {
    using State = TovrelAppleCredentialState;
    store(storedToken());
    for (const auto state : {std::optional(State::revoked), std::optional(State::notFound),
                             std::optional(State::transferred), std::optional<State>()}) {
        appleSignIn_->state = state;
        EXPECT_FALSE(getInTime(service_->isLoggedIn(appleSignIn)));
        EXPECT_FALSE(getInTime(service_->userHasSignedUp(appleSignIn)));
    }
    appleSignIn_ = nullptr;
    EXPECT_FALSE(getInTime(service_->isLoggedIn(appleSignIn)));
    EXPECT_FALSE(getInTime(service_->userHasSignedUp(appleSignIn)));
    EXPECT_TRUE(allTasksEnd());
}

TEST_F(AccountsLoginStatus, FailsWithTheErrorOfAQuestionThatFails) {
    store(storedToken());
    appleSignIn_->failure = std::make_exception_ptr(std::domain_error("no answer"));
    EXPECT_THROW(getInTime(service_->isLoggedIn(appleSignIn)), std::domain_error);
    EXPECT_TRUE(allTasksEnd());
}

TEST_F(AccountsLoginStatus, DoesNotWaitForTheProfileOnceTheAnswerIsNo) {
    store(storedToken());
    appleSignIn_->state = TovrelAppleCredentialState::revoked;
    server_->hold(profileLine);
    EXPECT_FALSE(getInTime(service_->isLoggedIn(appleSignIn)));
    ASSERT_TRUE(server_->waitForRequests(1));
    server_->release(profileLine);
}

TEST_F(AccountsLoginStatus, EndsWithItsCaller) {
    store(storedToken());
    server_->hold(profileLine);
    std::promise<std::exception_ptr> failure;
    const TaskHandle question = start<bool>(service_->isLoggedIn(appleSignIn),
                                            [&failure](Outcome<bool> outcome) { failure.set_value(outcome.error()); });
    ASSERT_TRUE(server_->waitForRequests(1));
    question.cancel();
    const std::exception_ptr error = failure.get_future().get();
    ASSERT_TRUE(error);
    EXPECT_THROW(std::rethrow_exception(error), CancellationError);
    server_->release(profileLine);
}

TEST_F(AccountsLoginStatus, JoinsAFetchInFlight) {
    store(storedToken());
    server_->hold(profileLine);
    TaskGroup callers;
    const auto profile = callers.add(service_->userProfile(appleSignIn));
    ASSERT_TRUE(server_->waitForRequests(1));
    const auto status = callers.add(service_->isLoggedIn(appleSignIn));
    server_->release(profileLine);
    EXPECT_TRUE(getInTime(status.value()));
    EXPECT_EQ(getInTime(profile.value()), ada_);
    EXPECT_EQ(server_->mostAtOnce(profileLine), 1);
}

TEST_F(AccountsLoginStatus, CountsEveryAnonymousUserAsSignedUp) {
    EXPECT_TRUE(getInTime(service_->userHasSignedUp(anonymous)));
    EXPECT_TRUE(getInTime(service_->userHasSignedUp(appleSignIn)));
}

TEST_F(AccountsLoginStatus, KnowsWhoHasSignedUpAlsoWhenTheCallerIsCancelled) {
    appleSignIn_->gate = Event::make();
    std::promise<bool> answer;
    const TaskHandle question = start<bool>(service_->userHasSignedUp(appleSignIn),
                                            [&answer](Outcome<bool> outcome) { answer.set_value(outcome.value()); });
    question.cancel();
    appleSignIn_->gate->set();
    EXPECT_TRUE(answer.get_future().get());
}

TEST_F(AccountsLoginStatus, LooksTheSignInServiceUpAtEachCall) {
    const auto service = DefaultTovrelAccountsWebService::make(client_, storage_, server_);
    Services::default_().remove<TovrelAppleSignInService>();
    EXPECT_FALSE(getInTime(service->userHasSignedUp(appleSignIn)));
    Services::default_().register_<TovrelAppleSignInService>(appleSignIn_);
    EXPECT_TRUE(getInTime(service->userHasSignedUp(appleSignIn)));
    EXPECT_TRUE(Services::default_().remove<TovrelAppleSignInService>());
    EXPECT_FALSE(getInTime(service->userHasSignedUp(appleSignIn)));
}

} // namespace tovrel::tests
