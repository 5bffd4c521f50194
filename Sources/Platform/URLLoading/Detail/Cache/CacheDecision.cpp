#include <Platform/URLLoading/Detail/Cache/CacheControl.hpp>
#include <Platform/URLLoading/Detail/Cache/CacheDecision.hpp>
#include <Platform/URLLoading/Detail/Cache/Freshness.hpp>
#include <Platform/URLLoading/Detail/Cache/Validation.hpp>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>

namespace tovrel {

namespace {

using Action = CacheDecision::Action;
using AnswersErrors = CacheDecision::AnswersErrors;
using Policy = URLRequestCachePolicy;

constexpr double forEver = std::numeric_limits<double>::infinity();

/// Whether the cache can answer such a request from what it stores: whole responses to GET.
bool canBeAnswered(const URLRequest& request) {
    return (request.httpMethod == "GET" || request.httpMethod == "HEAD") && !request.body &&
           !request.headers.contains("range");
}

CacheDecision loadPastEveryCache(const URLRequest& request) {
    HTTPHeaders fields;
    if (!request.headers.contains("cache-control")) {
        fields.append("Cache-Control", "no-cache");
    }
    if (!request.headers.contains("pragma")) {
        fields.append("Pragma", "no-cache");
    }
    return CacheDecision(Action::load, std::move(fields));
}

CacheDecision validate(const StoredResponse& stored) {
    HTTPHeaders fields = conditions(stored);
    const Action action = fields.empty() ? Action::load : Action::validate;
    return CacheDecision(action, std::move(fields));
}

/// A stored response as the rules of HTTP see it at one moment for one request.
class Judgement {
public:
    Judgement(Date now, const CacheControl& wanted, const StoredResponse& stored)
        : wanted_(wanted),
          stored_(stored.headers),
          age_(currentAge(stored, now)),
          lifetime_(freshnessLifetime(stored)),
          isFromTheFuture_(now < stored.responseTime) {}

    bool mayAnswer() const {
        if (wanted_.noCache || stored_.noCache || isFromTheFuture_) {
            return false;
        }
        const bool isFresh = age_ < lifetime_;
        if (isFresh && stored_.isImmutable && !wanted_.minFresh) {
            // A reload with max-age=0 would only be told what is known (RFC 8246, section 2).
            return true;
        }
        if (wanted_.maxAge && age_ > *wanted_.maxAge) {
            return false;
        }
        if (wanted_.minFresh) {
            return isFresh && age_ + *wanted_.minFresh <= lifetime_;
        }
        const bool isAcceptablyStale =
            wanted_.maxStale && !stored_.mustRevalidate && age_ - lifetime_ <= *wanted_.maxStale;
        return isFresh || isAcceptablyStale;
    }

    AnswersErrors answersErrors() const {
        if (wanted_.noCache || stored_.noCache || stored_.mustRevalidate) {
            return AnswersErrors::never;
        }
        const double staleness = age_ - lifetime_;
        if (staleness <= stored_.staleIfError.value_or(-forEver)) {
            return AnswersErrors::always;
        }
        return staleness <= wanted_.staleIfError.value_or(-forEver) ? AnswersErrors::unlessNotConnected
                                                                    : AnswersErrors::never;
    }

private:
    const CacheControl& wanted_;
    CacheControl stored_;
    double age_;
    double lifetime_;
    bool isFromTheFuture_;
};

CacheDecision decideByProtocol(Date now, const URLRequest& request, const StoredResponse* stored) {
    const CacheControl wanted = CacheControl::ofRequest(request.headers);
    if (stored == nullptr || isConditional(request.headers)) {
        return CacheDecision(wanted.onlyIfCached ? Action::answerGatewayTimeout : Action::load);
    }
    const Judgement judgement(now, wanted, *stored);
    if (judgement.mayAnswer()) {
        return CacheDecision(Action::answer);
    }
    if (wanted.onlyIfCached) {
        return CacheDecision(Action::answerGatewayTimeout);
    }
    CacheDecision decision = validate(*stored);
    decision.answersErrors = judgement.answersErrors();
    return decision;
}

} // namespace

CacheDecision::CacheDecision(Action chosen, HTTPHeaders fieldsToSend)
    : action(chosen), fields(std::move(fieldsToSend)) {}

bool CacheDecision::answers(URLError::Kind failure) const noexcept {
    switch (failure) {
    case URLError::Kind::notConnectedToInternet:
        return answersErrors == AnswersErrors::always;
    case URLError::Kind::timedOut:
    case URLError::Kind::cannotFindHost:
    case URLError::Kind::cannotConnectToHost:
    case URLError::Kind::networkConnectionLost:
        return answersErrors != AnswersErrors::never;
    default:
        return false;
    }
}

bool CacheDecision::answers(int statusCode) const noexcept {
    const bool isError = statusCode == 500 || statusCode == 502 || statusCode == 503 || statusCode == 504;
    return isError && answersErrors != AnswersErrors::never;
}

CacheDecision decide(Date now, const URLRequest& request, URLRequestCachePolicy policy, const StoredResponse* stored) {
    if (!canBeAnswered(request)) {
        stored = nullptr;
    }
    switch (policy) {
    case Policy::reloadIgnoringLocalCacheData:
        return CacheDecision(Action::load);
    case Policy::reloadIgnoringLocalAndRemoteCacheData:
        return loadPastEveryCache(request);
    case Policy::returnCacheDataElseLoad:
        return CacheDecision(stored != nullptr ? Action::answer : Action::load);
    case Policy::returnCacheDataDontLoad:
        return CacheDecision(stored != nullptr ? Action::answer : Action::failAsUnavailable);
    case Policy::reloadRevalidatingCacheData:
        return stored == nullptr || isConditional(request.headers) ? CacheDecision(Action::load) : validate(*stored);
    case Policy::useProtocolCachePolicy:
        break;
    }
    return decideByProtocol(now, request, stored);
}

bool looksUp(const URLRequest& request) {
    switch (request.cachePolicy) {
    case Policy::reloadIgnoringLocalCacheData:
    case Policy::reloadIgnoringLocalAndRemoteCacheData:
        return false;
    case Policy::returnCacheDataElseLoad:
    case Policy::returnCacheDataDontLoad:
        return canBeAnswered(request);
    default:
        return canBeAnswered(request) && !isConditional(request.headers);
    }
}

HTTPHeaders answeredFields(const StoredResponse& stored, Date now, bool isValidated) {
    HTTPHeaders fields = stored.headers;
    if (!isValidated) {
        for (const std::string& name : CacheControl(stored.headers).noCacheFields) {
            fields.remove(name);
        }
    }
    fields.set("Age", std::to_string(static_cast<std::int64_t>(std::floor(currentAge(stored, now)))));
    return fields;
}

} // namespace tovrel
