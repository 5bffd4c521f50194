#include <Platform/URLLoading/Detail/RequestCheck.hpp>

#include <gtest/gtest.h>

#include <string>

namespace tovrel {
namespace {

std::optional<URLError> problemWith(const char* url, bool allowsPlainHTTP = false) {
    return problem(URLRequest(*URL::parse(url)), allowsPlainHTTP);
}

std::optional<URLError> problemWithField(std::string name, std::string value) {
    URLRequest request(*URL::parse("https://h/"));
    request.headers.append(std::move(name), std::move(value));
    return problem(request, false);
}

TEST(RequestCheck, LetsAnOrdinaryRequestPass) {
    EXPECT_EQ(problemWith("https://h/"), std::nullopt);
    EXPECT_EQ(problemWith("HTTPS://h/"), std::nullopt);
    EXPECT_EQ(problemWithField("X-Some_Name.1", ""), std::nullopt);
    EXPECT_EQ(problemWithField("X", "tabs\tand bytes \xC3\xA4"), std::nullopt);
}

TEST(RequestCheck, RefusesURLsThatCannotBeLoaded) {
    EXPECT_EQ(problemWith("/path"), URLError::badURL());
    EXPECT_EQ(problemWith("//h/path"), URLError::badURL());
    EXPECT_EQ(problemWith("https:///path"), URLError::badURL());
    EXPECT_EQ(problemWith("https:path"), URLError::badURL());
    EXPECT_EQ(problemWith("https://user@h/"), URLError::badURL());
    EXPECT_EQ(problemWith("ftp://h/"), URLError::unsupportedURL());
    EXPECT_EQ(problemWith("http://h/"), URLError::insecureURL());
    EXPECT_EQ(problemWith("http://h/", true), std::nullopt);
}

TEST(RequestCheck, RefusesFieldsThatWouldBreakTheMessage) {
    EXPECT_EQ(problemWithField("X", "a\r\nInjected: 1"), URLError::invalidHeader());
    EXPECT_EQ(problemWithField("X", "a\n"), URLError::invalidHeader());
    EXPECT_EQ(problemWithField("X", "\r"), URLError::invalidHeader());
    EXPECT_EQ(problemWithField("X", std::string(1, '\0')), URLError::invalidHeader());
    for (const char* name : {"", "X:", "X Y", "X\r\nY", "\xC3\xA4", "X;"}) {
        EXPECT_EQ(problemWithField(name, "a"), URLError::invalidHeader()) << name;
    }
    EXPECT_EQ(problemWithField(std::string("X\0", 2), "a"), URLError::invalidHeader());
}

TEST(RequestCheck, RefusesAMethodThatIsNoToken) {
    for (const char* method : {"", "GET / HTTP/1.1\r\nX:", "G T"}) {
        URLRequest request(*URL::parse("https://h/"));
        request.httpMethod = method;
        EXPECT_EQ(problem(request, false), URLError::invalidHeader()) << method;
    }
}

TEST(RequestCheck, NeverTellsTheValueOfAField) {
    const auto error = problemWithField("Authorization", "Bearer secret\n");
    ASSERT_TRUE(error);
    EXPECT_EQ(std::string(error->what()).find("secret"), std::string::npos);
}

} // namespace
} // namespace tovrel
