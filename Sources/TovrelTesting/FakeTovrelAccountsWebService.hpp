#pragma once

#include <Platform/Concurrency/Event.hpp>
#include <Platform/Events/PassthroughSubject.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsWebService.hpp>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tovrel::testing {

/// One call of a `FakeTovrelAccountsWebService`, with the parameters that it had.
struct TOVREL_EXPORT FakeTovrelAccountsCall {
    enum class Operation {
        loginWithClient,
        loginWithApple,
        logout,
        retrieveAccessToken,
        deleteAccount,
        isLoggedIn,
        userProfile,
        userHasSignedUp
    };

    Operation operation;
    std::optional<std::string> identityToken;
    std::optional<std::string> user;
    std::optional<TovrelAccountsUserProfile> userProfile;
    std::optional<TovrelAccountsLogoutReason> reason;
    std::optional<TovrelAccountsType> type;

    explicit FakeTovrelAccountsCall(Operation calledOperation) : operation(calledOperation) {}

    friend bool operator==(const FakeTovrelAccountsCall&, const FakeTovrelAccountsCall&) = default;
};

/// An accounts service without a server: it answers by a script and remembers what it was asked. Thread-safe.
///
/// What an answer throws is the failure of the operation. Without a script, logins and `retrieveAccessToken` give a
/// bearer token valid for an hour, logging out and deleting succeed, everyone is logged in and has signed up, and no
/// one has a profile. It sends no event but those that the test sends.
class TOVREL_EXPORT FakeTovrelAccountsWebService final
    : public TovrelAccountsWebService,
      public std::enable_shared_from_this<FakeTovrelAccountsWebService> {
public:
    /// A client of the production stage.
    [[nodiscard]] static TovrelAccountsClient exampleClient();
    /// A bearer token, valid for an hour from now.
    [[nodiscard]] static TovrelAccountsToken exampleToken();

    static std::shared_ptr<FakeTovrelAccountsWebService> make(std::shared_ptr<WebRequestExecutor> executor,
                                                              TovrelAccountsClient client = exampleClient());
    ~FakeTovrelAccountsWebService() override;

    /// Answers `loginWithClient`.
    void answerLoginWithClient(std::function<TovrelAccountsToken()> answer);
    /// Answers `loginWithApple`.
    void answerLoginWithApple(std::function<TovrelAccountsToken()> answer);
    /// Answers both forms of `logout`.
    void answerLogout(std::function<void(TovrelAccountsLogoutReason reason)> answer);
    /// Answers `retrieveAccessToken`.
    void answerRetrieveAccessToken(std::function<std::optional<TovrelAccountsToken>()> answer);
    /// Answers `deleteAccount`.
    void answerDeleteAccount(std::function<void()> answer);
    /// Answers `isLoggedIn`.
    void answerIsLoggedIn(std::function<bool(TovrelAccountsType type)> answer);
    /// Answers `userProfile`, and so `hasProfile`.
    void answerUserProfile(std::function<std::optional<TovrelAccountsUserProfile>(TovrelAccountsType type)> answer);
    /// Answers `userHasSignedUp`.
    void answerUserHasSignedUp(std::function<bool(TovrelAccountsType type)> answer);

    /// Makes the operations that begin from now on wait before they answer.
    void hold();
    /// Lets all waiting operations go on, and those to come.
    void release();

    /// Sends an event to the subscribers.
    void send(TovrelAccountsEvent event);

    /// What was asked, in order.
    [[nodiscard]] std::vector<FakeTovrelAccountsCall> calls() const;
    [[nodiscard]] std::size_t callCount(FakeTovrelAccountsCall::Operation operation) const;

    [[nodiscard]] const TovrelAccountsClient& client() const override { return client_; }
    [[nodiscard]] std::shared_ptr<WebRequestExecutor> executor() const override { return executor_; }
    [[nodiscard]] Publisher<TovrelAccountsEvent> eventPublisher() const override { return events_.publisher(); }
    [[nodiscard]] Async<TovrelAccountsToken> loginWithClient() override;
    [[nodiscard]] Async<TovrelAccountsToken>
    loginWithApple(std::string identityToken, std::string user,
                   std::optional<TovrelAccountsUserProfile> userProfile) override;
    using TovrelAccountsWebService::logout;
    [[nodiscard]] Async<void> logout(TovrelAccountsLogoutReason reason) override;
    [[nodiscard]] Async<std::optional<TovrelAccountsToken>> retrieveAccessToken() override;
    [[nodiscard]] Async<void> deleteAccount() override;
    [[nodiscard]] Async<bool> isLoggedIn(TovrelAccountsType type) override;
    [[nodiscard]] Async<std::optional<TovrelAccountsUserProfile>> userProfile(TovrelAccountsType type) override;
    [[nodiscard]] Async<bool> userHasSignedUp(TovrelAccountsType type) override;

private:
    struct Script {
        std::function<TovrelAccountsToken()> loginWithClient;
        std::function<TovrelAccountsToken()> loginWithApple;
        std::function<void(TovrelAccountsLogoutReason)> logout;
        std::function<std::optional<TovrelAccountsToken>()> retrieveAccessToken;
        std::function<void()> deleteAccount;
        std::function<bool(TovrelAccountsType)> isLoggedIn;
        std::function<std::optional<TovrelAccountsUserProfile>(TovrelAccountsType)> userProfile;
        std::function<bool(TovrelAccountsType)> userHasSignedUp;
    };

    FakeTovrelAccountsWebService(std::shared_ptr<WebRequestExecutor> executor, TovrelAccountsClient client);

    template <class Function>
    void script(Function Script::*answer, Function function);
    template <class Result, class... Arguments>
    static Async<Result> run(std::shared_ptr<FakeTovrelAccountsWebService> self, FakeTovrelAccountsCall call,
                             std::function<Result(Arguments...)> Script::*answer, Arguments... arguments);

    TovrelAccountsClient client_;
    std::shared_ptr<WebRequestExecutor> executor_;
    PassthroughSubject<TovrelAccountsEvent> events_;
    mutable std::mutex mutex_;
    Script script_;
    std::shared_ptr<Event> gate_;
    std::vector<FakeTovrelAccountsCall> calls_;
};

} // namespace tovrel::testing
