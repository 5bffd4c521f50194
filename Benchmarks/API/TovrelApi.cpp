#include <Platform/Coding/Date.hpp>
#include <Platform/URLLoading/URLSession.hpp>
#include <TovrelTesting/InMemoryTovrelAccountsStorage.hpp>
#include <TovrelWebServices/Services/DefaultApiWebService.hpp>
#include <TovrelWebServices/Tovrel Accounts/KeychainTovrelAccountsStorage.hpp>
#include <TovrelWebServices/Transport/TovrelURLSessionProvider.hpp>
#include <TovrelWebServices/Transport/URLSessionWebRequestExecutor.hpp>

#include <API/ApiAnswer.hpp>
#include <API/ApiClients.hpp>
#include <HTTP/TovrelWorkers.hpp>
#include <optional>

namespace tovrel::benchmarks {

namespace {

enum class SessionPlace { caller, pool };

/// One session without a response cache, which the loops have not either.
class PlainSessionProvider final : public URLSessionProvider {
public:
    explicit PlainSessionProvider(URLSessionConfiguration configuration)
        : session_(URLSession::make(std::move(configuration))) {}

    [[nodiscard]] std::shared_ptr<URLSession> session() const override { return session_; }
    void updateCache(const WebRequestCacheDefinition& /*definition*/) override {}

private:
    std::shared_ptr<URLSession> session_;
};

TovrelAccountsClient accountsClient() {
    return TovrelAccountsClient("benchmarks", "secret", TovrelAccountsRealm::tovrelstudios,
                                TovrelAccountsEnvironment::test(), {"content"});
}

TovrelAccountsToken storedToken() {
    TovrelAccountsToken token;
    token.accessToken = accessToken();
    token.accessTokenExpiresIn = 3600;
    token.refreshToken = accessToken();
    token.refreshTokenExpiresIn = 36000;
    token.timestamp = Date::now().secondsSince1970();
    token.tokenType = "Bearer";
    token.scope = "openid content";
    return token;
}

Async<void> store(std::shared_ptr<TovrelAccountsStorage> storage) {
    co_await storage->setToken(accountsClient(), storedToken());
    co_await storage->setClientIdentifier(accountsClient());
}

class ApiClient final : public HTTPClient {
public:
    ApiClient(const Endpoint& endpoint, unsigned connections, SessionPlace place,
              std::shared_ptr<TovrelAccountsStorage> storage) {
        URLSessionConfiguration configuration = sessionConfiguration(endpoint, connections);
        configuration.connectionOverrides.emplace_back(apiHost(), std::nullopt, "127.0.0.1", endpoint.port);
        if (place == SessionPlace::caller) {
            configuration.executor = workers_.executor();
            provider_ = std::make_shared<PlainSessionProvider>(std::move(configuration));
        } else {
            provider_ = TovrelURLSessionProvider::make(std::move(configuration));
        }
        workers_.run(Load(apiPath, 1, 1, 0), [&storage] { return store(storage); });
        service_ = DefaultApiWebService::make(accountsClient(), std::move(storage),
                                              URLSessionWebRequestExecutor::make(provider_));
    }

    void get(const Load& load) override {
        workers_.run(load, [this, &load] { return callOnce(service_, load); });
    }

private:
    static Async<void> callOnce(std::shared_ptr<ApiWebService> service, Load load) {
        const auto request = service->buildRequest(std::string_view(load.path).substr(1), HttpMethod::get);
        const auto response = co_await service->execute<std::vector<Record>>(request);
        load.check(response.statusCode, response.rawData->size());
    }

    TovrelWorkers workers_;
    std::shared_ptr<URLSessionProvider> provider_;
    std::shared_ptr<ApiWebService> service_;
};

HTTPPeer peer(const char* name, SessionPlace place, std::shared_ptr<TovrelAccountsStorage> (*makeStorage)()) {
    return HTTPPeer(name, [place, makeStorage](const Endpoint& endpoint, unsigned connections) {
        return std::make_unique<ApiClient>(endpoint, connections, place, makeStorage());
    });
}

std::shared_ptr<TovrelAccountsStorage> inMemory() {
    return testing::InMemoryTovrelAccountsStorage::make();
}

std::shared_ptr<TovrelAccountsStorage> inKeychain() {
    return KeychainTovrelAccountsStorage::make(Keychain::inMemory());
}

} // namespace

HTTPPeer tovrelApiOnOneLoop() {
    return peer("our API service, one loop, no cache", SessionPlace::caller, inMemory);
}

HTTPPeer tovrelApiOnThePool() {
    return peer("our API service, on the pool", SessionPlace::pool, inMemory);
}

HTTPPeer tovrelApiWithKeychain() {
    return peer("the same, token in a keychain", SessionPlace::pool, inKeychain);
}

} // namespace tovrel::benchmarks
