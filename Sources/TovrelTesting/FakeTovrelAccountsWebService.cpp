#include <Platform/Coding/Date.hpp>
#include <Platform/Concurrency/Hop.hpp>
#include <TovrelTesting/FakeTovrelAccountsWebService.hpp>

#include <algorithm>

namespace tovrel::testing {

using Operation = FakeTovrelAccountsCall::Operation;

TovrelAccountsClient FakeTovrelAccountsWebService::exampleClient() {
    return TovrelAccountsClient("example", "example-secret", TovrelAccountsRealm::tovrelstudios,
                                TovrelAccountsEnvironment::production(), {});
}

TovrelAccountsToken FakeTovrelAccountsWebService::exampleToken() {
    TovrelAccountsToken token;
    token.accessToken = "example-access-token";
    token.accessTokenExpiresIn = 3600.0;
    token.refreshToken = "example-refresh-token";
    token.refreshTokenExpiresIn = 7200.0;
    token.timestamp = Date::now().secondsSince1970();
    token.tokenType = "Bearer";
    return token;
}

std::shared_ptr<FakeTovrelAccountsWebService>
FakeTovrelAccountsWebService::make(std::shared_ptr<WebRequestExecutor> executor, TovrelAccountsClient client) {
    return std::shared_ptr<FakeTovrelAccountsWebService>(
        new FakeTovrelAccountsWebService(std::move(executor), std::move(client)));
}

FakeTovrelAccountsWebService::FakeTovrelAccountsWebService(std::shared_ptr<WebRequestExecutor> executor,
                                                           TovrelAccountsClient client)
    : client_(std::move(client)), executor_(std::move(executor)) {
    script_.loginWithClient = exampleToken;
    script_.loginWithApple = exampleToken;
    script_.logout = [](TovrelAccountsLogoutReason) {};
    script_.retrieveAccessToken = exampleToken;
    script_.deleteAccount = [] {};
    script_.isLoggedIn = [](TovrelAccountsType) { return true; };
    script_.userProfile = [](TovrelAccountsType) { return std::nullopt; };
    script_.userHasSignedUp = [](TovrelAccountsType) { return true; };
}

FakeTovrelAccountsWebService::~FakeTovrelAccountsWebService() = default;

template <class Function>
void FakeTovrelAccountsWebService::script(Function Script::*answer, Function function) {
    const std::scoped_lock lock(mutex_);
    script_.*answer = std::move(function);
}

void FakeTovrelAccountsWebService::answerLoginWithClient(std::function<TovrelAccountsToken()> answer) {
    script(&Script::loginWithClient, std::move(answer));
}

void FakeTovrelAccountsWebService::answerLoginWithApple(std::function<TovrelAccountsToken()> answer) {
    script(&Script::loginWithApple, std::move(answer));
}

void FakeTovrelAccountsWebService::answerLogout(std::function<void(TovrelAccountsLogoutReason)> answer) {
    script(&Script::logout, std::move(answer));
}

void FakeTovrelAccountsWebService::answerRetrieveAccessToken(
    std::function<std::optional<TovrelAccountsToken>()> answer) {
    script(&Script::retrieveAccessToken, std::move(answer));
}

void FakeTovrelAccountsWebService::answerDeleteAccount(std::function<void()> answer) {
    script(&Script::deleteAccount, std::move(answer));
}

void FakeTovrelAccountsWebService::answerIsLoggedIn(std::function<bool(TovrelAccountsType)> answer) {
    script(&Script::isLoggedIn, std::move(answer));
}

void FakeTovrelAccountsWebService::answerUserProfile(
    std::function<std::optional<TovrelAccountsUserProfile>(TovrelAccountsType)> answer) {
    script(&Script::userProfile, std::move(answer));
}

void FakeTovrelAccountsWebService::answerUserHasSignedUp(std::function<bool(TovrelAccountsType)> answer) {
    script(&Script::userHasSignedUp, std::move(answer));
}

void FakeTovrelAccountsWebService::hold() {
    const std::scoped_lock lock(mutex_);
    if (!gate_) {
        gate_ = Event::make();
    }
}

void FakeTovrelAccountsWebService::release() {
    std::shared_ptr<Event> gate;
    {
        const std::scoped_lock lock(mutex_);
        gate = std::move(gate_);
        gate_ = nullptr;
    }
    if (gate) {
        gate->set();
    }
}

void FakeTovrelAccountsWebService::send(TovrelAccountsEvent event) {
    events_.send(std::move(event));
}

std::vector<FakeTovrelAccountsCall> FakeTovrelAccountsWebService::calls() const {
    const std::scoped_lock lock(mutex_);
    return calls_;
}

std::size_t FakeTovrelAccountsWebService::callCount(Operation operation) const {
    const std::scoped_lock lock(mutex_);
    return static_cast<std::size_t>(
        std::count_if(calls_.begin(), calls_.end(),
                      [operation](const FakeTovrelAccountsCall& call) { return call.operation == operation; }));
}

template <class Result, class... Arguments>
Async<Result>
FakeTovrelAccountsWebService::run(std::shared_ptr<FakeTovrelAccountsWebService> self, FakeTovrelAccountsCall call,
                                  std::function<Result(Arguments...)> Script::*answer, Arguments... arguments) {
    std::shared_ptr<Event> gate;
    {
        const std::scoped_lock lock(self->mutex_);
        self->calls_.push_back(std::move(call));
        gate = self->gate_;
    }
    if (gate) {
        co_await Event::wait(std::move(gate));
    }
    std::function<Result(Arguments...)> function;
    {
        const std::scoped_lock lock(self->mutex_);
        function = self->script_.*answer;
    }
    co_return function(arguments...);
}

Async<TovrelAccountsToken> FakeTovrelAccountsWebService::loginWithClient() {
    return run(shared_from_this(), FakeTovrelAccountsCall(Operation::loginWithClient), &Script::loginWithClient);
}

Async<TovrelAccountsToken>
FakeTovrelAccountsWebService::loginWithApple(std::string identityToken, std::string user,
                                             std::optional<TovrelAccountsUserProfile> userProfile) {
    FakeTovrelAccountsCall call(Operation::loginWithApple);
    call.identityToken = std::move(identityToken);
    call.user = std::move(user);
    call.userProfile = std::move(userProfile);
    return run(shared_from_this(), std::move(call), &Script::loginWithApple);
}

Async<void> FakeTovrelAccountsWebService::logout(TovrelAccountsLogoutReason reason) {
    FakeTovrelAccountsCall call(Operation::logout);
    call.reason = reason;
    return run(shared_from_this(), std::move(call), &Script::logout, reason);
}

Async<std::optional<TovrelAccountsToken>> FakeTovrelAccountsWebService::retrieveAccessToken() {
    return run(shared_from_this(), FakeTovrelAccountsCall(Operation::retrieveAccessToken),
               &Script::retrieveAccessToken);
}

Async<void> FakeTovrelAccountsWebService::deleteAccount() {
    return run(shared_from_this(), FakeTovrelAccountsCall(Operation::deleteAccount), &Script::deleteAccount);
}

Async<bool> FakeTovrelAccountsWebService::isLoggedIn(TovrelAccountsType type) {
    FakeTovrelAccountsCall call(Operation::isLoggedIn);
    call.type = type;
    return run(shared_from_this(), std::move(call), &Script::isLoggedIn, type);
}

Async<std::optional<TovrelAccountsUserProfile>> FakeTovrelAccountsWebService::userProfile(TovrelAccountsType type) {
    FakeTovrelAccountsCall call(Operation::userProfile);
    call.type = type;
    return run(shared_from_this(), std::move(call), &Script::userProfile, type);
}

Async<bool> FakeTovrelAccountsWebService::userHasSignedUp(TovrelAccountsType type) {
    FakeTovrelAccountsCall call(Operation::userHasSignedUp);
    call.type = type;
    return shielded(run(shared_from_this(), std::move(call), &Script::userHasSignedUp, type));
}

} // namespace tovrel::testing
