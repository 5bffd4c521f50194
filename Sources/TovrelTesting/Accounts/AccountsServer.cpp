#include <Platform/Coding/JSONEncoder.hpp>
#include <TovrelTesting/Accounts/AccountsServer.hpp>
#include <TovrelTesting/Accounts/Private/AccountsServerState.hpp>
#include <TovrelTesting/Accounts/Private/LogoutEndpoint.hpp>
#include <TovrelTesting/Accounts/Private/ProfileResource.hpp>
#include <TovrelTesting/Accounts/Private/TokenEndpoint.hpp>
#include <TovrelTesting/Envelope.hpp>

#include <utility>

namespace tovrel::testing {

namespace {

constexpr std::string_view tokenPath = "/realms/{realm}/protocol/openid-connect/token";
constexpr std::string_view logoutPath = "/realms/{realm}/protocol/openid-connect/logout";
constexpr std::string_view profilePath = "/api/v0/profiles/me";

using Answer = ScriptedResponse (*)(AccountsServerState&, const ReceivedRequest&);

RouteHandler answering(std::shared_ptr<AccountsServerState> state, Answer answer) {
    return [state = std::move(state), answer](const ReceivedRequest& request) { return answer(*state, request); };
}

RouteHandler allowing(const std::string& methods) {
    return [methods](const ReceivedRequest&) {
        return refusalEnvelope(405, "method_not_allowed", "The resource has no such method")
            .withHeader("Allow", methods);
    };
}

} // namespace

AccountsServer::AccountsServer(const AccountsServerOptions& options)
    : state_(std::make_shared<AccountsServerState>(options)) {}

AccountsServer::~AccountsServer() = default;

std::shared_ptr<AccountsServer> AccountsServer::make(const AccountsServerOptions& options) {
    return std::shared_ptr<AccountsServer>(new AccountsServer(options));
}

void AccountsServer::attach(LocalBackEnd& backEnd, const std::vector<std::string>& hosts) {
    for (const std::string& host : hosts) {
        backEnd.onHost(host, "*", tokenPath, allowing("POST"));
        backEnd.onHost(host, "*", logoutPath, allowing("POST"));
        backEnd.onHost(host, "*", profilePath, allowing("GET, HEAD, DELETE"));
        backEnd.onHost(host, "POST", tokenPath, answering(state_, &answerTokenRequest));
        backEnd.onHost(host, "POST", logoutPath, answering(state_, &answerLogoutRequest));
        backEnd.onHost(host, "GET", profilePath, answering(state_, &answerProfileRequest));
        backEnd.onHost(host, "DELETE", profilePath, answering(state_, &answerProfileDeletion));
    }
}

AccountsServerUser AccountsServer::addUser(AccountsServerUser user) {
    const std::lock_guard lock(state_->mutex);
    return state_->users.add(std::move(user));
}

std::optional<AccountsServerSession> AccountsServer::session(std::string_view accessToken) const {
    const Date now = state_->options.clock();
    const std::lock_guard lock(state_->mutex);
    return state_->ledger.sessionOfAccessToken(accessToken, now);
}

std::vector<AccountsServerSession> AccountsServer::liveSessions() const {
    const Date now = state_->options.clock();
    const std::lock_guard lock(state_->mutex);
    return state_->ledger.liveSessions(now);
}

std::vector<AccountsServerUser> AccountsServer::users() const {
    const std::lock_guard lock(state_->mutex);
    return state_->users.all();
}

AccountsServerCounts AccountsServer::counts() const {
    const std::lock_guard lock(state_->mutex);
    return state_->counts;
}

void AccountsServer::answerNextTokenRequest(ScriptedResponse answer) {
    const std::lock_guard lock(state_->mutex);
    state_->nextAnswers.push_back(std::move(answer));
}

void AccountsServer::expireAccessTokens() {
    const std::lock_guard lock(state_->mutex);
    state_->ledger.expireAccessTokens();
}

void AccountsServer::expireRefreshTokens() {
    const std::lock_guard lock(state_->mutex);
    state_->ledger.expireRefreshTokens();
}

void AccountsServer::endSessions() {
    const std::lock_guard lock(state_->mutex);
    state_->ledger.end([](const AccountsServerSession&) { return true; });
}

Data AccountsServer::snapshot() const {
    AccountsSnapshot snapshot;
    {
        const std::lock_guard lock(state_->mutex);
        state_->ledger.save(snapshot);
        state_->users.save(snapshot);
    }
    return JSONEncoder().encode(snapshot);
}

void AccountsServer::restore(const Data& snapshot) {
    const AccountsSnapshot restored = accountsSnapshotFrom(snapshot);
    const std::lock_guard lock(state_->mutex);
    state_->ledger.restore(restored);
    state_->users.restore(restored);
}

} // namespace tovrel::testing
