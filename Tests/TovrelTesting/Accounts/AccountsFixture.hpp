#pragma once

#include <Platform/Coding/JSONDecoder.hpp>
#include <TovrelTesting/Accounts/AccountsServer.hpp>
#include <TovrelTesting/BackEnd/BackEndFixture.hpp>

#include <fmt/format.h>

#include <atomic>
#include <tuple>

namespace tovrel::testing {

/// A token answer as the tests read it.
struct ReadToken {
    std::string accessToken;
    double expiresIn = 0.0;
    double refreshExpiresIn = 0.0;
    std::optional<std::string> refreshToken;
    std::string tokenType;
    std::optional<std::string> idToken;
    std::int64_t notBeforePolicy = -1;
    std::string scope;
    std::optional<std::string> issuedTokenType;

    static constexpr auto fields() {
        return std::tuple{Field<&ReadToken::accessToken, "access_token">{},
                          Field<&ReadToken::expiresIn, "expires_in">{},
                          Field<&ReadToken::refreshExpiresIn, "refresh_expires_in">{},
                          Field<&ReadToken::refreshToken, "refresh_token">{},
                          Field<&ReadToken::tokenType, "token_type">{},
                          Field<&ReadToken::idToken, "id_token">{},
                          Field<&ReadToken::notBeforePolicy, "not-before-policy">{},
                          Field<&ReadToken::scope, "scope">{},
                          Field<&ReadToken::issuedTokenType, "issued_token_type">{}};
    }
};

/// An error answer as the tests read it.
struct ReadError {
    std::string error;
    std::string description;

    static constexpr auto fields() {
        return std::tuple{Field<&ReadError::error, "error">{}, Field<&ReadError::description, "error_description">{}};
    }
};

/// An accounts server that is reached through plain libcurl; its clock stands still until a test moves it.
class AccountsFixture : public BackEndFixture {
protected:
    static constexpr const char* host = "accounts.example";
    static constexpr const char* apiHost = "api.example";
    static constexpr const char* cdnHost = "cdn.example";
    static constexpr const char* application = "com.example.reader";
    static constexpr const char* clientPart = "client_id=reader&client_secret=s%26cret";
    static constexpr double startOfTime = 1'700'000'000.5;

    void SetUp() override {
        AccountsServerClient reader("reader", "s&cret");
        reader.optionalScopes.emplace_back("content");
        AccountsServerClient plain("plain", "plain secret");
        plain.refreshTokens = ClientRefreshTokens::withheld;
        plain.grants = {TokenGrant::clientCredentials};
        setUp({reader, plain, AccountsServerClient("writer", "w"),
               AccountsServerClient("reader", "other", TovrelAccountsRealm::marrowquill)});
    }

    void setUp(std::vector<AccountsServerClient> clients) {
        LocalBackEndOptions backEndOptions;
        backEndOptions.hostNames = {host, apiHost, cdnHost};
        startWith(backEndOptions);
        AccountsServerOptions options;
        options.clients = std::move(clients);
        options.identityIssuers = {TrustedIdentityIssuer("apple", issuer, application)};
        options.clock = [now = now] { return Date::fromSecondsSince1970(*now); };
        accounts = AccountsServer::make(options);
        accounts->attach(*backEnd, {host});
    }

    void passTime(double seconds) { *now = *now + seconds; }
    Date currentDate() const { return Date::fromSecondsSince1970(*now); }

    static std::string at(const std::string& target) { return std::string("https://") + host + target; }

    static CurlRequest formRequest(const std::string& target, const std::string& body) {
        CurlRequest request(at(target));
        request.method = "POST";
        request.body = body;
        request.headers = {"Content-Type: application/x-www-form-urlencoded"};
        return request;
    }

    static CurlRequest tokenRequest(const std::string& parameters, const std::string& client = clientPart) {
        return formRequest("/realms/tovrelstudios/protocol/openid-connect/token", client + "&" + parameters);
    }

    static CurlRequest loginRequest() { return tokenRequest("grant_type=client_credentials"); }
    static CurlRequest refreshRequest(const ReadToken& token) {
        return tokenRequest("grant_type=refresh_token&refresh_token=" + token.refreshToken.value());
    }
    static CurlRequest exchangeRequest(const std::string& identityToken, const std::string& more = "") {
        return tokenRequest("subject_issuer=apple&subject_token=" + identityToken +
                            "&subject_token_type=urn%3Aietf%3Aparams%3Aoauth%3Atoken-type%3Aid_token"
                            "&scope=openid%20roles"
                            "&grant_type=urn%3Aietf%3Aparams%3Aoauth%3Agrant-type%3Atoken-exchange" +
                            more);
    }

    std::string identityToken(const std::string& subject = "subject-1") const {
        IdentityClaims claims(subject, application);
        claims.email = "ada@relay.example";
        return issuer->mint(claims, currentDate());
    }

    ReadToken tokenFor(const CurlRequest& request) {
        const CurlResult result = client->perform(request);
        EXPECT_EQ(result.status, 200) << result.body;
        return JSONDecoder().decode<ReadToken>(Data(result.body));
    }

    ReadToken login() { return tokenFor(loginRequest()); }
    ReadToken signIn() { return tokenFor(exchangeRequest(identityToken())); }

    /// Status and error code of a refusal.
    std::string refusalOf(const CurlRequest& request) {
        const CurlResult result = client->perform(request);
        return fmt::format("{} {}", result.status, JSONDecoder().decode<ReadError>(Data(result.body)).error);
    }

    CurlResult profile(const std::string& accessToken, const std::string& method = "GET",
                       const std::string& query = "") {
        CurlRequest request(at("/api/v0/profiles/me" + query));
        request.method = method;
        request.headers = {"Authorization: Bearer " + accessToken, "Content-Type: application/json"};
        return client->perform(request);
    }

    std::shared_ptr<std::atomic<double>> now = std::make_shared<std::atomic<double>>(startOfTime);
    std::shared_ptr<IdentityIssuer> issuer = IdentityIssuer::make();
    std::shared_ptr<AccountsServer> accounts;
};

} // namespace tovrel::testing
