#include <Platform/URLLoading/HTTPURLResponse.hpp>
#include <Platform/URLLoading/URLError.hpp>
#include <TovrelWebServices/Transport/URLSessionWebRequestExecutor.hpp>
#include <TovrelWebServices/Transport/WebRequest.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <Support/WebServiceErrors.hpp>

namespace tovrel::tests {

namespace {

/// A session that answers by a function: for what no server can be made to send.
class FakeSession final : public URLSession {
public:
    using Answer = std::function<URLSessionResult(const URLRequest&)>;

    explicit FakeSession(Answer answer) : answer_(std::move(answer)) {}

    Async<URLSessionResult> data(URLRequest request) override { return respond(answer_, std::move(request)); }

private:
    static Async<URLSessionResult> respond(Answer answer, URLRequest request) { co_return answer(request); }

    Answer answer_;
};

class FakeProvider final : public URLSessionProvider {
public:
    [[nodiscard]] std::shared_ptr<URLSession> session() const override {
        ++asked;
        return current;
    }
    void updateCache(const WebRequestCacheDefinition&) override {}

    std::shared_ptr<URLSession> current;
    mutable int asked = 0;
};

class FileResponse final : public URLResponse {
public:
    FileResponse() : URLResponse(*URL::parse("file:///x")) {}
};

std::shared_ptr<const URLResponse> http(int status) {
    return std::make_shared<HTTPURLResponse>(*URL::parse("https://h/x"), status, HTTPHeaders{HTTPHeader("X-A", "b")},
                                             "HTTP/1.1");
}

class ExecutorTest : public AsyncTest {
protected:
    void answer(FakeSession::Answer answer) { provider_->current = std::make_shared<FakeSession>(std::move(answer)); }

    template <class E>
    void fail(E error) {
        answer([error](const URLRequest&) -> URLSessionResult { throw error; });
    }

    std::shared_ptr<FakeProvider> provider_ = std::make_shared<FakeProvider>();
    std::shared_ptr<WebRequestExecutor> executor_ = URLSessionWebRequestExecutor::make(provider_);
    std::shared_ptr<WebRequest<RequestType::HTTP>> request_ =
        WebRequest<RequestType::HTTP>::build(TovrelEnvironment::test, "h", "x");
};

} // namespace

TEST_F(ExecutorTest, GivesBodyHeadersAndStatusOfAnyResponse) {
    answer([](const URLRequest&) { return URLSessionResult(Data("gone"), http(404)); });
    const WebResponse response = getInTime(executor_->data(request_));
    EXPECT_EQ(response.statusCode, 404);
    EXPECT_EQ(response.data, Data("gone"));
    EXPECT_EQ(response.headers, (HTTPHeaders{HTTPHeader("X-A", "b")}));
}

TEST_F(ExecutorTest, KeepsAnAbsentBodyAbsent) {
    answer([](const URLRequest&) { return URLSessionResult(std::nullopt, http(200)); });
    EXPECT_FALSE(getInTime(executor_->data(request_)).data);
}

TEST_F(ExecutorTest, RequiresAStatusOf200To299ToExecute) {
    for (const int status : {200, 204, 299}) {
        answer([status](const URLRequest&) { return URLSessionResult(Data(""), http(status)); });
        getInTime(executor_->execute(request_));
    }
    answer([](const URLRequest&) { return URLSessionResult(Data(""), http(404)); });
    EXPECT_EQ(webServiceErrorOf(executor_->execute(request_)), WebServiceError::notFound());
    answer([](const URLRequest&) { return URLSessionResult(Data(""), http(300)); });
    EXPECT_EQ(webServiceErrorOf(executor_->execute(request_)), WebServiceError::unexpectedServerStatusCode(300));
}

TEST_F(ExecutorTest, RefusesAResponseThatIsNotHTTP) {
    answer([](const URLRequest&) { return URLSessionResult(Data("x"), std::make_shared<FileResponse>()); });
    EXPECT_EQ(webServiceErrorOf(executor_->data(request_)), WebServiceError::invalidServerResponse());
    EXPECT_EQ(webServiceErrorOf(executor_->execute(request_)), WebServiceError::invalidServerResponse());
}

TEST_F(ExecutorTest, MapsTheFailuresOfTheSession) {
    fail(URLError::notConnectedToInternet());
    EXPECT_EQ(webServiceErrorOf(executor_->data(request_)), WebServiceError::notConnectedToInternet());
    fail(URLError::timedOut());
    EXPECT_EQ(webServiceErrorOf(executor_->execute(request_)), WebServiceError::timedOut());
    fail(URLError::networkConnectionLost());
    EXPECT_THROW(getInTime(executor_->data(request_)), URLError);
    fail(std::out_of_range("foreign"));
    EXPECT_THROW(getInTime(executor_->data(request_)), std::out_of_range);
}

TEST_F(ExecutorTest, AsksForTheSessionAnewForEveryRequest) {
    answer([](const URLRequest&) { return URLSessionResult(Data("first"), http(200)); });
    EXPECT_EQ(getInTime(executor_->data(request_)).data, Data("first"));
    answer([](const URLRequest&) { return URLSessionResult(Data("second"), http(200)); });
    EXPECT_EQ(getInTime(executor_->data(request_)).data, Data("second"));
    EXPECT_EQ(provider_->asked, 2);
}

TEST_F(ExecutorTest, SendsWhatTheRequestBuilds) {
    std::optional<URLRequest> sent;
    answer([&sent](const URLRequest& request) {
        sent = request;
        return URLSessionResult(Data(""), http(200));
    });
    getInTime(executor_->data(request_->setMethod(HttpMethod::put)->setQueryParameter("a", "b")));
    ASSERT_TRUE(sent);
    EXPECT_EQ(*sent, request_->buildURLRequest());
    EXPECT_EQ(sent->url.absoluteString(), "https://h/x?a=b");
}

} // namespace tovrel::tests
