#include <Platform/Concurrency/TaskGroup.hpp>
#include <TovrelWebServices/Services/DefaultApiWebService.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/AccountsServiceTest.hpp>

#include <algorithm>

namespace tovrel::tests {

using AccountsConcurrency = AccountsServiceTest;

namespace {

std::ptrdiff_t countOf(const std::vector<std::string>& steps, const std::string& step) {
    return std::count(steps.begin(), steps.end(), step);
}

/// Whether a token is one of those that the server numbered: all of its parts bear the same number.
bool isWhole(const TovrelAccountsToken& token) {
    return token.accessToken.starts_with("access-") &&
           token.refreshToken == "refresh-" + token.accessToken.substr(std::string_view("access-").size());
}

/// Looks at the storage until it is told to stop. Returns how often there was anything that must not be there.
Async<int> countMistakes(std::shared_ptr<TovrelAccountsStorage> storage, TovrelAccountsClient client,
                         std::shared_ptr<std::atomic<bool>> isOver) {
    int mistakes = 0;
    while (!*isOver) {
        const auto token = co_await storage->token(client);
        const auto identifier = co_await storage->clientIdentifier(client);
        mistakes += token && !isWhole(*token) ? 1 : 0;
        mistakes += identifier.value_or(client.identifier) != client.identifier ? 1 : 0;
    }
    co_return mistakes;
}

} // namespace

TEST_F(AccountsConcurrency, KeepsItsPromisesToTwoHundredCallersOfEachKind) {
    constexpr int callersOfEachKind = 200;
    observe();
    const auto second = std::make_shared<StepJournal>();
    const Subscription subscription = service_->eventPublisher().subscribe(
        [second](const TovrelAccountsEvent& event) { second->add(nameOf(event)); });
    server_->answer(tokenLine, [number = std::make_shared<std::atomic<int>>(0)] {
        const std::string text = std::to_string(++*number);
        std::string json = tokenJSON("access-" + text);
        json.replace(json.find("canary-refresh"), std::string_view("canary-refresh").size(), "refresh-" + text);
        return WebResponse(Data(json), HTTPHeaders(), 200);
    });
    server_->answer(logoutLine, 204, "");
    server_->answer(profileLine, 200, envelope(R"({"id":"7","first_name":"Ada"})"));
    server_->answer("GET /items", 200, envelope("[]"));
    const auto api = DefaultApiWebService::make(service_);
    const auto isOver = std::make_shared<std::atomic<bool>>(false);
    TaskGroup watchers;
    const auto mistakes = watchers.add(countMistakes(storage_, client_, isOver));
    TaskGroup callers;
    std::vector<ChildTask<TovrelAccountsToken>> logins;
    for (int caller = 0; caller < callersOfEachKind; ++caller) {
        callers.add(api->execute(api->buildRequest("items", HttpMethod::get)));
        logins.push_back(callers.add(service_->loginWithClient()));
        callers.add(service_->userProfile(TovrelAccountsType::appleSignIn));
        callers.add(service_->logout());
    }
    getInTime(callers.waitForAll());
    *isOver = true;
    EXPECT_EQ(getInTime(mistakes.value()), 0);
    for (const auto& login : logins) {
        EXPECT_TRUE(isWhole(getInTime(login.value())));
    }
    EXPECT_EQ(server_->mostAtOnce(profileLine), 1);
    const Steps steps = journal_->take();
    Steps events;
    std::copy_if(steps.begin(), steps.end(), std::back_inserter(events),
                 [](const std::string& step) { return step.starts_with("did"); });
    EXPECT_EQ(events, second->take());
    const auto lines = server_->lines();
    EXPECT_EQ(countOf(lines, "GET /items"), callersOfEachKind);
    EXPECT_EQ(countOf(events, "didLogin"), 2 * callersOfEachKind + countOf(lines, profileLine));
    EXPECT_EQ(countOf(events, "didLogout"), countOf(lines, logoutLine));
    EXPECT_EQ(countOf(steps, "setToken"), countOf(lines, tokenLine));
    EXPECT_EQ(countOf(steps, "setClientIdentifier"), countOf(lines, tokenLine));
    EXPECT_EQ(countOf(steps, "removeToken"), countOf(events, "didLogout"));
    EXPECT_EQ(countOf(steps, "removeClientIdentifier"), countOf(events, "didLogout"));
    const auto token = tokenInStorage();
    EXPECT_TRUE(!token || isWhole(*token));
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
