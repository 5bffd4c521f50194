#include <TovrelTesting/Browser/Chromium.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tovrel::testing {

namespace {

using ::testing::HasSubstr;

ScriptedResponse page(const std::string& content) {
    ScriptedResponse response = ScriptedResponse().withHeader("Content-Type", "text/html");
    response.body = "<title>Page</title>" + content;
    return response;
}

class AChromium : public ::testing::Test {
protected:
    static LocalBackEndOptions options() {
        LocalBackEndOptions options;
        options.hostNames = {"shop.example"};
        return options;
    }

    std::unique_ptr<LocalBackEnd> backEnd = LocalBackEnd::start(options());
    std::unique_ptr<Chromium> browser = Chromium::launch(*backEnd, {"shop.example"});
};

} // namespace

TEST_F(AChromium, ShowsPagesAndClicksOnThem) {
    backEnd->on("GET", "/", [](const ReceivedRequest&) {
        return page("<p>First page</p><form action=\"/next\"><button id=\"go\">Go</button></form>");
    });
    backEnd->on("GET", "/next", [](const ReceivedRequest&) { return page("<p>Second \"page\"</p>"); });
    browser->open(*URL::parse("https://shop.example/"));
    EXPECT_THAT(browser->waitForText("First page"), HasSubstr("Go"));
    browser->click("#go");
    EXPECT_EQ(browser->waitForText("Second"), "Second \"page\"");
    EXPECT_EQ(browser->address(), "https://shop.example/next?");
}

TEST_F(AChromium, FindsNothingButTheBackEndAndThisMachine) {
    browser->open(*URL::parse("https://elsewhere.example/"));
    EXPECT_THAT(browser->waitForText("ERR_"), HasSubstr("ERR_NAME_NOT_RESOLVED"));
    browser->open(*URL::parse("http://127.0.0.1:9/"));
    browser->waitForText("ERR_");
}

TEST_F(AChromium, TrustsTheBackEndAlone) {
    const auto other = LocalBackEnd::start(options());
    const auto suspicious = Chromium::launch(*backEnd, {});
    suspicious->open(*URL::parse(other->url("/", "127.0.0.1")));
    EXPECT_THAT(suspicious->waitForText("ERR_"), HasSubstr("ERR_CERT_AUTHORITY_INVALID"));
}

TEST_F(AChromium, IsGoneWithItsObject) {
    browser.reset();
    const auto isQuiet = [](const BackEndStatistics& now) { return now.connectionsOpen == 0; };
    EXPECT_TRUE(isQuiet(backEnd->waitUntil(isQuiet, std::chrono::seconds(10))));
}

} // namespace tovrel::testing
