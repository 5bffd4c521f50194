#pragma once

#include <Platform/Coding/Date.hpp>
#include <Platform/URLLoading/Detail/Cache/StoredResponse.hpp>
#include <Platform/URLLoading/HTTPHeaders.hpp>
#include <Platform/URLLoading/URLError.hpp>
#include <Platform/URLLoading/URLRequest.hpp>

namespace tovrel {

/// What a cache does with a request.
struct CacheDecision {
    enum class Action {
        /// Answer with the stored response.
        answer,
        /// Send the request with `fields` put in.
        load,
        /// As `load`, and a 304 stands for the stored response.
        validate,
        /// Fail: the caller forbids to load, and nothing is stored.
        failAsUnavailable,
        /// Answer with 504 (RFC 9111, section 5.2.1.7): the request's only-if-cached cannot be met.
        answerGatewayTimeout,
    };

    /// Whether the stored response answers in place of an error (RFC 5861, section 4).
    enum class AnswersErrors {
        never,
        /// The request asks for it: a device without network is told so all the same.
        unlessNotConnected,
        /// The stored response itself allows it.
        always,
    };

    Action action;
    HTTPHeaders fields;
    AnswersErrors answersErrors = AnswersErrors::never;

    explicit CacheDecision(Action chosen, HTTPHeaders fieldsToSend = HTTPHeaders());

    /// Whether the stored response answers in place of that failure.
    bool answers(URLError::Kind failure) const noexcept;
    /// Whether the stored response answers in place of that status.
    bool answers(int statusCode) const noexcept;

    friend bool operator==(const CacheDecision&, const CacheDecision&) = default;
};

/// Decides what happens to a request (RFC 9111, section 4): what to send, and what may be answered.
///
/// @param policy Overrules what the fields say, except under `useProtocolCachePolicy`.
/// @param stored The response that the request selects, or null. It is not consulted otherwise.
CacheDecision decide(Date now, const URLRequest& request, URLRequestCachePolicy policy, const StoredResponse* stored);

/// Whether a stored response could make a difference to the request.
bool looksUp(const URLRequest& request);

/// The fields of the stored response as they are answered (RFC 9111, section 4): with its Age, and without those that
/// need a validation that there was none of.
HTTPHeaders answeredFields(const StoredResponse& stored, Date now, bool isValidated);

} // namespace tovrel
