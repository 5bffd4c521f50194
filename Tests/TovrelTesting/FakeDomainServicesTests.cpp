#include <TovrelTesting/FakeApiWebService.hpp>
#include <TovrelTesting/FakeCdnWebService.hpp>
#include <TovrelWebServices/Services/TovrelDomainServiceError.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <gtest/gtest.h>

#include <string>
#include <Support/Await.hpp>
#include <Support/WebServiceErrors.hpp>
#include <vector>

namespace tovrel::tests {

using testing::FakeApiWebService;
using testing::FakeCdnWebService;

namespace {

template <class Service>
class FakeDomainService : public AsyncTest {
protected:
    [[nodiscard]] typename Service::Request request(std::string_view path = "x") const {
        return service_->buildRequest(path, HttpMethod::get);
    }

    std::shared_ptr<Service> service_ = Service::make();
};

using BothServices = ::testing::Types<FakeApiWebService, FakeCdnWebService>;
TYPED_TEST_SUITE(FakeDomainService, BothServices);

} // namespace

TYPED_TEST(FakeDomainService, AnswersInOrderWithoutJSON) {
    this->service_->answerWith(std::string("first"));
    this->service_->answer(ApiWebResponseObject<std::vector<int>>(ApiResponseMeta("C", "M"), std::vector<int>{2}), 201);
    const auto first = getInTime(this->service_->template executeEnvelope<std::string>(this->request("1")));
    EXPECT_EQ(first.data, "first");
    EXPECT_EQ(first.meta.code, "OK");
    const auto second = getInTime(this->service_->template execute<std::vector<int>>(this->request("2")));
    EXPECT_EQ(second.responseObject.data, std::vector<int>{2});
    EXPECT_EQ(second.responseObject.meta, ApiResponseMeta("C", "M"));
    EXPECT_EQ(second.statusCode, 201);
    EXPECT_FALSE(second.rawData);
    ASSERT_EQ(this->service_->requestCount(), 2U);
    EXPECT_TRUE(this->service_->requests()[1]->url().absoluteString().ends_with("/2"));
}

TYPED_TEST(FakeDomainService, FailsAsItIsTold) {
    this->service_->fail(WebServiceError::unauthorized());
    EXPECT_EQ(webServiceErrorOf(this->service_->template execute<int>(this->request())),
              WebServiceError::unauthorized());
}

TYPED_TEST(FakeDomainService, DecodesAndJudgesJSONAsTheRealServices) {
    this->service_->answerJSON(Data(R"({"meta":{"code":"a","message":"b"},"data":3})"));
    EXPECT_EQ(getInTime(this->service_->template executeEnvelope<int>(this->request())).data, 3);
    this->service_->answerJSON(Data(R"({"meta":{"code":"a","message":"b"}})"), 404);
    EXPECT_THROW(getInTime(this->service_->template execute<int>(this->request())), TovrelDomainServiceError);
    this->service_->answerJSON(Data("<html>"));
    EXPECT_EQ(webServiceErrorOf(this->service_->template execute<int>(this->request())),
              WebServiceError::invalidServerResponse());
}

TYPED_TEST(FakeDomainService, AnswersTheRestByARule) {
    this->service_->answerAll([](const WebRequestable& request, ApiPayloadType payload) {
        EXPECT_EQ(payload, ApiPayloadType::of<std::string>());
        return TovrelDomainWebService::AnyResponse(AnyApiWebResponseObject(ApiWebResponseObject<std::string>(
                                                       ApiResponseMeta("a", "b"), request.url().absoluteString())),
                                                   WebResponse());
    });
    this->service_->answerWith(std::string("own"));
    EXPECT_EQ(getInTime(this->service_->template executeEnvelope<std::string>(this->request())).data, "own");
    const auto request = this->request("y");
    EXPECT_EQ(getInTime(this->service_->template executeEnvelope<std::string>(request)).data,
              request->url().absoluteString());
}

TYPED_TEST(FakeDomainService, StopsTheProcessWithoutAnAnswer) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(getInTime(this->service_->template execute<int>(this->request())), ::testing::KilledBySignal(SIGABRT),
                "has no answer for");
}

TYPED_TEST(FakeDomainService, SendsThroughItsExecutorWhatIsRun) {
    this->service_->fakeExecutor()->answer(WebResponse(std::nullopt, HTTPHeaders(), 404));
    EXPECT_EQ(webServiceErrorOf(this->service_->run(this->request())), WebServiceError::notFound());
}

TYPED_TEST(FakeDomainService, HasTheStageThatItIsMadeFor) {
    EXPECT_EQ(TypeParam::make(TovrelEnvironment::development)->environment().environment(),
              TovrelEnvironment::development);
}

TEST(FakeApiWebService, AnswersACallWithoutAPayload) {
    const auto service = FakeApiWebService::make();
    service->answerWith(ApiEmptyDataResponse());
    EXPECT_TRUE(getInTime(service->execute(service->buildRequest("x", HttpMethod::delete_))).data);
}

TEST(FakeCdnWebService, AnswersRawFromTheScriptOfItsExecutor) {
    const auto service = FakeCdnWebService::make();
    service->fakeExecutor()->answer(WebResponse(Data("bytes"), HTTPHeaders(), 404));
    EXPECT_EQ(getInTime(service->execute(service->buildRequest("x", HttpMethod::get))).data, Data("bytes"));
    EXPECT_EQ(service->requestCount(), 0U);
}

} // namespace tovrel::tests
