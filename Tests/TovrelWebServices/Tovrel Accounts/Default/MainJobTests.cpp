#include <Platform/Concurrency/TaskGroup.hpp>
#include <QZFrameworkCoreLogic/Services.hpp>
#include <TovrelTesting/LocalDeployment.hpp>
#include <TovrelWebServices/Services/DefaultApiWebService.hpp>
#include <TovrelWebServices/Services/DefaultCdnWebService.hpp>
#include <TovrelWebServices/Services/Records.hpp>
#include <TovrelWebServices/Services/TovrelDomainServiceError.hpp>
#include <TovrelWebServices/Tovrel Accounts/AccountsErrorPredicates.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/AccountsServiceTest.hpp>
#include <TovrelWebServices/Tovrel Accounts/KeychainTovrelAccountsStorage.hpp>
#include <TovrelWebServices/Transport/TovrelURLSessionProvider.hpp>
#include <TovrelWebServices/Transport/URLSessionWebRequestExecutor.hpp>

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tovrel::tests {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace tovrel::testing;

constexpr std::uint64_t fileSize = 20'000'000;
constexpr double accessTokenLifetime = 300.0;

/// A time that a test moves on, for both sides.
std::function<Date()> clockOf(const std::shared_ptr<std::atomic<double>>& secondsAhead) {
    return [secondsAhead] { return Date::now().advancedBy(*secondsAhead); };
}

AccountsServerOptions accountsOptions(std::shared_ptr<const IdentityIssuer> issuer, std::function<Date()> clock) {
    AccountsServerOptions options;
    options.clients = {AccountsServerClient("reader", "canary-secret")};
    options.identityIssuers = {TrustedIdentityIssuer("apple", std::move(issuer), "reader.app")};
    options.clock = std::move(clock);
    return options;
}

/// Counts the requests for the profile that are under way at the same time.
class WatchedExecutor final : public WebRequestExecutor, public std::enable_shared_from_this<WatchedExecutor> {
public:
    explicit WatchedExecutor(std::shared_ptr<WebRequestExecutor> executor) : executor_(std::move(executor)) {}

    Async<WebResponse> data(std::shared_ptr<const WebRequestable> request) override {
        return watch(shared_from_this(), std::move(request));
    }
    Async<void> execute(std::shared_ptr<const WebRequestable> request) override {
        return executor_->execute(std::move(request));
    }

    int mostProfileRequestsAtOnce() const { return most_; }

private:
    static Async<WebResponse> watch(std::shared_ptr<WatchedExecutor> self,
                                    std::shared_ptr<const WebRequestable> request) {
        const bool isProfile = request->method() == HttpMethod::get && request->url().path().ends_with("/profiles/me");
        if (isProfile) {
            const int now = ++self->now_;
            self->most_ = std::max(self->most_.load(), now);
        }
        WebResponse response = co_await self->executor_->data(std::move(request));
        if (isProfile) {
            --self->now_;
        }
        co_return response;
    }

    std::shared_ptr<WebRequestExecutor> executor_;
    std::atomic<int> now_ = 0;
    std::atomic<int> most_ = 0;
};

/// How many items a call brings; none where a logout has ended the session that the call was sent with.
Async<std::size_t> itemsOf(Async<ApiWebResponseObject<std::vector<Item>>> call) {
    try {
        const auto envelope = co_await std::move(call);
        co_return envelope.data->size();
    } catch (const WebServiceError& error) {
        EXPECT_EQ(error, WebServiceError::unauthorized());
    }
    co_return 0;
}

/// An application with the library and its servers, over TLS.
class MainJob : public AsyncTest {
protected:
    using Steps = std::vector<std::string>;

    void SetUp() override {
        std::vector<std::string> items;
        for (int number = 1; number <= 45; ++number) {
            items.push_back(R"({"id":)" + std::to_string(number) + R"(,"title":"t","created_at":978307260000})");
        }
        deployment_->content().setCollection("/items", std::move(items));
        deployment_->content().setFile("/file", ContentFile(GeneratedBytes(fileSize)));
        services_.register_<TovrelAccountsWebService>(accounts_);
        api_ = DefaultApiWebService::make(services_);
        cdn_ = DefaultCdnWebService::make(services_);
        subscription_ = accounts_->eventPublisher().subscribe(
            [journal = journal_](const TovrelAccountsEvent& event) { journal->add(nameOf(event)); });
    }

    AccountsServer& server() { return deployment_->accounts(); }

    std::string identityToken() const {
        IdentityClaims claims("user-1", "reader.app");
        claims.email = "ada@example.org";
        return issuer_->mint(claims, clockOf(secondsAhead_)());
    }

    Async<TovrelAccountsToken> signIn(std::optional<TovrelAccountsUserProfile> profile) {
        return accounts_->loginWithApple(identityToken(), "user-1", std::move(profile));
    }

    ApiWebService::Request apiRequest(std::string_view path) const { return api_->buildRequest(path, HttpMethod::get); }

    /// Method and path of what arrived since the last call.
    Steps arrivals() {
        Steps lines;
        for (const auto& request : deployment_->backEnd().requests()) {
            lines.push_back(request.method + " " + std::string(request.path()));
        }
        deployment_->backEnd().clearRequests();
        return lines;
    }

    Steps events() { return journal_->take(); }

    /// Which entries the storage has.
    Steps stored() {
        Steps entries;
        const auto note = [&entries](bool isThere, const char* name) {
            if (isThere) {
                entries.emplace_back(name);
            }
        };
        note(storedToken().has_value(), "token");
        note(getInTime(storage_->clientIdentifier(client_)) == "reader", "identifier");
        note(getInTime(storage_->userProfile(client_)).has_value(), "profile");
        note(getInTime(storage_->appleUserProfile(client_)).has_value(), "apple profile");
        note(getInTime(storage_->appleSignInUser(client_)) == "user-1", "apple user");
        return entries;
    }

    std::optional<TovrelAccountsToken> storedToken() { return getInTime(storage_->token(client_)); }

    static constexpr const char* tokenLine = "POST /realms/tovrelstudios/protocol/openid-connect/token";
    static constexpr const char* logoutLine = "POST /realms/tovrelstudios/protocol/openid-connect/logout";
    static constexpr const char* profileLine = "GET /api/v0/profiles/me";

    const TovrelAccountsClient client_{
        "reader", "canary-secret", TovrelAccountsRealm::tovrelstudios, TovrelAccountsEnvironment::test(), {"profile"}};
    const TovrelAccountsUserProfile ada_{"Ada", "Lovelace", "ada@example.org"};
    std::shared_ptr<std::atomic<double>> secondsAhead_ = std::make_shared<std::atomic<double>>(0.0);
    std::shared_ptr<IdentityIssuer> issuer_ = IdentityIssuer::make();
    std::unique_ptr<LocalDeployment> deployment_ =
        LocalDeployment::start(accountsOptions(issuer_, clockOf(secondsAhead_)));
    std::shared_ptr<TovrelAccountsStorage> storage_ = KeychainTovrelAccountsStorage::make(Keychain::inMemory());
    std::shared_ptr<WatchedExecutor> executor_ = std::make_shared<WatchedExecutor>(
        URLSessionWebRequestExecutor::make(TovrelURLSessionProvider::make(deployment_->sessionConfiguration())));
    std::shared_ptr<DefaultTovrelAccountsWebService> accounts_ = DefaultTovrelAccountsWebService::make(
        client_, storage_, executor_, clockOf(secondsAhead_), [] { return std::make_shared<ScriptedAppleSignIn>(); });
    Services services_;
    std::shared_ptr<ApiWebService> api_;
    std::shared_ptr<CdnWebService> cdn_;
    std::shared_ptr<StepJournal> journal_ = std::make_shared<StepJournal>();
    Subscription subscription_;
};

} // namespace

