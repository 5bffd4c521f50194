#include <Platform/Coding/Base64.hpp>
#include <TovrelTesting/Accounts/AccountsFixture.hpp>

namespace tovrel::testing {

namespace {

/// The payload of a token, read with the standard alphabet alone.
std::string standardPayload(const std::string& token) {
    const std::size_t start = token.find('.') + 1;
    std::string payload = token.substr(start, token.find('.', start) - start);
    payload.append((4 - payload.size() % 4) % 4, '=');
    const auto bytes = base64Decoded(payload);
    return bytes ? bytes->string() : "";
}

struct ReadIDToken {
    std::string issuer;
    std::string subject;
    std::string audience;
    double issuedAt = 0.0;
    double expiry = 0.0;
    std::optional<std::string> givenName;
    std::optional<std::string> familyName;
    std::optional<std::string> email;

    static constexpr auto fields() {
        return std::tuple{Field<&ReadIDToken::issuer, "iss">{},
                          Field<&ReadIDToken::subject, "sub">{},
                          Field<&ReadIDToken::audience, "aud">{},
                          Field<&ReadIDToken::issuedAt, "iat">{},
                          Field<&ReadIDToken::expiry, "exp">{},
                          Field<&ReadIDToken::givenName, "given_name">{},
                          Field<&ReadIDToken::familyName, "family_name">{},
                          Field<&ReadIDToken::email, "email">{}};
    }
};

} // namespace

class AccountsServerTokenExchange : public AccountsFixture {
protected:
    static constexpr const char* profilePart =
        "&user_profile=%7B%22email%22%3A%22ada%40home.example%22%2C%22name%22%3A%7B%22firstName%22%3A%22Ada%22%2C"
        "%22lastName%22%3A%22L%C3%B6velace%3E%3F~%22%7D%7D";

