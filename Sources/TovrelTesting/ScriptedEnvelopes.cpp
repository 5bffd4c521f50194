#include <Platform/System/FatalError.hpp>
#include <TovrelTesting/ScriptedEnvelopes.hpp>

#include <deque>
#include <mutex>

namespace tovrel::testing {

struct ScriptedEnvelopes::State {
    std::mutex mutex;
    std::deque<Answer> answers;
    Answer answerToAll;
    std::vector<std::shared_ptr<const WebRequestable>> requests;
};

ScriptedEnvelopes::ScriptedEnvelopes() : state_(std::make_shared<State>()) {}

ScriptedEnvelopes::~ScriptedEnvelopes() = default;

void ScriptedEnvelopes::answer(Answer answer) {
    const std::scoped_lock lock(state_->mutex);
    state_->answers.push_back(std::move(answer));
}

void ScriptedEnvelopes::answerJSON(Data body, std::int64_t statusCode) {
    answer([body = std::move(body), statusCode](const WebRequestable& request, ApiPayloadType payload) {
        const JSONDecoder decoder =
            request.customDecodingStrategy().value_or(DecodingStrategy::snakeCaseAndMilliseconds()).jsonDecoder();
        return TovrelDomainWebService::validatedTovrelResponse(WebResponse(body, HTTPHeaders(), statusCode), body,
                                                               decoder, payload);
    });
}

void ScriptedEnvelopes::fail(std::exception_ptr error) {
    answer([error = std::move(error)](const WebRequestable&, ApiPayloadType) -> TovrelDomainWebService::AnyResponse {
        std::rethrow_exception(error);
    });
}

void ScriptedEnvelopes::answerAll(Answer answer) {
    const std::scoped_lock lock(state_->mutex);
    state_->answerToAll = std::move(answer);
}

std::vector<std::shared_ptr<const WebRequestable>> ScriptedEnvelopes::requests() const {
    const std::scoped_lock lock(state_->mutex);
    return state_->requests;
}

std::size_t ScriptedEnvelopes::requestCount() const {
    const std::scoped_lock lock(state_->mutex);
    return state_->requests.size();
}

Async<TovrelDomainWebService::AnyResponse> ScriptedEnvelopes::respond(std::shared_ptr<const WebRequestable> request,
                                                                      ApiPayloadType payload) const {
    return respondFrom(state_, std::move(request), payload);
}

Async<TovrelDomainWebService::AnyResponse> ScriptedEnvelopes::respondFrom(std::shared_ptr<State> state,
                                                                          std::shared_ptr<const WebRequestable> request,
                                                                          ApiPayloadType payload) {
    Answer answer;
    {
        const std::scoped_lock lock(state->mutex);
        state->requests.push_back(request);
        if (state->answers.empty()) {
            answer = state->answerToAll;
        } else {
            answer = std::move(state->answers.front());
            state->answers.pop_front();
        }
    }
    if (!answer) {
        fatalError("The fake service was sent a request that it has no answer for.");
    }
    co_return answer(*request, payload);
}

} // namespace tovrel::testing
