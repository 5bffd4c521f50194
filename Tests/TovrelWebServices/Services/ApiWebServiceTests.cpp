#include <TovrelWebServices/Services/DefaultApiWebService.hpp>
#include <TovrelWebServices/Services/DefaultHttpWebService.hpp>
#include <TovrelWebServices/Services/DomainServiceFixture.hpp>

#include <gtest/gtest.h>

namespace tovrel::tests {

namespace {

class ApiWebServiceTest : public DomainServiceTest {
protected:
    std::shared_ptr<ApiWebService> service_ = DefaultApiWebService::make(accounts_);
};

} // namespace

TEST_F(ApiWebServiceTest, ReturnsTheEnvelopeAloneWhenNoPayloadIsAskedFor) {
    for (const std::string_view data : {R"(,"data":{"id":1})", R"(,"data":[1,"a"])", R"(,"data":"done")"}) {
        executor_->answer(reply(200, R"({"meta":{"code":"C","message":"M"})" + std::string(data) + "}"));
        const ApiWebResponseObject<ApiEmptyDataResponse> envelope =
            getInTime(service_->execute(service_->buildRequest("x", HttpMethod::delete_)));
        EXPECT_EQ(envelope.meta, ApiResponseMeta("C", "M"));
        EXPECT_TRUE(envelope.data) << data;
    }
    executor_->answer(reply(200, R"({"meta":{"code":"C","message":"M"}})"));
    EXPECT_FALSE(getInTime(service_->execute(service_->buildRequest("x", HttpMethod::delete_))).data);
}

TEST_F(ApiWebServiceTest, AddressesTheApiOfItsStage) {
    const auto host = [this](TovrelAccountsEnvironment environment) {
        TovrelAccountsClient client = testing::FakeTovrelAccountsWebService::exampleClient();
        client.environment = environment;
        const auto accounts = testing::FakeTovrelAccountsWebService::make(executor_, client);
        return DefaultApiWebService::make(accounts)->buildRequest("x", HttpMethod::get)->url().absoluteString();
    };
    const auto expected = [](TovrelApiEnvironment environment) {
        return "https://" + std::string(environment.domain()) + "/x";
    };
    EXPECT_EQ(host(TovrelAccountsEnvironment::development()), expected(TovrelApiEnvironment::development()));
    EXPECT_EQ(host(TovrelAccountsEnvironment::test()), expected(TovrelApiEnvironment::test()));
    EXPECT_EQ(host(TovrelAccountsEnvironment::production()), expected(TovrelApiEnvironment::production()));
}

TEST_F(ApiWebServiceTest, ReadsTheSameRequestOtherwiseThanThePlainHttpService) {
    const auto request = service_->buildRequest("x", HttpMethod::get);
    executor_->answer(reply(200, R"({"meta":{"code":"a","message":"b"},)"
                                 R"("data":{"id":1,"title":"t","created_at":978307260000}})"));
    executor_->answer(reply(200, R"({"id":1,"title":"t","created_at":978307260000,"createdAt":30})"));
    EXPECT_EQ(getInTime(service_->executeEnvelope<Item>(request)).data->createdAt, Date(60));
    const auto http = DefaultHttpWebService::make(executor_);
    EXPECT_EQ(getInTime(http->execute<Item>(request)).responseObject.createdAt, Date(30));
}

} // namespace tovrel::tests