TEST_F(MainJob, IsDoneFromTheFirstLoginToTheDeletionOfTheAccount) {
    // The client logs in.
    const TovrelAccountsToken first = getInTime(accounts_->loginWithClient());
    EXPECT_THAT(events(), ElementsAre("didLogin"));
    EXPECT_THAT(arrivals(), ElementsAre(tokenLine));
    EXPECT_THAT(stored(), ElementsAre("token", "identifier"));

    // A list in three pages.
    std::vector<std::size_t> pages;
    std::optional<std::string> next;
    do {
        const auto page = getInTime(api_->executeEnvelope<std::vector<Item>>(
            apiRequest("items")->setQueryParameter("limit", "20")->setQueryParameter("next", next)));
        pages.push_back(page.data->size());
        EXPECT_EQ(page.data->front().createdAt, Date(60));
        next = page.meta.pagination->next;
    } while (next);
    EXPECT_THAT(pages, ElementsAre(20, 20, 5));
    EXPECT_THAT(events(), ElementsAre("didLogin", "didLogin", "didLogin"));
    EXPECT_THAT(arrivals(), ElementsAre("GET /items", "GET /items", "GET /items"));

    // A file.
    const WebResponse file = getInTime(cdn_->execute(cdn_->buildRequest("file", HttpMethod::get)));
    EXPECT_EQ(file.data, Data(generatedBytes(0, fileSize)));
    EXPECT_THAT(events(), ElementsAre("didLogin"));
    EXPECT_THAT(arrivals(), ElementsAre("GET /file"));
    EXPECT_EQ(storedToken(), first);

    // The token expires and is refreshed on the way.
    *secondsAhead_ = accessTokenLifetime + 1.0;
    EXPECT_EQ(getInTime(api_->execute(apiRequest("items"))).meta.code, "ok");
    EXPECT_THAT(events(), ElementsAre("didLogin"));
    EXPECT_THAT(arrivals(), ElementsAre(tokenLine, "GET /items"));
    EXPECT_EQ(server().counts().refreshes, 1U);
    EXPECT_NE(storedToken()->accessToken, first.accessToken);
    EXPECT_THAT(stored(), ElementsAre("token", "identifier"));

    // A user signs in.
    const TovrelAccountsToken exchanged = getInTime(signIn(ada_));
    EXPECT_THAT(events(), ElementsAre("didUpdateUserProfile", "didLogin"));
    EXPECT_THAT(arrivals(), ElementsAre(tokenLine));
    EXPECT_EQ(storedToken(), exchanged);
    EXPECT_THAT(stored(), ElementsAre("token", "identifier", "profile", "apple profile", "apple user"));

    // The profile.
    EXPECT_EQ(getInTime(accounts_->userProfile(TovrelAccountsType::appleSignIn)), ada_);
    EXPECT_THAT(events(), ElementsAre("didLogin"));
    EXPECT_THAT(arrivals(), ElementsAre(profileLine));
    EXPECT_EQ(getInTime(accounts_->userProfile(TovrelAccountsType::anonymous)), ada_);
    EXPECT_THAT(events(), IsEmpty());
    EXPECT_THAT(arrivals(), IsEmpty());

    // A refusal in the server's words changes nothing.
    const auto refusal = errorOf<TovrelDomainServiceError>(api_->execute(apiRequest("nowhere")));
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->statusCode(), 404);
    EXPECT_EQ(refusal->code(), "not_found");
    EXPECT_THAT(events(), ElementsAre("didLogin"));
    EXPECT_THAT(arrivals(), ElementsAre("GET /nowhere"));
    EXPECT_EQ(storedToken(), exchanged);

    // The server has ended the login: nobody is asked about it any more.
    server().endSessions();
    EXPECT_EQ(errorOf<WebServiceError>(api_->execute(apiRequest("items"))), WebServiceError::unauthorized());
    EXPECT_THAT(events(), ElementsAre("didLogin", "didLogout"));
    EXPECT_THAT(arrivals(), ElementsAre("GET /items"));
    EXPECT_THAT(stored(), ElementsAre("profile", "apple profile", "apple user"));

    // The user signs in again, without telling a profile, and logs out.
    getInTime(signIn(std::nullopt));
    EXPECT_THAT(events(), ElementsAre("didUpdateUserProfile", "didLogin"));
    const auto exchange = deployment_->backEnd().requests().front();
    EXPECT_NE(exchange.body.find("&user_profile=%7B%22email%22"), std::string::npos);
    EXPECT_THAT(arrivals(), ElementsAre(tokenLine));
    getInTime(accounts_->logout());
    EXPECT_THAT(events(), ElementsAre("didLogout"));
    EXPECT_THAT(arrivals(), ElementsAre(logoutLine));
    EXPECT_EQ(server().counts().logouts, 1U);
    EXPECT_THAT(server().liveSessions(), IsEmpty());
    EXPECT_THAT(stored(), ElementsAre("profile", "apple profile", "apple user"));

    // The account goes.
    getInTime(signIn(std::nullopt));
    EXPECT_THAT(events(), ElementsAre("didUpdateUserProfile", "didLogin"));
    EXPECT_THAT(arrivals(), ElementsAre(tokenLine));
    getInTime(accounts_->deleteAccount());
    EXPECT_THAT(events(), ElementsAre("didLogin", "didDeleteAccount"));
    EXPECT_THAT(arrivals(), ElementsAre("DELETE /api/v0/profiles/me"));
    EXPECT_THAT(server().users(), IsEmpty());
    EXPECT_THAT(server().liveSessions(), IsEmpty());
    EXPECT_THAT(stored(), ElementsAre("profile", "apple profile", "apple user"));

    // Nobody is left to log out.
    getInTime(accounts_->logout());
    EXPECT_EQ(getInTime(accounts_->retrieveAccessToken()), std::nullopt);
    EXPECT_THAT(events(), IsEmpty());
    EXPECT_THAT(arrivals(), IsEmpty());
    EXPECT_EQ(server().counts().refusedTokenRequests, 0U);
}

