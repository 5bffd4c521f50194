#include <Platform/Concurrency/TaskGroup.hpp>
#include <Platform/URLLoading/HTTPURLResponse.hpp>
#include <Platform/URLLoading/URLError.hpp>
#include <Platform/URLLoading/URLSession.hpp>

#include <optional>
#include <string>
#include <Support/Await.hpp>
#include <Support/Nginx.hpp>
#include <vector>

namespace tovrel::tests {

namespace {

/// The session against a server that nobody here wrote.
class NginxTest : public AsyncTest {
protected:
    static void SetUpTestSuite() { nginx_.emplace(); }
    static void TearDownTestSuite() { nginx_.reset(); }

    [[nodiscard]] static std::shared_ptr<URLSession> session(bool allowsHTTP2 = true) {
        URLSessionConfiguration configuration;
        configuration.allowsHTTP2 = allowsHTTP2;
        configuration.additionalCertificateAuthorities = {nginx_->certificatePem()};
        configuration.connectionOverrides.emplace_back(Nginx::host, std::nullopt, "127.0.0.1", nginx_->port());
        configuration.connectionOverrides.emplace_back("other.example", std::nullopt, "127.0.0.1", nginx_->port());
        return URLSession::make(std::move(configuration));
    }

    [[nodiscard]] static URLRequest request(const std::string& path, const std::string& method = "GET") {
        URLRequest request(*URL::parse("https://" + std::string(Nginx::host) + path));
        request.httpMethod = method;
        if (method == "POST") {
            request.body = Data("posted");
        }
        return request;
    }

    static std::optional<Nginx> nginx_;
};

std::optional<Nginx> NginxTest::nginx_;

/// A response of the session, which always is one over HTTP.
struct Answer {
    std::string body;
    std::shared_ptr<const HTTPURLResponse> head;

    explicit Answer(const URLSessionResult& result)
        : body(result.data.value().string()), head(std::dynamic_pointer_cast<const HTTPURLResponse>(result.response)) {}
};

std::optional<URLError> errorOf(const std::shared_ptr<URLSession>& session, URLRequest request) {
    try {
        getInTime(session->data(std::move(request)));
    } catch (const URLError& error) {
        return error;
    }
    return std::nullopt;
}

} // namespace

TEST_F(NginxTest, SpeaksHTTP2AndWhereItMustHTTP1) {
    const Answer second(getInTime(session()->data(request("/echo"))));
    EXPECT_EQ(second.body, "GET HTTP/2.0");
    EXPECT_EQ(second.head->httpVersion(), "HTTP/2");
    const Answer first(getInTime(session(false)->data(request("/echo"))));
    EXPECT_EQ(first.body, "GET HTTP/1.1");
    EXPECT_EQ(first.head->httpVersion(), "HTTP/1.1");
}

TEST_F(NginxTest, DecodesACompressedBodyAndLeavesTheHeaderAsItWas) {
    for (const bool allowsHTTP2 : {true, false}) {
        URLRequest sent = request("/text");
        sent.headers.set("Accept-Encoding", "deflate, gzip");
        const Answer answer(getInTime(session(allowsHTTP2)->data(std::move(sent))));
        EXPECT_EQ(answer.body, Nginx::text());
        ASSERT_TRUE(answer.head->allHeaderFields().contains("Content-Encoding"));
        EXPECT_EQ(*answer.head->allHeaderFields().find("Content-Encoding"), "gzip");
    }
}

TEST_F(NginxTest, TakesABodyAsItIsWhereTheCallerAcceptsNoCoding) {
    URLRequest sent = request("/text");
    sent.headers.set("Accept-Encoding", "");
    const Answer answer(getInTime(session()->data(std::move(sent))));
    EXPECT_EQ(answer.body, Nginx::text());
    EXPECT_FALSE(answer.head->allHeaderFields().contains("Content-Encoding"));
}

TEST_F(NginxTest, LoadsALargeBodyWhole) {
    for (const bool allowsHTTP2 : {true, false}) {
        EXPECT_EQ(Answer(getInTime(session(allowsHTTP2)->data(request("/large")))).body, Nginx::large());
    }
}

TEST_F(NginxTest, FollowsRedirectsWithTheMethodThatEachAsksFor) {
    const auto loaded = session(false);
    const auto echoed = [&](const std::string& path, const std::string& method) {
        return Answer(getInTime(loaded->data(request(path, method)))).body;
    };
    EXPECT_EQ(echoed("/moved", "GET"), "GET HTTP/1.1");
    EXPECT_EQ(echoed("/moved", "POST"), "GET HTTP/1.1");
    EXPECT_EQ(echoed("/found", "POST"), "GET HTTP/1.1");
    EXPECT_EQ(echoed("/other", "PUT"), "GET HTTP/1.1");
    EXPECT_EQ(echoed("/kept", "POST"), "POST HTTP/1.1");
    EXPECT_EQ(Answer(getInTime(session()->data(request("/kept", "POST")))).body, "POST HTTP/2.0");
    const Answer answer(getInTime(loaded->data(request("/found"))));
    EXPECT_EQ(answer.head->url().path(), "/echo");
}

TEST_F(NginxTest, GivesUpOnALoopAndOnARedirectToPlainHTTP) {
    EXPECT_EQ(errorOf(session(), request("/loop")), URLError::tooManyRedirects());
    EXPECT_EQ(errorOf(session(), request("/insecure")), URLError::insecureURL());
}

TEST_F(NginxTest, ServesManyRequestsAtOnceOverOneConnection) {
    const auto loaded = session();
    TaskGroup group;
    std::vector<ChildTask<URLSessionResult>> children;
    for (int i = 0; i < 100; ++i) {
        children.push_back(group.add(loaded->data(request(i % 2 == 0 ? "/text" : "/echo"))));
    }
    for (int i = 0; i < 100; ++i) {
        const Answer answer(getInTime(children[static_cast<std::size_t>(i)].value()));
        EXPECT_EQ(answer.body, i % 2 == 0 ? Nginx::text() : "GET HTTP/2.0");
    }
}

TEST_F(NginxTest, RefusesACertificateForAnotherHostAndOneOfAnUnknownAuthority) {
    EXPECT_EQ(errorOf(session(), URLRequest(*URL::parse("https://other.example/echo"))),
              URLError::certificateUntrusted());
    URLSessionConfiguration distrusting;
    distrusting.connectionOverrides.emplace_back(Nginx::host, std::nullopt, "127.0.0.1", nginx_->port());
    EXPECT_EQ(errorOf(URLSession::make(std::move(distrusting)), request("/echo")), URLError::certificateUntrusted());
}

TEST_F(NginxTest, GivesA404AsAResponse) {
    EXPECT_EQ(Answer(getInTime(session()->data(request("/nowhere")))).head->statusCode(), 404);
}

} // namespace tovrel::tests