    static std::string without(std::string text, const std::string& part) {
        text.erase(text.find(part), part.size());
        return text;
    }
};

TEST_F(AccountsServerTokenExchange, MakesAUserOfTheFirstSignIn) {
    const ReadToken token = tokenFor(exchangeRequest(identityToken(), profilePart));
    EXPECT_EQ(token.scope, "profile email openid roles");
    EXPECT_EQ(token.issuedTokenType, "urn:ietf:params:oauth:token-type:access_token");
    ASSERT_EQ(accounts->users().size(), 1U);
    const AccountsServerUser user = accounts->users()[0];
    EXPECT_EQ(user.subject, "subject-1");
    EXPECT_EQ(user.issuerAlias, "apple");
    EXPECT_EQ(user.firstName, "Ada");
    EXPECT_EQ(user.lastName, "L\u00f6velace>?~");
    EXPECT_EQ(user.email, "ada@relay.example") << "what the provider signed counts more than what the client sends";
    EXPECT_EQ(user.creationDate, currentDate());
    EXPECT_EQ(accounts->session(token.accessToken).value().userIdentifier, user.identifier);
    EXPECT_EQ(accounts->counts().signIns, 1U);
}

TEST_F(AccountsServerTokenExchange, KnowsTheUserAgain) {
    tokenFor(exchangeRequest(identityToken()));
    EXPECT_FALSE(accounts->users()[0].firstName);
    tokenFor(exchangeRequest(identityToken(), profilePart));
    EXPECT_EQ(accounts->users().at(0).firstName, "Ada");
    tokenFor(exchangeRequest(identityToken(), "&user_profile=%7B%22name%22%3A%7B%22firstName%22%3A%22Eve%22%7D%7D"));
    EXPECT_EQ(accounts->users().size(), 1U);
    EXPECT_EQ(accounts->users()[0].firstName, "Ada");
    tokenFor(exchangeRequest(identityToken("subject-2")));
    EXPECT_EQ(accounts->users().size(), 2U);
}

TEST_F(AccountsServerTokenExchange, KnowsAUserWhoWasThereBefore) {
    AccountsServerUser user;
    user.issuerAlias = "apple";
    user.subject = "subject-1";
    user.firstName = "Grace";
    const AccountsServerUser kept = accounts->addUser(user);
    EXPECT_FALSE(kept.identifier.empty());
    EXPECT_EQ(accounts->session(signIn().accessToken).value().userIdentifier, kept.identifier);
    EXPECT_EQ(accounts->users().at(0).email, "ada@relay.example");
}

TEST_F(AccountsServerTokenExchange, IssuesAnIDTokenThatStandardBase64Decodes) {
    const ReadToken token = tokenFor(exchangeRequest(identityToken(), profilePart));
    const std::string payload = standardPayload(token.idToken.value());
    const auto claims = JSONDecoder().decode<ReadIDToken>(Data(payload));
    EXPECT_EQ(claims.issuer, "https://accounts.example/realms/tovrelstudios");
    EXPECT_EQ(claims.subject, accounts->users().at(0).identifier);
    EXPECT_EQ(claims.audience, "reader");
    EXPECT_EQ(claims.issuedAt, std::floor(startOfTime));
    EXPECT_EQ(claims.expiry, claims.issuedAt + 300.0);
    EXPECT_EQ(claims.givenName, "Ada");
    EXPECT_EQ(claims.familyName, "L\u00f6velace>?~");
    EXPECT_EQ(claims.email, "ada@relay.example");
}

TEST_F(AccountsServerTokenExchange, IssuesSuchAnIDTokenWhateverTheNameIs) {
    for (int i = 0; i < 96; ++i) {
        AccountsServerUser user;
        user.issuerAlias = "apple";
        user.subject = std::to_string(i);
        user.firstName = std::string(static_cast<std::size_t>(i % 3), '~') + "\x7f?>\u00ff\U0001F600" +
                         std::string(static_cast<std::size_t>(i / 3), '?');
        accounts->addUser(user);
        const ReadToken token = tokenFor(exchangeRequest(identityToken(user.subject)));
        const std::string payload = standardPayload(token.idToken.value());
        ASSERT_FALSE(payload.empty()) << token.idToken.value();
        EXPECT_EQ(JSONDecoder().decode<ReadIDToken>(Data(payload)).givenName, user.firstName);
    }
}

TEST_F(AccountsServerTokenExchange, IssuesAnIDTokenForTheOpenIDScopeOnly) {
    CurlRequest request = exchangeRequest(identityToken());
    request.body = without(request.body, "&scope=openid%20roles");
    EXPECT_FALSE(tokenFor(request).idToken);
    EXPECT_FALSE(tokenFor(tokenRequest("grant_type=client_credentials&scope=openid")).idToken) << "a client is no user";
    EXPECT_TRUE(tokenFor(refreshRequest(signIn())).idToken);
}

TEST_F(AccountsServerTokenExchange, RefusesWhatIsNoIdentityTokenForIt) {
    const auto exchange = [this](const std::string& token) { return refusalOf(exchangeRequest(token)); };
    const std::string good = identityToken();
    std::string changed = good;
    changed[good.find('.') + 5] = changed[good.find('.') + 5] == 'a' ? 'b' : 'a';
    const IdentityClaims claims("subject-1", application);
    EXPECT_EQ(exchange("no-token"), "400 invalid_request");
    EXPECT_EQ(exchange(changed), "400 invalid_request");
    EXPECT_EQ(exchange(IdentityIssuer::make()->mint(claims, currentDate())), "400 invalid_request");
    EXPECT_EQ(exchange(issuer->mint(IdentityClaims("subject-1", "com.example.other"), currentDate())),
              "400 invalid_request");
    EXPECT_EQ(exchange(issuer->mint(claims, currentDate().advancedBy(-601))), "400 invalid_request");
    EXPECT_EQ(exchange(issuer->mint(claims, currentDate().advancedBy(2))), "400 invalid_request");
    EXPECT_TRUE(accounts->users().empty());
    EXPECT_EQ(accounts->counts().signIns, 0U);
}

TEST_F(AccountsServerTokenExchange, RefusesRequestsThatLackSomething) {
    for (const std::string name : {"subject_issuer=", "subject_token=", "subject_token_type="}) {
        CurlRequest request = exchangeRequest(identityToken());
        request.body.replace(request.body.find(name), name.size(), "other=");
        EXPECT_EQ(refusalOf(request), "400 invalid_request") << name;
    }
}

TEST_F(AccountsServerTokenExchange, RefusesOtherIssuersTypesAndProfiles) {
    CurlRequest issuerRequest = exchangeRequest(identityToken());
    issuerRequest.body.replace(issuerRequest.body.find("apple"), 5, "Apple");
    EXPECT_EQ(refusalOf(issuerRequest), "400 invalid_request");
    CurlRequest typeRequest = exchangeRequest(identityToken());
    typeRequest.body.replace(typeRequest.body.find("id_token&scope"), 8, "jwt_____");
    EXPECT_EQ(refusalOf(typeRequest), "400 invalid_request");
    for (const char* profileText : {"%7B", "%22text%22", "%7B%22email%22%3A1%7D"}) {
        EXPECT_EQ(refusalOf(exchangeRequest(identityToken(), std::string("&user_profile=") + profileText)),
                  "400 invalid_request");
    }
    EXPECT_EQ(client->perform(exchangeRequest(identityToken(), "&user_profile=%7B%7D")).status, 200);
}

} // namespace tovrel::testing