TEST_F(MainJob, GoesOnInAnotherServiceOverTheSameStorage) {
    const TovrelAccountsToken token = getInTime(accounts_->loginWithClient());
    const auto other = DefaultTovrelAccountsWebService::make(client_, storage_, executor_);
    EXPECT_EQ(getInTime(other->loginWithClient()), token);
    EXPECT_EQ(getInTime(DefaultApiWebService::make(other)->execute(apiRequest("items"))).meta.code, "ok");
    EXPECT_EQ(server().counts().clientLogins, 1U);
}

TEST_F(MainJob, IsLoggedOutOfWhenTheServerTakesNoRefreshTokenAndTheHostSaysSo) {
    getInTime(accounts_->loginWithClient());
    server().endSessions();
    *secondsAhead_ = accessTokenLifetime + 1.0;
    static_cast<void>(events());
    std::exception_ptr failure;
    try {
        getInTime(api_->execute(apiRequest("items")));
    } catch (...) {
        failure = std::current_exception();
    }
    ASSERT_TRUE(failure);
    EXPECT_TRUE(isSignedOut(failure));
    EXPECT_THAT(events(), IsEmpty());
    EXPECT_THAT(stored(), ElementsAre("token", "identifier")) << "a refresh that fails changes nothing";
    getInTime(accounts_->logout(TovrelAccountsLogoutReason(2)));
    EXPECT_THAT(events(), ElementsAre("didLogout"));
    EXPECT_EQ(getInTime(api_->execute(apiRequest("items"))).meta.code, "ok");
}

