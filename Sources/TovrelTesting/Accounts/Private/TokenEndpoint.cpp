#include <Platform/Coding/DecodingError.hpp>
#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/Coding/JSONEncoder.hpp>
#include <TovrelTesting/Accounts/Private/ClientRequest.hpp>
#include <TovrelTesting/Accounts/Private/IDToken.hpp>
#include <TovrelTesting/Accounts/Private/OAuthRefusal.hpp>
#include <TovrelTesting/Accounts/Private/Scopes.hpp>
#include <TovrelTesting/Accounts/Private/TokenEndpoint.hpp>
#include <TovrelTesting/Private/NoStore.hpp>

#include <algorithm>
#include <tuple>
#include <utility>

namespace tovrel::testing {

namespace {

constexpr std::string_view accessTokenType = "urn:ietf:params:oauth:token-type:access_token";
constexpr std::string_view idTokenType = "urn:ietf:params:oauth:token-type:id_token";

/// A token response (RFC 6749 section 5.1, RFC 8693 section 2.2.1). "not-before-policy" and "refresh_expires_in" are
/// the server's own.
struct TokenAnswer {
    std::string accessToken;
    std::int64_t expiresIn = 0;
    std::int64_t refreshExpiresIn = 0;
    std::optional<std::string> refreshToken;
    std::string tokenType = "Bearer";
    std::optional<std::string> idToken;
    std::int64_t notBeforePolicy = 0;
    std::string scope;
    std::optional<std::string> issuedTokenType;

    static constexpr auto fields() {
        return std::tuple{Field<&TokenAnswer::accessToken, "access_token">{},
                          Field<&TokenAnswer::expiresIn, "expires_in">{},
                          Field<&TokenAnswer::refreshExpiresIn, "refresh_expires_in">{},
                          Field<&TokenAnswer::refreshToken, "refresh_token">{},
                          Field<&TokenAnswer::tokenType, "token_type">{},
                          Field<&TokenAnswer::idToken, "id_token">{},
                          Field<&TokenAnswer::notBeforePolicy, "not-before-policy">{},
                          Field<&TokenAnswer::scope, "scope">{},
                          Field<&TokenAnswer::issuedTokenType, "issued_token_type">{}};
    }
};

struct PersonName {
    std::optional<std::string> first;
    std::optional<std::string> last;

    static constexpr auto fields() {
        return std::tuple{Field<&PersonName::first, "firstName">{}, Field<&PersonName::last, "lastName">{}};
    }
};

/// What the application knows about a user who signs in.
struct SentProfile {
    std::optional<PersonName> name;
    std::optional<std::string> email;

    static constexpr auto fields() {
        return std::tuple{Field<&SentProfile::name, "name">{}, Field<&SentProfile::email, "email">{}};
    }
};

SentProfile profileFrom(const std::optional<std::string>& json) {
    if (!json) {
        return {};
    }
    try {
        return JSONDecoder().decode<SentProfile>(Data(*json));
    } catch (const DecodingError&) {
        throw OAuthRefusal::invalidRequest("The user profile is malformed");
    }
}

/// One request while it is answered.
class TokenRequest {
public:
    TokenRequest(AccountsServerState& state, const ReceivedRequest& request)
        : state_(state), received_(request), form_(state.options, request), now_(state.options.clock()) {}

    TokenAnswer answer() {
        const std::string grant = form_.required("grant_type");
        if (grant == "client_credentials") {
            allow(TokenGrant::clientCredentials);
            return forClientCredentials();
        }
        if (grant == "refresh_token") {
            allow(TokenGrant::refreshToken);
            return forRefreshToken();
        }
        if (grant == "urn:ietf:params:oauth:grant-type:token-exchange") {
            allow(TokenGrant::tokenExchange);
            return forIdentityToken();
        }
        throw OAuthRefusal::unsupportedGrantType();
    }

private:
    const AccountsServerClient& client() const { return form_.client(); }

    void allow(TokenGrant grant) const {
        if (std::ranges::find(client().grants, grant) == client().grants.end()) {
            throw OAuthRefusal::unauthorizedClient();
        }
    }

    std::vector<std::string> grantedScopes() const {
        std::vector<std::string> granted = client().defaultScopes;
        const auto requested = form_.value("scope");
        for (const std::string& scope : requested ? scopesFrom(*requested) : std::vector<std::string>()) {
            if (!containsScope(granted, scope)) {
                if (!containsScope(client().optionalScopes, scope)) {
                    throw OAuthRefusal::invalidScope();
                }
                granted.push_back(scope);
            }
        }
        return granted;
    }

    AccountsServerSession newSession() const {
        AccountsServerSession session;
        session.clientIdentifier = client().identifier;
        session.realm = client().realm;
        session.scopes = grantedScopes();
        return session;
    }

    TokenAnswer forClientCredentials() {
        const AccountsServerSession session = newSession();
        const std::lock_guard lock(state_.mutex);
        ++state_.counts.clientLogins;
        return issue(state_.ledger.open(session), client().refreshTokens);
    }

