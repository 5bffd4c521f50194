#include <TovrelWebServices/SignIn/Web/Private/CallbackRequest.hpp>

#include <gtest/gtest.h>

namespace tovrel::detail {

namespace {

using Kind = CallbackAnswer::Kind;

constexpr std::uint16_t port = 49152;
const std::string state = "random.49152.challenge";

CallbackVerdict judged(const std::string& head) {
    return judgeRequest(head, port, state);
}

std::string get(const std::string& target, const std::string& host = "Host: 127.0.0.1:49152\r\n") {
    return "GET " + target + " HTTP/1.1\r\n" + host + "\r\n";
}

CallbackVerdict callback(const std::string& query) {
    return judged(get("/callback?" + query));
}

/// The answer in a callback with the right state.
CallbackAnswer answerIn(const std::string& parameters) {
    const CallbackVerdict verdict = callback(parameters + "&state=" + state);
    EXPECT_EQ(verdict.status, 200) << parameters;
    return verdict.answer.value();
}

} // namespace

TEST(ACallback, BringsACode) {
    EXPECT_EQ(answerIn("code=abc-_1"), CallbackAnswer(Kind::code, "abc-_1"));
    EXPECT_EQ(callback("state=" + state + "&code=a%2Fb").answer, CallbackAnswer(Kind::code, "a/b"));
}

TEST(ACallback, BringsAnErrorCode) {
    EXPECT_EQ(answerIn("error=user_cancelled_authorize"), CallbackAnswer(Kind::error, "user_cancelled_authorize"));
    EXPECT_EQ(answerIn("error=server+error%21"), CallbackAnswer(Kind::error, "server error!"));
}

TEST(ACallback, IgnoresParametersThatItDoesNotKnow) {
    EXPECT_EQ(answerIn("code=abc&iss=https%3A%2F%2Fidentity.example&&x"), CallbackAnswer(Kind::code, "abc"));
}

TEST(ACallback, IsMalformedWithoutExactlyOneUsableCodeOrErrorCode) {
    for (const std::string& parameters :
         {std::string("x=1"), std::string("code="), std::string("code"), std::string("error="),
          std::string("code=a&code=a"), std::string("code=a&error=b"), std::string("error=a&error=b"),
          std::string("code=a%0Ab"), std::string("code=%00"), std::string("error=%C3%A4"),
          "code=" + std::string(1025, 'a'), "error=" + std::string(129, 'a')}) {
        EXPECT_EQ(answerIn(parameters), CallbackAnswer(Kind::malformed)) << parameters;
    }
    EXPECT_EQ(answerIn("code=" + std::string(1024, 'a')).kind, Kind::code);
    EXPECT_EQ(answerIn("error=" + std::string(128, 'a')).kind, Kind::error);
}

TEST(ACallback, WithAnotherStateIsRefused) {
    for (const std::string& other : {std::string("x"), state + "x", "X" + state.substr(1), state.substr(1)}) {
        const CallbackVerdict verdict = callback("code=abc&state=" + other);
        EXPECT_EQ(verdict.status, 400) << other;
        EXPECT_EQ(verdict.answer, std::nullopt);
        EXPECT_TRUE(verdict.isOfOtherAttempt);
    }
}

TEST(ACallback, WithoutOneStateIsRefused) {
    for (const std::string& query :
         {std::string(), std::string("code=abc"), std::string("code=abc&state"), std::string("code=abc&state="),
          "state=" + state + "&state=" + state, "code=abc&state=" + state + "&%73tate=x"}) {
        const CallbackVerdict verdict = callback(query);
        EXPECT_EQ(verdict.status, 400) << query;
        EXPECT_EQ(verdict.answer, std::nullopt);
        EXPECT_FALSE(verdict.isOfOtherAttempt);
    }
    EXPECT_EQ(judged(get("/callback")).status, 400);
}

TEST(TheListener, KnowsOnePath) {
    for (const char* target :
         {"/", "/favicon.ico", "/callback/", "/Callback", "/callbac", "/callback2?code=a", "//callback"}) {
        EXPECT_EQ(judged(get(std::string(target) + "?code=a&state=" + state)).status, 404) << target;
    }
}

TEST(TheListener, OnlyGivesPages) {
    for (const char* method : {"POST", "HEAD", "PUT", "OPTIONS", "DELETE", "BREW"}) {
        const std::string request =
            std::string(method) + " /callback?code=a&state=" + state + " HTTP/1.1\r\nHost: 127.0.0.1:49152\r\n\r\n";
        EXPECT_EQ(judged(request).status, 405) << method;
        EXPECT_EQ(judged(request).answer, std::nullopt);
    }
}

TEST(TheListener, RefusesARequestWithABodyToo) {
    EXPECT_EQ(judged("POST /callback HTTP/1.1\r\nHost: 127.0.0.1:49152\r\nContent-Length: 5\r\n\r\n").status, 405);
}

TEST(TheListener, AnswersUnderItsOwnAddressAlone) {
    const std::string target = "/callback?code=a&state=" + state;
    for (const char* host :
         {"", "Host: \r\n", "Host: 127.0.0.1\r\n", "Host: 127.0.0.1:49153\r\n", "Host: localhost:49152\r\n",
          "Host: evil.example:49152\r\n", "Host: [::1]:49152\r\n", "Host: 127.1:49152\r\n",
          "Host: 127.0.0.1:49152\r\nHost: 127.0.0.1:49152\r\n", "Host: 127.0.0.1:49152, evil.example\r\n"}) {
        EXPECT_EQ(judged(get(target, host)).status, 400) << host;
        EXPECT_EQ(judged(get(target, host)).answer, std::nullopt);
    }
    EXPECT_EQ(judged(get(target, "host:127.0.0.1:49152 \r\n")).status, 200);
}

TEST(TheListener, RefusesWhatIsNoRequestToAnOrigin) {
    for (const std::string& head :
         {std::string("\r\n\r\n"), std::string("nonsense\r\n\r\n"), get("callback?state=" + state),
          get("http://127.0.0.1:49152/callback?code=a&state=" + state), get("*"),
          "GET /callback?code=a&state=" + state + " HTTP/9.9\r\nHost: 127.0.0.1:49152\r\n\r\n",
          "GET /callback?code=a&state=" + state + "\r\nHost: 127.0.0.1:49152\r\n\r\n",
          get("/callback?code=a b&state=" + state), get("/callback", "Host: 127.0.0.1:49152\r\nno colon\r\n"),
          std::string("\x16\x03\x01\x02\x00\x01\r\n\r\n", 10)}) {
        EXPECT_EQ(judged(head).status, 400) << head;
    }
}

TEST(TheListener, RefusesAFragment) {
    EXPECT_EQ(callback("code=a&state=" + state + "#fragment").status, 400);
}

} // namespace tovrel::detail
