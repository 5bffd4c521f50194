#include <Platform/URLLoading/SessionFixture.hpp>

namespace tovrel::testing {
namespace {

class URLSessionRedirects : public SessionOverBothVersions {
protected:
    void redirect(const std::string& from, const std::string& location, int status = 302) {
        backEnd->on("*", from, [location, status](const ReceivedRequest&) {
            return ScriptedResponse::redirect(location, status);
        });
    }
};
TOVREL_OVER_BOTH_VERSIONS(URLSessionRedirects);

TEST_P(URLSessionRedirects, AreFollowedToTheLastURL) {
    redirect("/a", "/b?x#f");
    redirect("/b", "https://api.example/hello", 301);
    const Loaded result = load("/a");
    ASSERT_FALSE(result.error) << result.error->what();
    EXPECT_EQ(result.body, "Hello");
    EXPECT_EQ(result.url, "https://api.example/hello#f");
    EXPECT_EQ(result.field("location"), "(none)");
    EXPECT_EQ(backEnd->statistics().connectionsAccepted, 1U);
}

TEST_P(URLSessionRedirects, WithoutALocationAreReturned) {
    backEnd->on("GET", "/nowhere", [](const ReceivedRequest&) { return ScriptedResponse::text("body", 302); });
    const Loaded result = load("/nowhere");
    EXPECT_EQ(result.status, 302);
    EXPECT_EQ(result.body, "body");
}

TEST_P(URLSessionRedirects, EndAfterTwenty) {
    redirect("/loop", "/loop");
    EXPECT_EQ(failure("/loop"), URLError::Kind::tooManyRedirects);
    EXPECT_EQ(backEnd->requests().size(), 21U);

    backEnd->on("GET", "/count/{n}", [](const ReceivedRequest& request) {
        const int n = std::stoi(request.parameters.at("n"));
        return n == 0 ? ScriptedResponse::text("there") : ScriptedResponse::redirect("/count/" + std::to_string(n - 1));
    });
    EXPECT_EQ(load("/count/20").body, "there");
    EXPECT_EQ(failure("/count/21"), URLError::Kind::tooManyRedirects);
}

TEST_P(URLSessionRedirects, NeverCarryCredentialsToAnotherOriginNorBack) {
    redirect("/there", "https://other.example/back");
    redirect("/back", "https://api.example/hello");
    URLRequest request = requestFor("/there");
    request.headers.add("Cookie", "session=1");
    request.headers.add("X-Kept", "1");
    ASSERT_FALSE(load(request).error);
    const auto requests = backEnd->requests();
    ASSERT_EQ(requests.size(), 3U);
    EXPECT_TRUE(requests[0].header("authorization") && requests[0].header("cookie"));
    for (const std::size_t index : {1U, 2U}) {
        EXPECT_EQ(requests[index].header("authorization"), std::nullopt);
        EXPECT_EQ(requests[index].header("cookie"), std::nullopt);
        EXPECT_EQ(requests[index].header("x-kept"), "1");
    }
    EXPECT_EQ(requests[1].host, "other.example");
}

TEST_P(URLSessionRedirects, KeepCredentialsWithinAnOrigin) {
    redirect("/a", "/hello");
    ASSERT_FALSE(load("/a").error);
    EXPECT_TRUE(backEnd->requests().at(1).header("authorization"));
}

TEST_P(URLSessionRedirects, TurnAPostIntoAGet) {
    redirect("/a", "/echo");
    URLRequest request = upload("/a", "body");
    request.headers.add("Content-Type", "text/plain");
    EXPECT_EQ(load(request).body, "");
    const ReceivedRequest second = backEnd->requests().at(1);
    EXPECT_EQ(second.method, "GET");
    EXPECT_EQ(second.header("content-type"), std::nullopt);
    EXPECT_EQ(second.header("content-length"), std::nullopt);
}

TEST_P(URLSessionRedirects, SendTheBodyAgainFor307And308) {
    redirect("/a", "/b", 307);
    redirect("/b", "/echo", 308);
    for (const std::size_t size : {std::size_t(0), std::size_t(10), std::size_t(1'000'000)}) {
        const std::string body = generatedBytes(0, size);
        const Loaded result = load(upload("/a", body));
        ASSERT_FALSE(result.error) << result.error->what();
        EXPECT_TRUE(result.body == body);
        EXPECT_EQ(backEnd->requests().back().method, "POST");
    }
}

TEST_P(URLSessionRedirects, StayHEAD) {
    redirect("/a", "/hello", 303);
    EXPECT_EQ(load(requestFor("/a", "HEAD")).status, 200);
    EXPECT_EQ(backEnd->requests().at(1).method, "HEAD");
}

TEST_P(URLSessionRedirects, DropTheirBodies) {
    backEnd->on("GET", "/small", [](const ReceivedRequest&) {
        auto response = ScriptedResponse::redirect("/hello");
        response.body = std::string(10'000, 'x');
        return response;
    });
    backEnd->on("GET", "/huge", [](const ReceivedRequest&) {
        auto response = ScriptedResponse::redirect("/hello");
        response.body = GeneratedBytes(1'000'000'000);
        return response;
    });
    backEnd->on("GET", "/coded", [](const ReceivedRequest&) {
        auto response = ScriptedResponse::redirect("/hello").withHeader("Content-Encoding", "gzip");
        response.body = "not gzip at all";
        return response;
    });
    for (const char* target : {"/small", "/huge", "/coded"}) {
        const Loaded result = load(target);
        ASSERT_FALSE(result.error) << target << result.error->what();
        EXPECT_EQ(result.body, "Hello") << target;
    }
}

TEST_P(URLSessionRedirects, DoNotLeaveHTTPS) {
    redirect("/plain", "http://api.example/hello");
    redirect("/file", "file:///etc/hostname");
    redirect("/broken", "https://api.example:99999/");
    EXPECT_EQ(failure("/plain"), URLError::Kind::insecureURL);
    EXPECT_EQ(failure("/file"), URLError::Kind::unsupportedURL);
    EXPECT_EQ(failure("/broken"), URLError::Kind::badServerResponse);
    EXPECT_EQ(backEnd->requests().size(), 3U);

    URLSessionConfiguration plain = configuration();
    plain.allowsPlainHTTP = true;
    restart(plain);
    const Loaded result = load("/plain");
    EXPECT_EQ(result.body, "Hello");
    EXPECT_EQ(result.url, "http://api.example/hello");
    EXPECT_EQ(backEnd->requests().back().header("authorization"), std::nullopt);
}

} // namespace
} // namespace tovrel::testing
