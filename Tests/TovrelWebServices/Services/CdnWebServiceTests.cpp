#include <Platform/URLLoading/URLError.hpp>
#include <TovrelWebServices/Services/DefaultCdnWebService.hpp>
#include <TovrelWebServices/Services/DomainServiceFixture.hpp>

#include <gmock/gmock.h>

namespace tovrel::tests {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class CdnWebServiceTest : public DomainServiceTest {
protected:
    [[nodiscard]] CdnWebService::Request request() const { return service_->buildRequest("a/b.png", HttpMethod::get); }

    [[nodiscard]] CdnWebService::Request retrying(std::int64_t times) const {
        return request()->setRetryStrategy(TimesRetryLogicStrategy::make(times, 0));
    }

    std::shared_ptr<CdnWebService> service_ = DefaultCdnWebService::make(accounts_);
};

} // namespace

TEST_F(CdnWebServiceTest, ReturnsARawResponseOfAnyStatusAsItIs) {
    for (const std::int64_t status : {100, 200, 204, 299, 300, 304, 400, 403, 404, 500, 503}) {
        executor_->answer(reply(status, "\x89PNG"));
        const WebResponse response = getInTime(service_->execute(retrying(3)));
        EXPECT_EQ(response.statusCode, status);
        EXPECT_EQ(response.data, Data("\x89PNG"));
        EXPECT_TRUE(response.headers.contains("X"));
    }
    EXPECT_EQ(executor_->requestCount(), 11U);
    EXPECT_THAT(logouts(), IsEmpty());
}

TEST_F(CdnWebServiceTest, ReturnsARawResponseWithoutABodyAsItIs) {
    executor_->answer(replyWithoutBody());
    EXPECT_FALSE(getInTime(service_->execute(retrying(3))).data);
    EXPECT_EQ(executor_->requestCount(), 1U);
}

TEST_F(CdnWebServiceTest, LogsOutWhenARawResponseIs401WithAndWithoutABody) {
    for (const WebResponse& response : {reply(401), replyWithoutBody(401)}) {
        executor_->answer(response);
        EXPECT_EQ(webServiceErrorOf(service_->execute(retrying(3))), WebServiceError::unauthorized());
    }
    EXPECT_THAT(logouts(), ElementsAre(2, 2));
    EXPECT_EQ(executor_->requestCount(), 2U);
}

TEST_F(CdnWebServiceTest, FailsWithTheErrorOfTheLogoutThatARaw401Forces) {
    accounts_->answerLogout([](TovrelAccountsLogoutReason) { throw std::domain_error("stuck"); });
    executor_->answer(reply(401));
    EXPECT_THROW(getInTime(service_->execute(request())), std::domain_error);
}

TEST_F(CdnWebServiceTest, ReturnsTheRawAnswerToARetryWithANewToken) {
    numberTheTokens();
    keepAuthorizations([this]() -> WebResponse {
        if (authorizations_.size() == 1) {
            throw WebServiceError::timedOut();
        }
        return reply(200, "second");
    });
    EXPECT_EQ(getInTime(service_->execute(retrying(1))).data, Data("second"));
    EXPECT_THAT(authorizations_, ElementsAre("Bearer token-1", "Bearer token-2"));
}

TEST_F(CdnWebServiceTest, ReportsTheLastRawFailure) {
    executor_->fail(WebServiceError::timedOut());
    executor_->fail(URLError::cannotFindHost());
    EXPECT_THROW(getInTime(service_->execute(retrying(1))), URLError);
    EXPECT_EQ(executor_->requestCount(), 2U);
}

TEST_F(CdnWebServiceTest, FailsRawAtOnceWithTheErrorOfTheLogin) {
    accounts_->answerLoginWithClient([]() -> TovrelAccountsToken { throw std::domain_error("locked out"); });
    EXPECT_THROW(getInTime(service_->execute(retrying(3))), std::domain_error);
    EXPECT_EQ(executor_->requestCount(), 0U);
}

TEST_F(CdnWebServiceTest, SharesTheBytesOfARawBody) {
    const Data body(std::string(100'000, 'x'));
    executor_->answer(WebResponse(body, HTTPHeaders(), 200));
    EXPECT_EQ(getInTime(service_->execute(request())).data->data(), body.data());
}

TEST_F(CdnWebServiceTest, RefusesAnEnvelopeOfStatus503) {
    executor_->answer(reply(503));
    EXPECT_EQ(domainErrorOf(service_->execute<Item>(request())), TovrelDomainServiceError(503, "C1", "M1"));
    executor_->answer(reply(200));
    EXPECT_EQ(getInTime(service_->execute<Item>(request())).responseObject.data, Item(7, "t", Date(60)));
}

TEST_F(CdnWebServiceTest, AddressesTheCdnOfItsStageAndNeverTheApi) {
    TovrelAccountsClient client = testing::FakeTovrelAccountsWebService::exampleClient();
    client.environment = TovrelAccountsEnvironment::test();
    const auto service =
        DefaultCdnWebService::make(testing::FakeTovrelAccountsWebService::make(executor_, std::move(client)));
    const std::string url = service->buildRequest("x", HttpMethod::get)->url().absoluteString();
    EXPECT_EQ(url, "https://" + std::string(TovrelCdnEnvironment::test().domain()) + "/x");
    EXPECT_NE(TovrelCdnEnvironment::test().domain(), TovrelApiEnvironment::test().domain());
}

} // namespace tovrel::tests
