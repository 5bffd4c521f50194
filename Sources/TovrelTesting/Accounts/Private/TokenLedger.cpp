#include <TovrelTesting/Accounts/Private/TokenLedger.hpp>
#include <TovrelTesting/Private/OpaqueToken.hpp>

#include <set>
#include <utility>

namespace tovrel::testing {

namespace {

constexpr std::size_t identifierSize = 16;

Date after(Date date, std::chrono::seconds duration) {
    return date.advancedBy(static_cast<double>(duration.count()));
}

} // namespace

TokenLedger::AccessToken::AccessToken(std::string tokenSession, std::vector<std::string> tokenScopes, Date tokenExpiry)
    : session(std::move(tokenSession)), scopes(std::move(tokenScopes)), expiry(tokenExpiry) {}

TokenLedger::RefreshToken::RefreshToken(std::string tokenSession, Date tokenExpiry)
    : session(std::move(tokenSession)), expiry(tokenExpiry) {}

AccountsServerSession TokenLedger::open(AccountsServerSession session) {
    session.identifier = makeOpaqueToken(identifierSize);
    return sessions_.emplace(session.identifier, session).first->second;
}

std::string TokenLedger::issueAccessToken(const AccountsServerSession& session, const std::vector<std::string>& scopes,
                                          Date now) {
    std::string token = makeOpaqueToken();
    accessTokens_.emplace(token, AccessToken(session.identifier, scopes, after(now, lifetimes_.accessToken)));
    return token;
}

std::string TokenLedger::issueRefreshToken(const AccountsServerSession& session, Date now) {
    std::string token = makeOpaqueToken();
    refreshTokens_.emplace(token, RefreshToken(session.identifier, after(now, lifetimes_.refreshToken)));
    return token;
}

std::optional<AccountsServerSession> TokenLedger::sessionOfAccessToken(std::string_view token, Date now) {
    forgetExpired(now);
    const auto found = accessTokens_.find(token);
    if (found == accessTokens_.end()) {
        return std::nullopt;
    }
    AccountsServerSession session = sessions_.at(found->second.session);
    session.scopes = found->second.scopes;
    return session;
}

std::optional<AccountsServerSession> TokenLedger::sessionOfRefreshToken(std::string_view token, Date now) {
    forgetExpired(now);
    const auto found = refreshTokens_.find(token);
    if (found == refreshTokens_.end()) {
        return std::nullopt;
    }
    const std::optional<Date> supersededAt = found->second.supersededAt;
    AccountsServerSession session = sessions_.at(found->second.session);
    if (supersededAt && after(*supersededAt, lifetimes_.supersededRefreshToken) <= now) {
        end([&](const AccountsServerSession& other) { return other.identifier == session.identifier; });
        return std::nullopt;
    }
    return session;
}

void TokenLedger::supersede(std::string_view token, Date now) {
    std::optional<Date>& supersededAt = refreshTokens_.find(token)->second.supersededAt;
    supersededAt = supersededAt.value_or(now);
}

std::vector<AccountsServerSession> TokenLedger::liveSessions(Date now) {
    forgetExpired(now);
    std::vector<AccountsServerSession> sessions;
    for (const auto& [identifier, session] : sessions_) {
        sessions.push_back(session);
    }
    return sessions;
}

void TokenLedger::end(const std::function<bool(const AccountsServerSession&)>& condition) {
    std::erase_if(sessions_, [&](const auto& entry) { return condition(entry.second); });
    const auto isOrphan = [this](const auto& entry) { return !sessions_.contains(entry.second.session); };
    std::erase_if(accessTokens_, isOrphan);
    std::erase_if(refreshTokens_, isOrphan);
}

void TokenLedger::save(AccountsSnapshot& snapshot) const {
    for (const auto& [identifier, session] : sessions_) {
        AccountsSnapshot::Session& saved = snapshot.sessions.emplace_back();
        saved.identifier = identifier;
        saved.clientIdentifier = session.clientIdentifier;
        saved.realm = session.realm.rawValue();
        saved.userIdentifier = session.userIdentifier;
        saved.scopes = session.scopes;
    }
    for (const auto& [text, token] : accessTokens_) {
        AccountsSnapshot::AccessToken& saved = snapshot.accessTokens.emplace_back();
        saved.text = text;
        saved.session = token.session;
        saved.scopes = token.scopes;
        saved.expiry = token.expiry;
    }
    for (const auto& [text, token] : refreshTokens_) {
        AccountsSnapshot::RefreshToken& saved = snapshot.refreshTokens.emplace_back();
        saved.text = text;
        saved.session = token.session;
        saved.expiry = token.expiry;
        saved.supersededAt = token.supersededAt;
    }
}

void TokenLedger::restore(const AccountsSnapshot& snapshot) {
    for (const AccountsSnapshot::Session& saved : snapshot.sessions) {
        AccountsServerSession session;
        session.identifier = saved.identifier;
        session.clientIdentifier = saved.clientIdentifier;
        session.realm = restoredRealm(saved.realm);
        session.userIdentifier = saved.userIdentifier;
        session.scopes = saved.scopes;
        sessions_.insert_or_assign(saved.identifier, std::move(session));
    }
    for (const AccountsSnapshot::AccessToken& saved : snapshot.accessTokens) {
        accessTokens_.insert_or_assign(saved.text, AccessToken(saved.session, saved.scopes, saved.expiry));
    }
    for (const AccountsSnapshot::RefreshToken& saved : snapshot.refreshTokens) {
        RefreshToken token(saved.session, saved.expiry);
        token.supersededAt = saved.supersededAt;
        refreshTokens_.insert_or_assign(saved.text, std::move(token));
    }
}

void TokenLedger::forgetExpired(Date now) {
    const auto isExpired = [now](const auto& entry) { return entry.second.expiry <= now; };
    std::erase_if(accessTokens_, isExpired);
    std::erase_if(refreshTokens_, isExpired);
    std::set<std::string_view> inUse;
    for (const auto& [text, token] : accessTokens_) {
        inUse.insert(token.session);
    }
    for (const auto& [text, token] : refreshTokens_) {
        inUse.insert(token.session);
    }
    std::erase_if(sessions_, [&](const auto& entry) { return !inUse.contains(entry.first); });
}

} // namespace tovrel::testing
