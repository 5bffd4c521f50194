#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <Support/ChildProgram.hpp>
#include <Support/TemporaryDirectory.hpp>
#include <vector>

namespace tovrel::tests {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

/// The demo with a folder of its own. What it prints includes its errors.
class ConsoleDemo : public ::testing::Test {
protected:
    std::string run() const {
        ChildProgram demo({"sh", "-c", "exec \"$0\" job \"$1\" 2>&1", CONSOLE_DEMO, state_});
        auto [output, isGood] = demo.finish();
        EXPECT_TRUE(isGood) << output;
        return output;
    }

    /// What the servers of the demo remember.
    std::filesystem::path serverFile() const { return state_ / "server.json"; }

private:
    TemporaryDirectory directory_;
    std::filesystem::path state_ = directory_.path() / "state";
};

/// Every run of characters that is as long as a token, in the alphabet of tokens.
std::vector<std::string> tokensIn(const std::string& text) {
    static const std::regex token("[A-Za-z0-9_-]{22,}");
    std::vector<std::string> tokens;
    for (std::sregex_iterator found(text.begin(), text.end(), token), end; found != end; ++found) {
        tokens.push_back(found->str());
    }
    return tokens;
}

/// What is printed of these steps, one line after the other, other lines in between included.
void expectInOrder(const std::string& output, const std::vector<std::string>& steps) {
    std::size_t position = 0;
    for (const std::string& step : steps) {
        const std::size_t found = output.find(step, position);
        ASSERT_NE(found, std::string::npos) << "missing after the steps before it: " << step << "\n" << output;
        position = found + step.size();
    }
}

} // namespace

TEST_F(ConsoleDemo, DoesTheWholeJobAndStartsFromItsLoginTheNextTime) {
    const std::string first = run();
    expectInOrder(first, {"no login is stored",
                          "◆ didLogin",
                          "POST https://accounts.tovrel.example/realms/tovrelstudios/protocol/openid-connect/token",
                          "20 items, from #1 Item 1",
                          "20 items, from #21 Item 21",
                          "5 items, from #41 Item 41",
                          " of 20.0 MB",
                          "20.0 of 20.0 MB",
                          "200, 20000000 bytes, each as it was sent",
                          "another token is stored now",
                          "◆ didUpdateUserProfile, Ada",
                          "◆ didLogin",
                          "GET https://accounts.tovrel.example/api/v0/profiles/me",
                          "Ada Lovelace, ada@example.org",
                          "✗ status 404, code \"not_found\"",
                          "◆ didLogout",
                          "✗ the login is over",
                          "protocol/openid-connect/logout",
                          "the server has 0 logins left",
                          "◆ didDeleteAccount",
                          "the server has 0 users left",
                          "a login is stored",
                          "the API took it"});
    expectInOrder(run(), {"a login is stored", "the API took it", "this run started from the stored one",
                          "the server has 0 users left", "a login is stored"});
}

TEST_F(ConsoleDemo, PrintsNothingSecret) {
    const std::string output = run() + run();
    EXPECT_THAT(output, Not(HasSubstr("canary")));
    EXPECT_THAT(output, Not(HasSubstr("Bearer")));
    EXPECT_THAT(tokensIn(output), IsEmpty());
    std::ifstream stream(serverFile(), std::ios::binary);
    const auto tokens = tokensIn(std::string(std::istreambuf_iterator<char>(stream), {}));
    EXPECT_GE(tokens.size(), 3U) << "the search has to find what is there to be found: a session and its tokens";
    for (const std::string& token : tokens) {
        EXPECT_THAT(output, Not(HasSubstr(token)));
    }
}

TEST_F(ConsoleDemo, LogsInAnewWhenTheServerForgotTheLogin) {
    run();
    std::filesystem::remove(serverFile());
    expectInOrder(run(), {"a login is stored", "◆ didLogout", "✗", "logged in for", "20 items"});
}

} // namespace tovrel::tests
