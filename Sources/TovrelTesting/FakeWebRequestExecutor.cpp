#include <Platform/System/FatalError.hpp>
#include <TovrelTesting/FakeWebRequestExecutor.hpp>
#include <TovrelWebServices/Transport/WebServiceUtility.hpp>

#include <utility>

namespace tovrel::testing {

std::shared_ptr<FakeWebRequestExecutor> FakeWebRequestExecutor::make() {
    return std::shared_ptr<FakeWebRequestExecutor>(new FakeWebRequestExecutor());
}

FakeWebRequestExecutor::FakeWebRequestExecutor() = default;

FakeWebRequestExecutor::~FakeWebRequestExecutor() = default;

void FakeWebRequestExecutor::answer(Answer answer) {
    const std::scoped_lock lock(mutex_);
    answers_.push_back(std::move(answer));
}

void FakeWebRequestExecutor::answer(WebResponse response) {
    answer([response = std::move(response)](const WebRequestable&) { return response; });
}

void FakeWebRequestExecutor::fail(std::exception_ptr error) {
    answer([error = std::move(error)](const WebRequestable&) -> WebResponse { std::rethrow_exception(error); });
}

void FakeWebRequestExecutor::answerAll(Answer answer) {
    const std::scoped_lock lock(mutex_);
    answerToAll_ = std::move(answer);
}

std::vector<std::shared_ptr<const WebRequestable>> FakeWebRequestExecutor::requests() const {
    const std::scoped_lock lock(mutex_);
    return requests_;
}

std::size_t FakeWebRequestExecutor::requestCount() const {
    const std::scoped_lock lock(mutex_);
    return requests_.size();
}

Async<WebResponse> FakeWebRequestExecutor::data(std::shared_ptr<const WebRequestable> request) {
    return dataOf(shared_from_this(), std::move(request));
}

Async<void> FakeWebRequestExecutor::execute(std::shared_ptr<const WebRequestable> request) {
    return executeOn(shared_from_this(), std::move(request));
}

Async<WebResponse> FakeWebRequestExecutor::dataOf(std::shared_ptr<FakeWebRequestExecutor> self,
                                                  std::shared_ptr<const WebRequestable> request) {
    co_return self->respond(request);
}

Async<void> FakeWebRequestExecutor::executeOn(std::shared_ptr<FakeWebRequestExecutor> self,
                                              std::shared_ptr<const WebRequestable> request) {
    const WebResponse response = self->respond(request);
    WebServiceUtility::validateStatusCode(response.statusCode, StatusCodeRange::success());
    co_return;
}

WebResponse FakeWebRequestExecutor::respond(const std::shared_ptr<const WebRequestable>& request) {
    Answer answer;
    {
        const std::scoped_lock lock(mutex_);
        requests_.push_back(request);
        if (!answers_.empty()) {
            answer = std::move(answers_.front());
            answers_.pop_front();
        } else {
            answer = answerToAll_;
        }
    }
    if (!answer) {
        fatalError("The fake executor was sent a request that it has no answer for.");
    }
    return answer(*request);
}

} // namespace tovrel::testing