TEST_F(MainJob, KeepsItsPromisesToTwoHundredCallersOfEachKind) {
    constexpr int callersOfEachKind = 200;
    static_cast<void>(getInTime(signIn(ada_)));
    static_cast<void>(events());
    const auto second = std::make_shared<StepJournal>();
    const Subscription subscription = accounts_->eventPublisher().subscribe(
        [second](const TovrelAccountsEvent& event) { second->add(nameOf(event)); });
    TaskGroup callers;
    std::vector<ChildTask<TovrelAccountsToken>> logins;
    std::vector<ChildTask<std::size_t>> calls;
    for (int caller = 0; caller < callersOfEachKind; ++caller) {
        calls.push_back(callers.add(itemsOf(api_->executeEnvelope<std::vector<Item>>(apiRequest("items")))));
        logins.push_back(callers.add(accounts_->loginWithClient()));
        callers.add(accounts_->userProfile(TovrelAccountsType::appleSignIn));
        callers.add(accounts_->logout());
    }
    getInTime(callers.waitForAll());
    for (const auto& login : logins) {
        EXPECT_FALSE(getInTime(login.value()).accessToken.empty());
    }
    for (const auto& call : calls) {
        const std::size_t items = getInTime(call.value());
        EXPECT_TRUE(items == 20 || items == 0) << items;
    }
    EXPECT_EQ(executor_->mostProfileRequestsAtOnce(), 1);
    EXPECT_EQ(server().counts().refusedTokenRequests, 0U);

    const Steps all = events();
    EXPECT_EQ(all, second->take());
    const Steps lines = arrivals();
    const auto profileRequests = std::ranges::count(lines, profileLine);
    EXPECT_EQ(std::ranges::count(all, "didLogin"), 2 * callersOfEachKind + profileRequests);
    EXPECT_GE(std::ranges::count(all, "didLogout"), std::ranges::count(lines, logoutLine));
    EXPECT_EQ(std::ranges::count(all, "didUpdateUserProfile"), 0);

    const auto token = storedToken();
    if (token && server().session(token->accessToken)) {
        EXPECT_EQ(getInTime(api_->execute(apiRequest("items"))).meta.code, "ok");
    }
    EXPECT_EQ(getInTime(storage_->clientIdentifier(client_)).value_or("reader"), "reader");
}

} // namespace tovrel::tests
