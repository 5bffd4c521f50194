#include <Platform/Concurrency/TaskGroup.hpp>
#include <Platform/URLLoading/URLError.hpp>
#include <TovrelTesting/FakeTovrelAccountsWebService.hpp>
#include <TovrelTesting/LocalSession.hpp>
#include <TovrelWebServices/Services/DefaultApiWebService.hpp>
#include <TovrelWebServices/Services/DefaultCdnWebService.hpp>
#include <TovrelWebServices/Services/DomainServiceFixture.hpp>
#include <TovrelWebServices/Transport/TovrelURLSessionProvider.hpp>
#include <TovrelWebServices/Transport/URLSessionWebRequestExecutor.hpp>

#include <gmock/gmock.h>

namespace tovrel::tests {

using namespace std::chrono_literals;
using testing::ContentCoding;
using testing::FakeTovrelAccountsWebService;
using testing::Fault;
using testing::FaultPoint;
using testing::FaultSelector;
using ::testing::HasSubstr;
using testing::LocalBackEnd;
using testing::LocalBackEndOptions;
using ::testing::Not;
using testing::ReceivedRequest;
using testing::ScriptedResponse;

namespace {

const std::string apiHost(TovrelApiEnvironment::test().domain());
const std::string cdnHost(TovrelCdnEnvironment::test().domain());
const std::string canary = "canary-5f3a9c";

std::unique_ptr<LocalBackEnd> startBackEnd() {
    LocalBackEndOptions options;
    options.hostNames = {apiHost, cdnHost};
    return LocalBackEnd::start(options);
}

TovrelAccountsClient testClient() {
    TovrelAccountsClient client = FakeTovrelAccountsWebService::exampleClient();
    client.environment = TovrelAccountsEnvironment::test();
    return client;
}

/// From the API and CDN services down to the socket, over TLS.
class DomainServiceIntegration : public AsyncTest {
protected:
    DomainServiceIntegration() {
        accounts_->answerLoginWithClient([] {
            TovrelAccountsToken token = FakeTovrelAccountsWebService::exampleToken();
            token.accessToken = canary;
            return token;
        });
    }

    void answerApi(std::string_view path, const ScriptedResponse& response) {
        backEnd_->onHost(apiHost, "*", path, [response](const ReceivedRequest&) { return response; });
    }

    void answerCdn(std::string_view path, const ScriptedResponse& response) {
        backEnd_->onHost(cdnHost, "*", path, [response](const ReceivedRequest&) { return response; });
    }

    [[nodiscard]] ApiWebService::Request apiRequest(std::string_view path) const {
        return api_->buildRequest(path, HttpMethod::get);
    }

    [[nodiscard]] CdnWebService::Request cdnRequest(std::string_view path) const {
        return cdn_->buildRequest(path, HttpMethod::get);
    }

    [[nodiscard]] std::size_t logouts() const {
        return accounts_->callCount(testing::FakeTovrelAccountsCall::Operation::logout);
    }

    std::unique_ptr<LocalBackEnd> backEnd_ = startBackEnd();
    std::shared_ptr<FakeTovrelAccountsWebService> accounts_ =
        FakeTovrelAccountsWebService::make(URLSessionWebRequestExecutor::make(TovrelURLSessionProvider::make(
                                               testing::localSessionConfiguration(*backEnd_, {apiHost, cdnHost}))),
                                           testClient());
    std::shared_ptr<ApiWebService> api_ = DefaultApiWebService::make(accounts_);
    std::shared_ptr<CdnWebService> cdn_ = DefaultCdnWebService::make(accounts_);
};

} // namespace

TEST_F(DomainServiceIntegration, SendsTheTokenAndDecodesTheEnvelopeThatComesBack) {
    answerApi("/items/7", ScriptedResponse::json(std::string(envelopeOfAnItem), 201).withCoding(ContentCoding::gzip));
    const auto response = getInTime(api_->execute<Item>(api_->buildRequest("items/7", HttpMethod::put)
                                                            ->setQueryParameter("lang", "de")
                                                            ->setBody(Item(7, "t"), JSONEncoder())));
    EXPECT_EQ(response.statusCode, 201);
    EXPECT_EQ(response.responseObject.data, Item(7, "t", Date(60)));
    EXPECT_EQ(response.rawData, Data(envelopeOfAnItem));

    const auto received = backEnd_->requests();
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].method, "PUT");
    EXPECT_EQ(received[0].host, apiHost);
    EXPECT_EQ(received[0].target, "/items/7?lang=de");
    EXPECT_EQ(received[0].header("authorization"), "Bearer " + canary);
    EXPECT_EQ(received[0].header("accept-encoding"), "deflate, gzip");
    EXPECT_EQ(received[0].header("content-type"), "application/json");
    EXPECT_EQ(received[0].body, R"({"id":7,"title":"t"})");
}

