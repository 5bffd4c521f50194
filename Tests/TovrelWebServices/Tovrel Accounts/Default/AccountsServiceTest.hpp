#pragma once

#include <Platform/Coding/Base64.hpp>
#include <Platform/Concurrency/Event.hpp>
#include <Platform/Concurrency/Hop.hpp>
#include <TovrelTesting/InMemoryTovrelAccountsStorage.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInService.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/DefaultTovrelAccountsWebService.hpp>
#include <TovrelWebServices/Transport/WebRequestable.hpp>
#include <TovrelWebServices/Transport/WebRequestExecutor.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <Support/Await.hpp>
#include <utility>
#include <vector>

namespace tovrel::tests {

/// The steps of a test in the order in which they happened.
class StepJournal {
public:
    void add(std::string step) {
        const std::scoped_lock lock(mutex_);
        steps_.push_back(std::move(step));
    }

    /// What was written since the last call.
    std::vector<std::string> take() {
        const std::scoped_lock lock(mutex_);
        return std::exchange(steps_, {});
    }

private:
    std::mutex mutex_;
    std::vector<std::string> steps_;
};

/// A storage that writes down what changes it, and every read of the client's identifier.
class JournalStorage final : public TovrelAccountsStorage {
public:
    explicit JournalStorage(std::shared_ptr<StepJournal> journal) : journal_(std::move(journal)) {}

    Async<std::optional<TovrelAccountsToken>> token(TovrelAccountsClient client) override {
        return storage_->token(std::move(client));
    }
    Async<void> removeToken(TovrelAccountsClient client) override {
        return noted("removeToken", storage_->removeToken(std::move(client)));
    }
    Async<std::optional<TovrelAccountsUserProfile>> userProfile(TovrelAccountsClient client) override {
        return storage_->userProfile(std::move(client));
    }
    Async<std::optional<TovrelAccountsUserProfile>> appleUserProfile(TovrelAccountsClient client) override {
        return storage_->appleUserProfile(std::move(client));
    }
    Async<void> setAppleUserProfile(TovrelAccountsClient client, TovrelAccountsUserProfile profile) override {
        return noted("setAppleUserProfile", storage_->setAppleUserProfile(std::move(client), std::move(profile)));
    }
    Async<void> setToken(TovrelAccountsClient client, TovrelAccountsToken token) override {
        return noted("setToken", storage_->setToken(std::move(client), std::move(token)));
    }
    Async<void> setUserProfile(TovrelAccountsClient client, TovrelAccountsUserProfile profile) override {
        return noted("setUserProfile", storage_->setUserProfile(std::move(client), std::move(profile)));
    }
    Async<std::optional<std::string>> clientIdentifier(TovrelAccountsClient client) override {
        ++identifierReads;
        return storage_->clientIdentifier(std::move(client));
    }
    Async<void> setClientIdentifier(TovrelAccountsClient client) override {
        return noted("setClientIdentifier", storage_->setClientIdentifier(std::move(client)));
    }
    Async<void> removeClientIdentifier(TovrelAccountsClient client) override {
        return noted("removeClientIdentifier", storage_->removeClientIdentifier(std::move(client)));
    }
    Async<std::optional<std::string>> appleSignInUser(TovrelAccountsClient client) override {
        return storage_->appleSignInUser(std::move(client));
    }
    Async<void> setAppleSignInUser(std::string user, TovrelAccountsClient client) override {
        return noted("setAppleSignInUser", storage_->setAppleSignInUser(std::move(user), std::move(client)));
    }

    std::atomic<int> identifierReads = 0;

private:
    Async<void> noted(std::string step, Async<void> operation) {
        return note(journal_, std::move(step), std::move(operation));
    }

    static Async<void> note(std::shared_ptr<StepJournal> journal, std::string step, Async<void> operation) {
        co_await shielded(std::move(operation));
        journal->add(std::move(step));
    }

    std::shared_ptr<StepJournal> journal_;
    std::shared_ptr<TovrelAccountsStorage> storage_ = testing::InMemoryTovrelAccountsStorage::make();
};

/// A server at the end of an executor: answers by method and path, and holds what it is told to hold.
class ScriptedServer final : public WebRequestExecutor, public std::enable_shared_from_this<ScriptedServer> {
public:
    using Answer = std::function<WebResponse()>;

    struct Request {
        std::string line; // method and URL without the scheme and host
        std::string body;
        std::shared_ptr<const WebRequestable> request;

        Request(std::string itsLine, std::string itsBody, std::shared_ptr<const WebRequestable> itself)
            : line(std::move(itsLine)), body(std::move(itsBody)), request(std::move(itself)) {}
    };

