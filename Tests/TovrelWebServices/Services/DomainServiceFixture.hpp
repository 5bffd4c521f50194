#pragma once

#include <TovrelTesting/FakeTovrelAccountsWebService.hpp>
#include <TovrelTesting/FakeWebRequestExecutor.hpp>
#include <TovrelWebServices/Services/Records.hpp>
#include <TovrelWebServices/Services/TimesRetryLogicStrategy.hpp>
#include <TovrelWebServices/Services/TovrelDomainServiceError.hpp>
#include <TovrelWebServices/Transport/WebRequest.hpp>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <Support/Await.hpp>
#include <Support/WebServiceErrors.hpp>
#include <utility>
#include <vector>

namespace tovrel::tests {

constexpr std::string_view envelopeOfAnItem =
    R"({"meta":{"code":"C1","message":"M1"},"data":{"id":7,"title":"t","created_at":978307260000}})";

inline WebResponse reply(std::int64_t status, std::string_view body = envelopeOfAnItem) {
    return WebResponse(Data(body), HTTPHeaders{HTTPHeader("X", "y")}, status);
}

inline WebResponse replyWithoutBody(std::int64_t status = 200) {
    return WebResponse(std::nullopt, HTTPHeaders(), status);
}

/// The `TovrelDomainServiceError` that an operation fails with; absent when it succeeds. Other errors pass through.
template <class T>
std::optional<TovrelDomainServiceError> domainErrorOf(Async<T> operation) {
    try {
        getInTime(std::move(operation));
    } catch (const TovrelDomainServiceError& error) {
        return error;
    }
    return std::nullopt;
}

/// An accounts service and an executor that both answer by a script.
class DomainServiceTest : public AsyncTest {
protected:
    using Call = testing::FakeTovrelAccountsCall::Operation;

    /// Gives out "token-1", "token-2" and so on.
    void numberTheTokens() {
        accounts_->answerLoginWithClient([number = std::make_shared<int>(0)] {
            TovrelAccountsToken token = testing::FakeTovrelAccountsWebService::exampleToken();
            token.accessToken = "token-" + std::to_string(++*number);
            return token;
        });
    }

    /// Answers each request by `answer` and keeps its header "Authorization", which the next attempt overwrites.
    void keepAuthorizations(std::function<WebResponse()> answer) {
        executor_->answerAll([this, answer = std::move(answer)](const WebRequestable& request) {
            authorizations_.push_back(request.headers().at("Authorization"));
            return answer();
        });
    }

    [[nodiscard]] std::size_t logins() const { return accounts_->callCount(Call::loginWithClient); }

    /// The raw values of the reasons of all logouts.
    [[nodiscard]] std::vector<std::int64_t> logouts() const {
        std::vector<std::int64_t> reasons;
        for (const auto& call : accounts_->calls()) {
            if (call.operation == Call::logout) {
                reasons.push_back(call.reason->rawValue);
            }
        }
        return reasons;
    }

    std::shared_ptr<testing::FakeWebRequestExecutor> executor_ = testing::FakeWebRequestExecutor::make();
    std::shared_ptr<testing::FakeTovrelAccountsWebService> accounts_ =
        testing::FakeTovrelAccountsWebService::make(executor_);
    std::vector<std::string> authorizations_;
};

} // namespace tovrel::tests