TEST_F(DomainServiceIntegration, SendsTheTokenToTheCdnAndReturnsItsBytes) {
    answerCdn("/files/a.bin", ScriptedResponse::generated(1'000'000));
    const WebResponse response = getInTime(cdn_->execute(cdnRequest("files/a.bin")));
    EXPECT_EQ(response.statusCode, 200);
    EXPECT_EQ(response.data->size(), 1'000'000U);
    EXPECT_EQ(backEnd_->requests().at(0).host, cdnHost);
    EXPECT_EQ(backEnd_->requests().at(0).header("authorization"), "Bearer " + canary);
}

TEST_F(DomainServiceIntegration, ReportsARefusalInTheServersWords) {
    answerApi("/gone", ScriptedResponse::json(R"({"meta":{"code":"gone","message":"no such item"}})", 404));
    EXPECT_EQ(domainErrorOf(api_->execute(apiRequest("gone"))), TovrelDomainServiceError(404, "gone", "no such item"));
    answerCdn("/busy", ScriptedResponse::json(std::string(envelopeOfAnItem), 503));
    EXPECT_EQ(domainErrorOf(cdn_->executeEnvelope<Item>(cdnRequest("busy"))),
              TovrelDomainServiceError(503, "C1", "M1"));
    EXPECT_EQ(getInTime(cdn_->execute(cdnRequest("busy"))).statusCode, 503);
}

TEST_F(DomainServiceIntegration, ReportsAPageOfAProxyAsAnInvalidResponse) {
    answerApi("/x", ScriptedResponse::text("<html><body>Internal Server Error</body></html>", 500));
    EXPECT_EQ(webServiceErrorOf(api_->execute(apiRequest("x"))), WebServiceError::invalidServerResponse());
}

TEST_F(DomainServiceIntegration, ReportsAnAnswerWithoutContentAsInvalidWithoutARetry) {
    answerApi("/x", ScriptedResponse(204));
    const auto sent = apiRequest("x")->setRetryStrategy(TimesRetryLogicStrategy::make(3, 0));
    EXPECT_EQ(webServiceErrorOf(api_->execute(sent)), WebServiceError::invalidServerResponse());
    EXPECT_EQ(backEnd_->requests().size(), 1U);
}

TEST_F(DomainServiceIntegration, LogsOutWhenTheServerSays401) {
    answerApi("/x", ScriptedResponse::json(std::string(envelopeOfAnItem), 401));
    EXPECT_EQ(webServiceErrorOf(api_->execute(apiRequest("x"))), WebServiceError::unauthorized());
    answerCdn("/x", ScriptedResponse(401));
    EXPECT_EQ(webServiceErrorOf(cdn_->execute(cdnRequest("x"))), WebServiceError::unauthorized());
    EXPECT_EQ(logouts(), 2U);
}

TEST_F(DomainServiceIntegration, SendsTheWholeCallAgainWhenTheConnectionBreaks) {
    answerApi("/x", ScriptedResponse::json(std::string(envelopeOfAnItem)));
    backEnd_->inject(Fault::reset(FaultPoint::responseBody), FaultSelector::next());
    const auto sent = apiRequest("x")->setRetryStrategy(TimesRetryLogicStrategy::make(2, 0));
    EXPECT_EQ(getInTime(api_->executeEnvelope<Item>(sent)).data, Item(7, "t", Date(60)));
    EXPECT_EQ(accounts_->callCount(testing::FakeTovrelAccountsCall::Operation::loginWithClient), 2U);
}

TEST_F(DomainServiceIntegration, TimesOutAfterItsRetries) {
    backEnd_->inject(Fault::stall(FaultPoint::responseStart), FaultSelector::every());
    const auto sent = cdnRequest("x")->setTimeoutInterval(0.2)->setRetryStrategy(TimesRetryLogicStrategy::make(1, 0));
    EXPECT_EQ(webServiceErrorOf(cdn_->execute(sent)), WebServiceError::timedOut());
    EXPECT_EQ(accounts_->callCount(testing::FakeTovrelAccountsCall::Operation::loginWithClient), 2U);
}