    void answer(const std::string& line, Answer answer) {
        const std::scoped_lock lock(mutex_);
        answers_[line] = std::move(answer);
    }

    void answer(const std::string& line, std::int64_t statusCode, std::optional<std::string> body) {
        const std::optional<Data> data = body ? std::optional(Data(*body)) : std::nullopt;
        answer(line, [statusCode, data] { return WebResponse(data, HTTPHeaders(), statusCode); });
    }

    /// Makes requests of this kind wait.
    void hold(const std::string& line) {
        const std::scoped_lock lock(mutex_);
        gates_[line] = Event::make();
    }

    void release(const std::string& line) {
        std::shared_ptr<Event> gate;
        {
            const std::scoped_lock lock(mutex_);
            gate = std::exchange(gates_[line], nullptr);
        }
        gate->set();
    }

    std::vector<Request> requests() const {
        const std::scoped_lock lock(mutex_);
        return requests_;
    }

    std::vector<std::string> lines() const {
        std::vector<std::string> lines;
        for (const Request& request : requests()) {
            lines.push_back(request.line);
        }
        return lines;
    }

    /// Blocks the test until so many requests have arrived.
    bool waitForRequests(std::size_t count) {
        std::unique_lock lock(mutex_);
        return arrived_.wait_for(lock, deadline, [&] { return requests_.size() >= count; });
    }

    int mostAtOnce(const std::string& line) const {
        const std::scoped_lock lock(mutex_);
        const auto found = mostAtOnce_.find(line);
        return found == mostAtOnce_.end() ? 0 : found->second;
    }

    Async<WebResponse> data(std::shared_ptr<const WebRequestable> request) override {
        return respond(shared_from_this(), std::move(request));
    }

    Async<void> execute(std::shared_ptr<const WebRequestable> request) override {
        ADD_FAILURE() << "the accounts service judges no status by its executor";
        return drop(respond(shared_from_this(), std::move(request)));
    }

private:
    static Async<void> drop(Async<WebResponse> response) { static_cast<void>(co_await std::move(response)); }

    static Async<WebResponse> respond(std::shared_ptr<ScriptedServer> self,
                                      std::shared_ptr<const WebRequestable> request) {
        const std::string line =
            std::string(request->method().rawValue()) + " " + request->buildURLRequest().url.path();
        std::shared_ptr<Event> gate;
        Answer answer;
        {
            const std::scoped_lock lock(self->mutex_);
            self->requests_.emplace_back(line, request->body() ? request->body()->string() : "", request);
            gate = self->gates_[line];
            answer = self->answers_[line];
            const int atOnce = ++self->atOnce_[line];
            self->mostAtOnce_[line] = std::max(self->mostAtOnce_[line], atOnce);
        }
        self->arrived_.notify_all();
        std::exception_ptr failure;
        if (gate) {
            try {
                co_await Event::wait(std::move(gate));
            } catch (...) {
                failure = std::current_exception();
            }
        }
        {
            const std::scoped_lock lock(self->mutex_);
            --self->atOnce_[line];
        }
        if (failure) {
            std::rethrow_exception(failure);
        }
        if (!answer) {
            throw WebServiceError::notFound();
        }
        co_return answer();
    }

    mutable std::mutex mutex_;
    std::condition_variable arrived_;
    std::map<std::string, Answer> answers_;
    std::map<std::string, std::shared_ptr<Event>> gates_;
    std::map<std::string, int> atOnce_;
    std::map<std::string, int> mostAtOnce_;
    std::vector<Request> requests_;
};

/// A platform that knows one Apple credential.
class ScriptedAppleSignIn final : public TovrelAppleSignInService {
public:
    Async<std::optional<TovrelAppleCredentialState>> getCredentialState(TovrelAccountsClient /*client*/) override {
        return tell(gate, state, failure);
    }
    void requestAuthorization(Completion /*completion*/) override { ADD_FAILURE() << "nobody signs in here"; }

    std::optional<TovrelAppleCredentialState> state = TovrelAppleCredentialState::authorized;
    std::shared_ptr<Event> gate;
    /// Thrown in place of an answer.
    std::exception_ptr failure;

private:
    static Async<std::optional<TovrelAppleCredentialState>>
    tell(std::shared_ptr<Event> gate, std::optional<TovrelAppleCredentialState> state, std::exception_ptr failure) {
        if (gate) {
            co_await shielded(Event::wait(std::move(gate)));
        }
        if (failure) {
            std::rethrow_exception(failure);
        }
        co_return state;
    }
};

inline std::string nameOf(const TovrelAccountsEvent& event) {
    switch (event.kind()) {
    case TovrelAccountsEvent::Kind::didUpdateUserProfile:
        return "didUpdateUserProfile";
    case TovrelAccountsEvent::Kind::didLogin:
        return "didLogin";
    case TovrelAccountsEvent::Kind::didLogout:
        return "didLogout";
    case TovrelAccountsEvent::Kind::didDeleteAccount:
        return "didDeleteAccount";
    }
    return "unknown";
}

/// An accounts service with a server, a storage and a clock that the test commands.
class AccountsServiceTest : public AsyncTest {
protected:
    using Steps = std::vector<std::string>;