    TokenAnswer forRefreshToken() {
        const std::string token = form_.required("refresh_token");
        const std::lock_guard lock(state_.mutex);
        auto session = state_.ledger.sessionOfRefreshToken(token, now_);
        if (!session || session->clientIdentifier != client().identifier || session->realm != client().realm) {
            throw OAuthRefusal::invalidGrant("The refresh token is not active");
        }
        if (const auto requested = form_.value("scope")) {
            session->scopes = narrowed(session->scopes, scopesFrom(*requested));
        }
        state_.ledger.supersede(token, now_);
        ++state_.counts.refreshes;
        return issue(*session, ClientRefreshTokens::issued);
    }

    /// RFC 6749 section 6: no more than was granted first.
    static std::vector<std::string> narrowed(const std::vector<std::string>& granted,
                                             std::vector<std::string> requested) {
        for (const std::string& scope : requested) {
            if (!containsScope(granted, scope)) {
                throw OAuthRefusal::invalidScope();
            }
        }
        return requested;
    }

    TokenAnswer forIdentityToken() {
        const AccountsServerUser claimed = claimedUser();
        AccountsServerSession session = newSession();
        const std::lock_guard lock(state_.mutex);
        session.userIdentifier = state_.users.signIn(claimed).identifier;
        ++state_.counts.signIns;
        TokenAnswer answer = issue(state_.ledger.open(session), ClientRefreshTokens::issued);
        answer.issuedTokenType = accessTokenType;
        return answer;
    }

    AccountsServerUser claimedUser() const {
        const std::string alias = form_.required("subject_issuer");
        const std::string token = form_.required("subject_token");
        if (form_.required("subject_token_type") != idTokenType) {
            throw OAuthRefusal::invalidRequest("Unsupported subject_token_type");
        }
        const auto trusted = std::ranges::find(state_.options.identityIssuers, alias, &TrustedIdentityIssuer::alias);
        if (trusted == state_.options.identityIssuers.end()) {
            throw OAuthRefusal::invalidRequest("Unknown subject_issuer");
        }
        const SentProfile profile = profileFrom(form_.value("user_profile"));
        const IdentityClaims claims = verified(*trusted, token);
        AccountsServerUser user;
        user.realm = client().realm;
        user.issuerAlias = alias;
        user.subject = claims.subject;
        user.email = claims.email ? claims.email : profile.email;
        if (profile.name) {
            user.firstName = profile.name->first;
            user.lastName = profile.name->last;
        }
        user.creationDate = now_;
        return user;
    }

    IdentityClaims verified(const TrustedIdentityIssuer& trusted, const std::string& token) const {
        try {
            return trusted.issuer->verify(token, trusted.audience, now_);
        } catch (const IdentityTokenError& error) {
            throw OAuthRefusal::invalidRequest(error.what());
        }
    }

    /// With the lock held.
    TokenAnswer issue(const AccountsServerSession& session, ClientRefreshTokens refreshTokens) {
        const TokenLifetimes& lifetimes = state_.options.lifetimes;
        TokenAnswer answer;
        answer.accessToken = state_.ledger.issueAccessToken(session, session.scopes, now_);
        answer.expiresIn = lifetimes.accessToken.count();
        if (refreshTokens == ClientRefreshTokens::issued) {
            answer.refreshToken = state_.ledger.issueRefreshToken(session, now_);
            answer.refreshExpiresIn = lifetimes.refreshToken.count();
        }
        if (session.userIdentifier && containsScope(session.scopes, "openid")) {
            const IDTokenContext context("https://" + received_.host + "/realms/" +
                                             std::string(client().realm.rawValue()),
                                         client().identifier, now_, static_cast<double>(answer.expiresIn));
            answer.idToken = makeIDToken(state_.key, state_.users.find(*session.userIdentifier).value(), context);
        }
        answer.scope = textOf(session.scopes);
        return answer;
    }

    AccountsServerState& state_;
    const ReceivedRequest& received_;
    ClientRequest form_;
    Date now_;
};

std::optional<ScriptedResponse> nextScriptedAnswer(AccountsServerState& state) {
    const std::lock_guard lock(state.mutex);
    if (state.nextAnswers.empty()) {
        return std::nullopt;
    }
    ScriptedResponse answer = std::move(state.nextAnswers.front());
    state.nextAnswers.pop_front();
    return answer;
}

} // namespace

ScriptedResponse answerTokenRequest(AccountsServerState& state, const ReceivedRequest& request) {
    if (auto scripted = nextScriptedAnswer(state)) {
        return std::move(*scripted);
    }
    try {
        const TokenAnswer answer = TokenRequest(state, request).answer();
        return notStored(ScriptedResponse::json(JSONEncoder().encode(answer).string()));
    } catch (const OAuthRefusal& refusal) {
        const std::lock_guard lock(state.mutex);
        ++state.counts.refusedTokenRequests;
        return refusal.response();
    }
}

} // namespace tovrel::testing
