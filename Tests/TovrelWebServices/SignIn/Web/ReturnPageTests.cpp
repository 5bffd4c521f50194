#include <TovrelWebServices/SignIn/Web/Private/ReturnPage.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tovrel::detail {

namespace {

using Kind = CallbackAnswer::Kind;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

std::string pageFor(Kind kind, const std::string& value) {
    CallbackVerdict verdict(200);
    verdict.answer = CallbackAnswer(kind, value);
    return returnPage(verdict);
}

} // namespace

TEST(TheReturnPage, SendsTheUserBackToTheApplication) {
    const std::string page = pageFor(Kind::code, "abc");
    EXPECT_THAT(page, StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_THAT(page, HasSubstr("return to the application"));
    EXPECT_THAT(page, Not(HasSubstr("did not succeed")));
    EXPECT_THAT(pageFor(Kind::error, "user_cancelled_authorize"), HasSubstr("did not succeed"));
    EXPECT_THAT(pageFor(Kind::malformed, ""), HasSubstr("did not succeed"));
}

TEST(TheReturnPage, SaysNothingOfWhatCame) {
    EXPECT_THAT(pageFor(Kind::code, "canary"), Not(HasSubstr("canary")));
    EXPECT_THAT(pageFor(Kind::error, "canary"), Not(HasSubstr("canary")));
}

TEST(TheReturnPage, IsKeptNowhereLeaksNothingAndRunsNothing) {
    for (const int status : {200, 400, 404, 405, 410, 431}) {
        const std::string page = returnPage(CallbackVerdict(status));
        EXPECT_THAT(page, StartsWith("HTTP/1.1 " + std::to_string(status) + " "));
        EXPECT_THAT(page, HasSubstr("\r\nCache-Control: no-store\r\n"));
        EXPECT_THAT(page, HasSubstr("\r\nReferrer-Policy: no-referrer\r\n"));
        EXPECT_THAT(page, HasSubstr("\r\nConnection: close\r\n"));
        EXPECT_THAT(page, HasSubstr("default-src 'none'"));
        EXPECT_THAT(page, Not(HasSubstr("<script")));
        EXPECT_THAT(page, Not(HasSubstr("://")));
    }
    EXPECT_THAT(returnPage(CallbackVerdict(405)), HasSubstr("\r\nAllow: GET\r\n"));
}

TEST(TheReturnPage, AnnouncesItsLength) {
    const std::string page = pageFor(Kind::code, "abc");
    const std::size_t start = page.find("\r\n\r\n") + 4;
    EXPECT_THAT(page, HasSubstr("\r\nContent-Length: " + std::to_string(page.size() - start) + "\r\n"));
    EXPECT_THAT(page, EndsWith("</html>\n"));
}

} // namespace tovrel::detail