    static constexpr double receivedAt = 1700000000.0;
    static constexpr const char* tokenLine = "POST /realms/tovrelstudios/protocol/openid-connect/token";
    static constexpr const char* logoutLine = "POST /realms/tovrelstudios/protocol/openid-connect/logout";
    static constexpr const char* profileLine = "GET /api/v0/profiles/me";
    static constexpr const char* deletionLine = "DELETE /api/v0/profiles/me";

    static TovrelAccountsClient exampleClient(std::string identifier = "reader") {
        return TovrelAccountsClient(std::move(identifier), "canary-secret", TovrelAccountsRealm::tovrelstudios,
                                    TovrelAccountsEnvironment::test(), {"content"});
    }

    /// A token response as servers send it.
    static std::string tokenJSON(const std::string& accessToken, const std::string& extra = {}) {
        return R"({"access_token":")" + accessToken +
               R"(","expires_in":300,"refresh_expires_in":1800,"refresh_token":"canary-refresh","token_type":"Bearer",)" +
               R"("not-before-policy":0,"scope":"content")" + extra + "}";
    }

    /// The member of a token response that holds an ID token with this payload.
    static std::string idTokenMember(const std::string& payload) {
        return R"(,"id_token":"h.)" + base64Encoded(payload) + R"(.s")";
    }

    static std::string envelope(const std::string& data) {
        return R"({"meta":{"code":"ok","message":"Fine"},"data":)" + data + "}";
    }

    static TovrelAccountsToken storedToken() {
        TovrelAccountsToken token;
        token.accessToken = "canary-stored";
        token.accessTokenExpiresIn = 300.0;
        token.refreshToken = "canary-refresh";
        token.refreshTokenExpiresIn = 1800.0;
        token.timestamp = receivedAt;
        token.tokenType = "Bearer";
        token.scope = "content";
        return token;
    }

    void store(const TovrelAccountsToken& token, const std::string& clientIdentifier = "reader") {
        getInTime(storage_->setToken(client_, token));
        getInTime(storage_->setClientIdentifier(exampleClient(clientIdentifier)));
        static_cast<void>(journal_->take());
    }

    std::optional<TovrelAccountsToken> tokenInStorage() { return getInTime(storage_->token(client_)); }
    std::optional<std::string> clientIdentifierInStorage() { return getInTime(storage_->clientIdentifier(client_)); }

    void advance(double seconds) { secondsSinceStart_ = secondsSinceStart_ + seconds; }

    /// Subscribes the journal to the events.
    void observe() {
        subscription_ = service_->eventPublisher().subscribe(
            [journal = journal_](const TovrelAccountsEvent& event) { journal->add(nameOf(event)); });
    }

    std::shared_ptr<DefaultTovrelAccountsWebService> makeService(TovrelAccountsClient client) {
        return DefaultTovrelAccountsWebService::make(
            std::move(client), storage_, server_,
            [this] { return Date::fromSecondsSince1970(receivedAt + secondsSinceStart_); },
            [this]() -> std::shared_ptr<TovrelAppleSignInService> { return appleSignIn_; });
    }

    const TovrelAccountsClient client_ = exampleClient();
    std::atomic<double> secondsSinceStart_ = 0.0;
    std::shared_ptr<StepJournal> journal_ = std::make_shared<StepJournal>();
    std::shared_ptr<JournalStorage> storage_ = std::make_shared<JournalStorage>(journal_);
    std::shared_ptr<ScriptedServer> server_ = std::make_shared<ScriptedServer>();
    std::shared_ptr<ScriptedAppleSignIn> appleSignIn_ = std::make_shared<ScriptedAppleSignIn>();
    std::shared_ptr<DefaultTovrelAccountsWebService> service_ = makeService(client_);
    Subscription subscription_;
};

/// The error of this type that an operation fails with; absent when it succeeds. Other errors pass through.
template <class E, class T>
std::optional<E> errorOf(Async<T> operation) {
    try {
        static_cast<void>(getInTime(std::move(operation)));
    } catch (const E& error) {
        return error;
    }
    return std::nullopt;
}

} // namespace tovrel::tests
