#include <TovrelWebServices/Tovrel Accounts/Default/AccountsServiceTest.hpp>

#include <algorithm>
#include <exception>
#include <Support/UserAgent.hpp>

namespace tovrel::tests {

using AccountsSecrecy = AccountsServiceTest;

namespace {

/// What an operation's failure says; empty when it succeeds.
template <class T>
std::string failureText(Async<T> operation) {
    try {
        static_cast<void>(getInTime(std::move(operation)));
    } catch (const std::exception& error) {
        return error.what();
    }
    return {};
}

} // namespace

TEST_F(AccountsSecrecy, KeepsTokensAndSecretsOutOfErrorsAndLog) {
    const std::string echo =
        R"({"error":"canary","error_description":"canary-secret canary-refresh","error_uri":"canary"})";
    const std::vector<std::pair<std::int64_t, std::optional<std::string>>> answers{
        {200, std::nullopt},
        {200, ""},
        {200, "canary"},
        {200, R"({"access_token":"canary"})"},
        {200, tokenJSON("canary", R"(,"id_token":7)")},
        {200, R"({"access_token":["canary"]})"},
        {200, R"({"access_token":"canary)"},
        {400, echo},
        {401, echo},
        {404, R"({"meta":{"code":"canary","message":"canary"}})"},
        {404, "canary"},
        {500, R"({"meta":{"code":"canary","message":"canary"},"data":"canary"})"},
        {503, echo}};
    std::vector<std::string> texts;
    const auto messages = captureLog([&] {
        for (const auto& [statusCode, body] : answers) {
            for (const char* line : {tokenLine, profileLine, deletionLine, logoutLine}) {
                server_->answer(line, statusCode, body);
            }
            getInTime(storage_->removeToken(client_));
            texts.push_back(failureText(service_->loginWithClient()));
            texts.push_back(
                failureText(service_->loginWithApple("canary.identity.token", "canary-user", std::nullopt)));
            store(storedToken());
            texts.push_back(failureText(service_->userProfile(TovrelAccountsType::appleSignIn)));
            store(storedToken());
            texts.push_back(failureText(service_->deleteAccount()));
            store(storedToken());
            advance(300.0);
            texts.push_back(failureText(service_->retrieveAccessToken()));
            advance(-300.0);
            texts.push_back(failureText(service_->logout()));
        }
    });
    EXPECT_GE(messages.size(), answers.size());
    texts.insert(texts.end(), messages.begin(), messages.end());
    EXPECT_GT(texts.size() - static_cast<std::size_t>(std::count(texts.begin(), texts.end(), "")), answers.size() * 4);
    for (const std::string& text : texts) {
        EXPECT_EQ(text.find("canary"), std::string::npos) << text;
    }
}

} // namespace tovrel::tests
