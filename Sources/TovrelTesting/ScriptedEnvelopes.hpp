#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelWebServices/Services/TovrelDomainWebService.hpp>
#include <TovrelWebServices/Transport/WebRequestable.hpp>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace tovrel::testing {

/// What a fake API or CDN service answers, and what it was asked. Thread-safe.
class TOVREL_EXPORT ScriptedEnvelopes {
public:
    /// Answers one request; what it throws is the failure of the request. The payload is the one that the caller wants.
    using Answer =
        std::function<TovrelDomainWebService::AnyResponse(const WebRequestable& request, ApiPayloadType payload)>;

    virtual ~ScriptedEnvelopes();
    ScriptedEnvelopes(const ScriptedEnvelopes&) = delete;
    ScriptedEnvelopes& operator=(const ScriptedEnvelopes&) = delete;

    /// Adds an answer for the next request that has none yet. A request without an answer stops the process, and so
    /// does one that wants another payload than its answer has.
    void answer(Answer answer);

    /// Answers the next request with an envelope, without JSON.
    template <class T>
    void answer(ApiWebResponseObject<T> envelope, std::int64_t statusCode = 200) {
        answer([envelope = std::move(envelope), statusCode](const WebRequestable&, ApiPayloadType) {
            return TovrelDomainWebService::AnyResponse(AnyApiWebResponseObject(envelope),
                                                       WebResponse(std::nullopt, HTTPHeaders(), statusCode));
        });
    }

    /// Answers the next request with a payload; the envelope's code is "OK".
    template <Codable T>
    void answerWith(T payload) {
        answer(ApiWebResponseObject<T>(ApiResponseMeta("OK", ""), std::move(payload)));
    }

    /// Answers the next request with a JSON body, decoded and judged as the real services do.
    void answerJSON(Data body, std::int64_t statusCode = 200);

    /// Fails the next request.
    void fail(std::exception_ptr error);

    template <class E>
    void fail(const E& error) {
        fail(std::make_exception_ptr(error));
    }

    /// Answers every request for which there is no answer of its own.
    void answerAll(Answer answer);

    /// What was executed, in order.
    [[nodiscard]] std::vector<std::shared_ptr<const WebRequestable>> requests() const;
    [[nodiscard]] std::size_t requestCount() const;

protected:
    ScriptedEnvelopes();

    /// Answers the request when it is awaited.
    [[nodiscard]] Async<TovrelDomainWebService::AnyResponse> respond(std::shared_ptr<const WebRequestable> request,
                                                                     ApiPayloadType payload) const;

private:
    struct State;

    static Async<TovrelDomainWebService::AnyResponse>
    respondFrom(std::shared_ptr<State> state, std::shared_ptr<const WebRequestable> request, ApiPayloadType payload);

    std::shared_ptr<State> state_;
};

} // namespace tovrel::testing
