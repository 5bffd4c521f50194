#include <Platform/Concurrency/TaskGroup.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/AccountsServiceTest.hpp>

#include <algorithm>

namespace tovrel::tests {

using AccountsConcurrency = AccountsServiceTest;

namespace {

std::ptrdiff_t countOf(const std::vector<std::string>& steps, const std::string& step) {
    return std::count(steps.begin(), steps.end(), step);
}

} // namespace

TEST_F(AccountsConcurrency, KeepsItsPromisesToTwoHundredCallersOfEachKind) {
    constexpr int callersOfEachKind = 200;
    observe();
    const auto second = std::make_shared<StepJournal>();
    const Subscription subscription = service_->eventPublisher().subscribe(
        [second](const TovrelAccountsEvent& event) { second->add(nameOf(event)); });
    server_->answer(tokenLine, 200, tokenJSON("a"));
    server_->answer(logoutLine, 204, "");
    server_->answer(profileLine, 200, envelope(R"({"id":"7","first_name":"Ada"})"));
    TaskGroup callers;
    std::vector<ChildTask<TovrelAccountsToken>> logins;
    for (int caller = 0; caller < callersOfEachKind; ++caller) {
        logins.push_back(callers.add(service_->loginWithClient()));
        callers.add(service_->userProfile(TovrelAccountsType::appleSignIn));
        callers.add(service_->logout());
    }
    getInTime(callers.waitForAll());
    for (const auto& login : logins) {
        EXPECT_EQ(getInTime(login.value()).accessToken, "a");
    }
    EXPECT_EQ(server_->mostAtOnce(profileLine), 1);
    const Steps steps = journal_->take();
    Steps events;
    std::copy_if(steps.begin(), steps.end(), std::back_inserter(events),
                 [](const std::string& step) { return step.starts_with("did"); });
    EXPECT_EQ(events, second->take());
    const auto lines = server_->lines();
    EXPECT_EQ(countOf(events, "didLogin"), callersOfEachKind + countOf(lines, profileLine));
    EXPECT_EQ(countOf(events, "didLogout"), countOf(lines, logoutLine));
    EXPECT_EQ(countOf(steps, "setToken"), countOf(lines, tokenLine));
    EXPECT_EQ(countOf(steps, "setClientIdentifier"), countOf(lines, tokenLine));
    EXPECT_EQ(countOf(steps, "removeToken"), countOf(events, "didLogout"));
    const auto token = tokenInStorage();
    EXPECT_TRUE(!token || token->accessToken == "a");
    EXPECT_EQ(clientIdentifierInStorage().value_or("reader"), "reader");
}

TEST_F(AccountsConcurrency, LetsTwoRefreshesRace) {
    store(storedToken());
    advance(300.0);
    server_->answer(tokenLine, 200, tokenJSON("a"));
    server_->hold(tokenLine);
    TaskGroup callers;
    callers.add(service_->retrieveAccessToken());
    callers.add(service_->retrieveAccessToken());
    ASSERT_TRUE(server_->waitForRequests(2));
    server_->release(tokenLine);
    getInTime(callers.waitForAll());
    EXPECT_EQ(server_->mostAtOnce(tokenLine), 2);
    EXPECT_EQ(tokenInStorage().value().accessToken, "a");
}

TEST_F(AccountsConcurrency, LeavesTheActorFreeWhileItWaitsForTheServer) {
    store(storedToken());
    server_->hold(profileLine);
    server_->answer(profileLine, 200, envelope(R"({"id":"7"})"));
    TaskGroup callers;
    callers.add(service_->userProfile(TovrelAccountsType::appleSignIn));
    ASSERT_TRUE(server_->waitForRequests(1));
    EXPECT_EQ(getInTime(service_->loginWithClient()), storedToken());
    getInTime(service_->logout(TovrelAccountsLogoutReason(2)));
    EXPECT_EQ(tokenInStorage(), std::nullopt);
    server_->release(profileLine);
    getInTime(callers.waitForAll());
}

TEST_F(AccountsConcurrency, DeliversAnEventBeforeItsOperationEnds) {
    store(storedToken());
    std::atomic<int> delivered = 0;
    const Subscription subscription =
        service_->eventPublisher().subscribe([&delivered](const TovrelAccountsEvent&) { ++delivered; });
    TaskGroup callers;
    for (int caller = 0; caller < 100; ++caller) {
        callers.add(service_->loginWithClient());
    }
    getInTime(callers.waitForAll());
    EXPECT_EQ(delivered, 100);
}

} // namespace tovrel::tests