TEST_F(DomainServiceIntegration, ReportsACancelledTransferAsThePlatformsError) {
    backEnd_->inject(Fault::stall(FaultPoint::responseStart));
    using Envelope = ApiWebResponseObject<ApiEmptyDataResponse>;
    std::promise<std::exception_ptr> error;
    const TaskHandle task = start<Envelope>(api_->execute(apiRequest("x")),
                                            [&](Outcome<Envelope> outcome) { error.set_value(outcome.error()); });
    backEnd_->waitUntil([](const auto& statistics) { return statistics.exchangesStalled == 1; }, 10s);
    task.cancel();
    EXPECT_THROW(std::rethrow_exception(error.get_future().get()), URLError);
    EXPECT_EQ(logouts(), 0U);
}

TEST_F(DomainServiceIntegration, DecodesAnEnvelopeOfMegabytes) {
    std::string items;
    for (int number = 0; number < 50'000; ++number) {
        items += (number == 0 ? "" : ",") + std::string(R"({"id":)") + std::to_string(number) +
                 R"(,"title":"a title of some length","created_at":978307260000})";
    }
    answerApi("/items", ScriptedResponse::json(R"({"meta":{"code":"a","message":"b"},"data":[)" + items + "]}"));
    const auto envelope = getInTime(api_->executeEnvelope<std::vector<Item>>(apiRequest("items")));
    ASSERT_EQ(envelope.data->size(), 50'000U);
    EXPECT_EQ(envelope.data->back(), Item(49'999, "a title of some length", Date(60)));
}

TEST_F(DomainServiceIntegration, ServesManyCallersAtOnce) {
    const auto answer = [](const ReceivedRequest& received) {
        return ScriptedResponse::json(R"({"meta":{"code":"a","message":"b"},"data":{"id":)" +
                                      received.parameters.at("id") + R"(,"title":"t"}})");
    };
    backEnd_->onHost(apiHost, "GET", "/items/{id}", answer);
    backEnd_->onHost(cdnHost, "GET", "/items/{id}", answer);
    TaskGroup group;
    std::vector<ChildTask<ApiWebResponseObject<Item>>> children;
    for (int number = 0; number < 200; ++number) {
        const std::string path = "items/" + std::to_string(number);
        children.push_back(group.add(number % 2 == 0 ? api_->executeEnvelope<Item>(apiRequest(path))
                                                     : cdn_->executeEnvelope<Item>(cdnRequest(path))));
    }
    for (int number = 0; number < 200; ++number) {
        EXPECT_EQ(getInTime(children[static_cast<std::size_t>(number)].value()).data, Item(number, "t"));
    }
}

TEST_F(DomainServiceIntegration, KeepsTheTokenOutOfEveryErrorAndOutput) {
    answerApi("/refused",
              ScriptedResponse::json(R"({"meta":{"code":")" + canary + R"(","message":")" + canary + "\"}}", 400));
    answerApi("/unauthorized", ScriptedResponse::json(std::string(envelopeOfAnItem), 401));
    answerApi("/page", ScriptedResponse::text(canary, 500));
    answerApi("/ok", ScriptedResponse::json(std::string(envelopeOfAnItem)));
    const std::vector<std::optional<Fault>> faults = {
        std::nullopt, Fault::close(FaultPoint::responseStart), Fault::reset(FaultPoint::responseBody),
        Fault::truncation(FaultPoint::responseBody), Fault::stall(FaultPoint::responseStart)};
    for (const std::string_view path : {"refused", "unauthorized", "page", "ok"}) {
        for (const std::optional<Fault>& fault : faults) {
            if (fault) {
                backEnd_->inject(*fault);
            }
            ::testing::internal::CaptureStdout();
            ::testing::internal::CaptureStderr();
            std::string text;
            try {
                getInTime(api_->execute(apiRequest(path)->setTimeoutInterval(0.2)));
            } catch (const std::exception& error) {
                text = error.what();
            }
            text += ::testing::internal::GetCapturedStdout() + ::testing::internal::GetCapturedStderr();
            EXPECT_THAT(text, Not(HasSubstr(canary))) << path;
            backEnd_->clearFaults();
        }
    }
}

} // namespace tovrel::tests
