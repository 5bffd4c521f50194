#include <TovrelWebServices/Tovrel Accounts/Default/AccountsServiceTest.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsError.hpp>

namespace tovrel::tests {

using AccountsLogin = AccountsServiceTest;

TEST_F(AccountsLogin, TellsItsCollaborators) {
    EXPECT_EQ(service_->client(), client_);
    EXPECT_EQ(service_->executor(), server_);
}

TEST_F(AccountsLogin, GetsATokenForTheClientAndStoresItBeforeItTells) {
    observe();
    server_->answer(tokenLine, 200, tokenJSON("canary-new"));
    const TovrelAccountsToken token = getInTime(service_->loginWithClient());
    EXPECT_EQ(token.accessToken, "canary-new");
    EXPECT_EQ(journal_->take(), (Steps{"setToken", "setClientIdentifier", "didLogin"}));
    EXPECT_EQ(tokenInStorage(), token);
    EXPECT_EQ(clientIdentifierInStorage(), "reader");
}

TEST_F(AccountsLogin, SendsTheFormOfTheClientsCredentials) {
    server_->answer(tokenLine, 200, tokenJSON("a"));
    static_cast<void>(getInTime(service_->loginWithClient()));
    ASSERT_EQ(server_->lines(), Steps{tokenLine});
    const auto sent = server_->requests().front();
    EXPECT_EQ(sent.body, "client_id=reader&client_secret=canary-secret&grant_type=client_credentials&scope=content");
    EXPECT_EQ(sent.request->headers(),
              (WebRequestable::HeaderMap{{"Content-Type", "application/x-www-form-urlencoded"}}));
    EXPECT_EQ(sent.request->timeoutInterval(), 60.0);
    EXPECT_EQ(sent.request->cachePolicy(), CachePolicy::useProtocolCachePolicy);
    EXPECT_EQ(sent.request->url().absoluteString(), "https://" +
                                                        std::string(TovrelAccountsEnvironment::test().domain()) +
                                                        "/realms/tovrelstudios/protocol/openid-connect/token");
}

TEST_F(AccountsLogin, TakesTheTimeOfReceptionFromItsClock) {
    advance(12.5);
    server_->answer(tokenLine, 200, tokenJSON("a"));
    EXPECT_EQ(getInTime(service_->loginWithClient()).timestamp, receivedAt + 12.5);
    getInTime(storage_->removeToken(client_));
    server_->answer(tokenLine, 200, tokenJSON("a", R"(,"timestamp":17)"));
    EXPECT_EQ(getInTime(service_->loginWithClient()).timestamp, 17.0);
}

TEST_F(AccountsLogin, CountsAStoredValidTokenAsALogin) {
    observe();
    store(storedToken());
    EXPECT_EQ(getInTime(service_->loginWithClient()), storedToken());
    EXPECT_EQ(getInTime(service_->loginWithClient()), storedToken());
    EXPECT_EQ(journal_->take(), (Steps{"didLogin", "didLogin"}));
    EXPECT_TRUE(server_->requests().empty());
}

TEST_F(AccountsLogin, ValidatesAStoredTokenTwice) {
    store(storedToken());
    static_cast<void>(getInTime(service_->loginWithClient()));
    EXPECT_EQ(storage_->identifierReads, 2);
}

TEST_F(AccountsLogin, RefreshesAnExpiredTokenOnce) {
    observe();
    store(storedToken());
    advance(300.0);
    server_->answer(tokenLine, 200, tokenJSON("canary-new"));
    EXPECT_EQ(getInTime(service_->loginWithClient()).accessToken, "canary-new");
    ASSERT_EQ(server_->requests().size(), 1U);
    EXPECT_EQ(server_->requests().front().body,
              "client_id=reader&client_secret=canary-secret&refresh_token=canary-refresh&grant_type=refresh_token");
    EXPECT_EQ(journal_->take(), (Steps{"setToken", "setClientIdentifier", "didLogin"}));
    EXPECT_EQ(tokenInStorage().value().timestamp, receivedAt + 300.0);
}

TEST_F(AccountsLogin, RefreshesWithoutAnEventWhenOnlyTheTokenIsAskedFor) {
    observe();
    store(storedToken());
    advance(300.0);
    server_->answer(tokenLine, 200, tokenJSON("canary-new"));
    EXPECT_EQ(getInTime(service_->retrieveAccessToken()).value().accessToken, "canary-new");
    EXPECT_EQ(journal_->take(), (Steps{"setToken", "setClientIdentifier"}));
    EXPECT_EQ(clientIdentifierInStorage(), "reader");
}

TEST_F(AccountsLogin, KeepsTheOldTokenWhenARefreshFails) {
    observe();
    store(storedToken());
    advance(300.0);
    server_->answer(tokenLine, 400, R"({"error":"invalid_grant"})");
    EXPECT_EQ(errorOf<TovrelAccountsError>(service_->loginWithClient()),
              TovrelAccountsError(400, "invalid_grant", std::nullopt, std::nullopt));
    EXPECT_TRUE(journal_->take().empty());
    EXPECT_EQ(tokenInStorage(), storedToken());
}

TEST_F(AccountsLogin, RefreshesATokenThatLacksAScope) {
    TovrelAccountsToken token = storedToken();
    token.scope = "other";
    store(token);
    server_->answer(tokenLine, 200, tokenJSON("canary-new"));
    EXPECT_EQ(getInTime(service_->retrieveAccessToken()).value().accessToken, "canary-new");
}

TEST_F(AccountsLogin, LogsOutWhenBothLifetimesAreOver) {
    observe();
    store(storedToken());
    advance(1800.0);
    EXPECT_EQ(getInTime(service_->retrieveAccessToken()), std::nullopt);
    EXPECT_EQ(journal_->take(), (Steps{"removeToken", "removeClientIdentifier", "didLogout"}));
    EXPECT_TRUE(server_->requests().empty());
    EXPECT_EQ(tokenInStorage(), std::nullopt);
    EXPECT_EQ(clientIdentifierInStorage(), std::nullopt);
}

TEST_F(AccountsLogin, LogsOutFirstAndInAgainWhenBothLifetimesAreOver) {
    observe();
    store(storedToken());
    advance(1e9);
    server_->answer(tokenLine, 200, tokenJSON("canary-new"));
    EXPECT_EQ(getInTime(service_->loginWithClient()).accessToken, "canary-new");
    EXPECT_EQ(journal_->take(), (Steps{"removeToken", "removeClientIdentifier", "didLogout", "setToken",
                                       "setClientIdentifier", "didLogin"}));
}

TEST_F(AccountsLogin, ThrowsAwayTheTokenOfAnotherClient) {
    observe();
    store(storedToken(), "other");
    EXPECT_EQ(getInTime(service_->retrieveAccessToken()), std::nullopt);
    EXPECT_EQ(journal_->take(), (Steps{"removeToken", "removeClientIdentifier", "didLogout"}));
    EXPECT_EQ(getInTime(service_->retrieveAccessToken()), std::nullopt);
    EXPECT_TRUE(journal_->take().empty());
}

TEST_F(AccountsLogin, UsesATokenWhoseClientIsUnknown) {
    getInTime(storage_->setToken(client_, storedToken()));
    EXPECT_EQ(getInTime(service_->retrieveAccessToken()), storedToken());
}

TEST_F(AccountsLogin, HasNoTokenWhereNoneIsStored) {
    observe();
    EXPECT_EQ(getInTime(service_->retrieveAccessToken()), std::nullopt);
    EXPECT_TRUE(journal_->take().empty());
}

TEST_F(AccountsLogin, TellsOfTheProfileInAnIDTokenBeforeTheLogin) {
    observe();
    server_->answer(
        tokenLine, 200,
        tokenJSON("a", idTokenMember(R"({"given_name":"Ada","family_name":"Lovelace","email":"ada@example.org"})")));
    std::optional<TovrelAccountsUserProfile> told;
    const Subscription subscription = service_->eventPublisher().subscribe([&told](const TovrelAccountsEvent& event) {
        if (event.userProfile()) {
            told = event.userProfile();
        }
    });
    static_cast<void>(getInTime(service_->loginWithClient()));
    EXPECT_EQ(journal_->take(),
              (Steps{"setToken", "setClientIdentifier", "setUserProfile", "didUpdateUserProfile", "didLogin"}));
    const TovrelAccountsUserProfile ada("Ada", "Lovelace", "ada@example.org");
    EXPECT_EQ(told, ada);
    EXPECT_EQ(getInTime(service_->userProfile(TovrelAccountsType::anonymous)), ada);
}

TEST_F(AccountsLogin, StoresAnEmptyProfileForAnIDTokenThatNamesNobody) {
    server_->answer(tokenLine, 200, tokenJSON("a", idTokenMember("{}")));
    static_cast<void>(getInTime(service_->loginWithClient()));
    EXPECT_EQ(getInTime(storage_->userProfile(client_)), TovrelAccountsUserProfile());
}

TEST_F(AccountsLogin, PassesOverIDTokensThatCannotBeRead) {
    observe();
    for (const char* idToken : {"one", "a.!!!!.c", "a.eyJ9.c", "a.b.c.d", "..", "", "a._-8.c", "a.W10.c"}) {
        getInTime(storage_->removeToken(client_));
        static_cast<void>(journal_->take());
        server_->answer(tokenLine, 200, tokenJSON("a", std::string(R"(,"id_token":")") + idToken + '"'));
        static_cast<void>(getInTime(service_->loginWithClient()));
        EXPECT_EQ(journal_->take(), (Steps{"setToken", "setClientIdentifier", "didLogin"})) << idToken;
    }
}

TEST_F(AccountsLogin, ReportsTheServersRefusal) {
    observe();
    const auto login = [this](std::int64_t statusCode, const std::optional<std::string>& body) {
        server_->answer(tokenLine, statusCode, body);
        return service_->loginWithClient();
    };
    EXPECT_EQ(errorOf<WebServiceError>(login(400, "{}")), WebServiceError::invalidServerResponse());
    EXPECT_EQ(errorOf<WebServiceError>(login(400, std::nullopt)), WebServiceError::invalidServerResponse());
    EXPECT_EQ(errorOf<WebServiceError>(login(401, "<html>")), WebServiceError::unauthorized());
    EXPECT_EQ(errorOf<WebServiceError>(login(404, "")), WebServiceError::notFound());
    EXPECT_EQ(errorOf<WebServiceError>(login(500, "")), WebServiceError::internalServerError());
    EXPECT_EQ(errorOf<WebServiceError>(login(302, tokenJSON("a"))), WebServiceError::unexpectedServerStatusCode(302));
    EXPECT_EQ(errorOf<TovrelAccountsError>(login(503, R"({"error":"x"})")),
              TovrelAccountsError(503, "x", std::nullopt, std::nullopt));
    EXPECT_EQ(errorOf<TovrelAccountsError>(login(400, R"({"error":"x","error_description":"d","error_uri":"u"})")),
              TovrelAccountsError(400, "x", "d", "u"));
    EXPECT_EQ(errorOf<WebServiceError>(login(400, R"({"error_description":"d"})")),
              WebServiceError::invalidServerResponse());
    EXPECT_TRUE(journal_->take().empty());
}

TEST_F(AccountsLogin, RefusesAnswersThatAreNoToken) {
    observe();
    server_->answer(tokenLine, 200, std::nullopt);
    EXPECT_EQ(errorOf<WebServiceError>(service_->loginWithClient()), WebServiceError::invalidServerResponse());
    for (const char* body : {"", "{", "[]", "{}", R"({"error":"x"})", "\xFF", R"({"access_token":"canary"})"}) {
        server_->answer(tokenLine, 200, body);
        EXPECT_TRUE(errorOf<DecodingError>(service_->loginWithClient())) << body;
    }
    EXPECT_TRUE(journal_->take().empty());
    EXPECT_EQ(tokenInStorage(), std::nullopt);
    EXPECT_EQ(clientIdentifierInStorage(), std::nullopt);
}

TEST_F(AccountsLogin, StoresNothingOfATokenThatLacksOrMistypesARequiredMember) {
    observe();
    const std::map<std::string, std::string> members{{"access_token", R"("canary-new")"}, {"expires_in", "300"},
                                                     {"refresh_expires_in", "1800"},      {"token_type", R"("Bearer")"},
                                                     {"not-before-policy", "0"},          {"scope", R"("content")"}};
    const auto respond = [&](const std::string& changed, const std::optional<std::string>& value) {
        std::string json;
        for (const auto& [name, usual] : members) {
            const std::optional<std::string> text = name == changed ? value : usual;
            if (text) {
                json += (json.empty() ? "{\"" : ",\"") + name + "\":" + *text;
            }
        }
        server_->answer(tokenLine, 200, json + R"(,"id_token":"h.e30=.s"})");
    };
    for (const auto& [name, usual] : members) {
        for (const std::optional<std::string>& value :
             std::vector<std::optional<std::string>>{std::nullopt, "null", "[]", "{}", "true"}) {
            respond(name, value);
            EXPECT_TRUE(errorOf<DecodingError>(service_->loginWithClient())) << name;
            store(storedToken());
            advance(300.0);
            EXPECT_TRUE(errorOf<DecodingError>(service_->retrieveAccessToken())) << name;
            advance(-300.0);
            EXPECT_EQ(tokenInStorage(), storedToken()) << name;
            EXPECT_TRUE(errorOf<DecodingError>(service_->loginWithApple("t", "u", std::nullopt))) << name;
            EXPECT_EQ(tokenInStorage(), storedToken()) << name;
            EXPECT_EQ(getInTime(storage_->userProfile(client_)), std::nullopt) << name;
            EXPECT_EQ(journal_->take(), Steps{"setAppleSignInUser"}) << name;
            getInTime(storage_->removeToken(client_));
            static_cast<void>(journal_->take());
        }
    }
    respond("", std::nullopt);
    EXPECT_EQ(getInTime(service_->loginWithClient()).accessToken, "canary-new");
}

TEST_F(AccountsLogin, PassesTransportFailuresOn) {
    server_->answer(tokenLine, []() -> WebResponse { throw WebServiceError::timedOut(); });
    EXPECT_EQ(errorOf<WebServiceError>(service_->loginWithClient()), WebServiceError::timedOut());
}

TEST_F(AccountsLogin, StoresNothingWhenItIsCancelledBeforeTheAnswer) {
    observe();
    server_->answer(tokenLine, 200, tokenJSON("a"));
    server_->hold(tokenLine);
    std::promise<bool> failed;
    const TaskHandle login =
        start<TovrelAccountsToken>(service_->loginWithClient(), [&failed](Outcome<TovrelAccountsToken> outcome) {
            failed.set_value(!outcome.hasValue());
        });
    ASSERT_TRUE(server_->waitForRequests(1));
    login.cancel();
    EXPECT_TRUE(failed.get_future().get());
    EXPECT_TRUE(journal_->take().empty());
    EXPECT_EQ(tokenInStorage(), std::nullopt);
}

TEST_F(AccountsLogin, ExchangesAnIdentityTokenAndKeepsTheUser) {
    observe();
    server_->answer(tokenLine, 200, tokenJSON("canary-exchanged"));
    const TovrelAccountsUserProfile ada("Ada", std::nullopt, "ada@example.org");
    EXPECT_EQ(getInTime(service_->loginWithApple("h.p.s", "user-1", ada)).accessToken, "canary-exchanged");
    ASSERT_EQ(server_->lines(), Steps{tokenLine});
    const std::string body = server_->requests().front().body;
    EXPECT_NE(body.find("&subject_token=h.p.s&"), std::string::npos);
    EXPECT_NE(body.find("&user_profile=%7B%22email%22%3A%22ada%40example.org%22"), std::string::npos);
    EXPECT_EQ(getInTime(storage_->appleSignInUser(client_)), "user-1");
    EXPECT_EQ(getInTime(storage_->appleUserProfile(client_)), ada);
    const Steps steps = journal_->take();
    EXPECT_EQ(steps.size(), 5U);
    EXPECT_EQ(steps.back(), "didLogin");
}

TEST_F(AccountsLogin, SendsTheProfileOfTheFirstSignInAgain) {
    const TovrelAccountsUserProfile ada("Ada", std::nullopt, std::nullopt);
    getInTime(storage_->setAppleUserProfile(client_, ada));
    server_->answer(tokenLine, 200, tokenJSON("a"));
    static_cast<void>(getInTime(service_->loginWithApple("t", "user-1", std::nullopt)));
    EXPECT_NE(server_->requests().front().body.find("&user_profile="), std::string::npos);
    EXPECT_EQ(getInTime(storage_->appleUserProfile(client_)), ada);
}

TEST_F(AccountsLogin, SendsNoProfileWhereNoneIsKnown) {
    server_->answer(tokenLine, 200, tokenJSON("a"));
    static_cast<void>(getInTime(service_->loginWithApple("t", "user-1", std::nullopt)));
    EXPECT_EQ(server_->requests().front().body.find("user_profile"), std::string::npos);
    EXPECT_EQ(getInTime(storage_->appleUserProfile(client_)), std::nullopt);
    const Steps steps = journal_->take();
    EXPECT_EQ(std::count(steps.begin(), steps.end(), "setAppleUserProfile"), 0);
}

TEST_F(AccountsLogin, KeepsTheAppleUserAlsoWhenTheExchangeFails) {
    observe();
    server_->answer(tokenLine, 400, R"({"error":"invalid_request"})");
    const TovrelAccountsUserProfile ada("Ada", std::nullopt, std::nullopt);
    EXPECT_TRUE(errorOf<TovrelAccountsError>(service_->loginWithApple("t", "user-1", ada)));
    EXPECT_EQ(getInTime(storage_->appleSignInUser(client_)), "user-1");
    EXPECT_EQ(getInTime(storage_->appleUserProfile(client_)), ada);
    EXPECT_EQ(tokenInStorage(), std::nullopt);
    const Steps steps = journal_->take();
    EXPECT_EQ(std::count(steps.begin(), steps.end(), "didLogin"), 0);
}

TEST_F(AccountsLogin, KeepsTheAppleUserAlsoWhenItIsCancelled) {
    server_->hold(tokenLine);
    std::promise<bool> failed;
    const TaskHandle login = start<TovrelAccountsToken>(
        service_->loginWithApple("t", "user-1", std::nullopt),
        [&failed](Outcome<TovrelAccountsToken> outcome) { failed.set_value(!outcome.hasValue()); });
    ASSERT_TRUE(server_->waitForRequests(1));
    login.cancel();
    EXPECT_TRUE(failed.get_future().get());
    EXPECT_EQ(getInTime(storage_->appleSignInUser(client_)), "user-1");
}

TEST_F(AccountsLogin, LivesAsLongAsAnOperationRuns) {
    server_->answer(tokenLine, 200, tokenJSON("a"));
    server_->hold(tokenLine);
    std::promise<std::string> token;
    const TaskHandle login =
        start<TovrelAccountsToken>(service_->loginWithClient(), [&token](Outcome<TovrelAccountsToken> outcome) {
            token.set_value(outcome.value().accessToken);
        });
    ASSERT_TRUE(server_->waitForRequests(1));
    service_.reset();
    server_->release(tokenLine);
    EXPECT_EQ(token.get_future().get(), "a");
}

} // namespace tovrel::tests
