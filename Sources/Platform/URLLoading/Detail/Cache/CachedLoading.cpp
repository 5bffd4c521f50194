#include <Platform/URLLoading/Detail/Cache/CacheControl.hpp>
#include <Platform/URLLoading/Detail/Cache/CacheDecision.hpp>
#include <Platform/URLLoading/Detail/Cache/CachedLoading.hpp>
#include <Platform/URLLoading/Detail/Cache/CacheKey.hpp>
#include <Platform/URLLoading/Detail/Cache/ResponseRecording.hpp>
#include <Platform/URLLoading/Detail/Cache/Storability.hpp>
#include <Platform/URLLoading/Detail/Cache/Validation.hpp>
#include <Platform/URLLoading/Detail/Redirect.hpp>
#include <Platform/URLLoading/Detail/RequestCheck.hpp>
#include <Platform/URLLoading/Detail/Transferring.hpp>
#include <Platform/URLLoading/HTTPURLResponse.hpp>
#include <Platform/URLLoading/URLError.hpp>

#include <optional>
#include <string_view>
#include <utility>
#include <variant>

namespace tovrel {

namespace {

using Action = CacheDecision::Action;
using Found = CacheStore::Found;
using Source = HTTPURLResponse::Source;

constexpr int ok = 200;
constexpr int multipleChoices = 300;
constexpr int partialContent = 206;
constexpr int notModified = 304;
constexpr int gatewayTimeout = 504;

const HTTPURLResponse& responseOf(const URLSessionResult& result) {
    return static_cast<const HTTPURLResponse&>(*result.response);
}

/// One request, without its redirects, on its way through the cache.
struct Exchange {
    std::shared_ptr<TransferEngine> engine;
    std::shared_ptr<CacheStore> store;
    URLRequest request;
    std::string key;

    Exchange(std::shared_ptr<TransferEngine> usedEngine, std::shared_ptr<CacheStore> usedStore, URLRequest sentRequest)
        : engine(std::move(usedEngine)),
          store(std::move(usedStore)),
          request(std::move(sentRequest)),
          key(cacheKey(request.url)) {}

    CacheDecision decision(const Found& found) const {
        return decide(store->now(), request, request.cachePolicy, found ? &found->head : nullptr);
    }

    URLSessionResult answer(const CachedResponse& stored, Source source) const {
        const std::optional<std::uint64_t> limit = engine->settings().maximumBodySize();
        const Data body = request.httpMethod == "HEAD" ? Data() : stored.body;
        if (limit && body.size() > *limit) {
            throw URLError::dataLengthExceedsMaximum(summary(request));
        }
        auto response = std::make_shared<const HTTPURLResponse>(
            request.url, stored.head.statusCode,
            answeredFields(stored.head, store->now(), source == Source::validatedCache), stored.head.httpVersion,
            source);
        return URLSessionResult(body, std::move(response));
    }

    URLSessionResult answerGatewayTimeout() const {
        return URLSessionResult(Data(), std::make_shared<const HTTPURLResponse>(
                                            request.url, gatewayTimeout, HTTPHeaders(), "HTTP/1.1", Source::cache));
    }

    /// What is out of date after an answer to an unsafe method (RFC 9111, section 4.4).
    void invalidate(const HTTPHeaders& headers) const {
        store->remove(key);
        for (const std::string_view name : {"location", "content-location"}) {
            const std::string* reference = headers.find(name);
            const auto target = reference == nullptr ? std::nullopt : URL::parse(*reference, request.url);
            if (target && sameOrigin(*target, request.url)) {
                store->remove(cacheKey(*target));
            }
        }
    }
};

/// Awaits a transfer that may fail. Cancellation is a failure like any other here.
struct Attempt {
    Date requested;
    Date received;
    URLSessionResult result;
    std::optional<URLError> failure;

    Attempt() = default;
};

Async<Attempt> attempt(std::shared_ptr<Exchange> exchange, HTTPHeaders fields,
                       std::shared_ptr<TransferObserver> observer) {
    URLRequest request = exchange->request;
    for (const HTTPHeader& field : fields) {
        request.headers.set(field.name, field.value);
    }
    TransferOptions options;
    options.followsRedirects = false;
    options.observer = std::move(observer);
    Attempt outcome;
    outcome.requested = exchange->store->now();
    try {
        outcome.result = co_await transfer(exchange->engine, std::move(request), std::move(options));
    } catch (const URLError& error) {
        outcome.failure = error;
    }
    outcome.received = exchange->store->now();
    co_return outcome;
}

/// What is kept of the response that came.
StoredResponse headOf(const Exchange& exchange, const Attempt& attempted) {
    const HTTPURLResponse& response = responseOf(attempted.result);
    return StoredResponse(exchange.request, response.statusCode(), response.httpVersion(), response.allHeaderFields(),
                          attempted.requested, attempted.received);
}

Async<Found> lookUp(std::shared_ptr<Exchange> exchange, std::shared_ptr<CacheVisit> visit) {
    Found found = exchange->store->findInMemory(exchange->key, exchange->request);
    if (!found && exchange->store->mayBeOnDisk(exchange->key)) {
        found = co_await CacheStore::readFromDisk(std::move(visit), exchange->request);
    }
    co_return found;
}

/// The origin confirmed the stored response: it is answered with what the confirmation says anew.
URLSessionResult answerConfirmed(const Exchange& exchange, const CacheVisit& visit, const CachedResponse& stored,
                                 const StoredResponse& confirmation) {
    const auto fresh =
        std::make_shared<const CachedResponse>(stored.variant, freshened(stored.head, confirmation), stored.body);
    if (CacheControl(fresh->head.headers).noStore || variesAlways(fresh->head.headers)) {
        exchange.store->remove(exchange.key, stored.variant);
    } else if (mayStoreAnswers(exchange.request)) {
        exchange.store->replaceHead(visit, fresh);
    }
    return exchange.answer(*fresh, Source::validatedCache);
}

/// Takes the answer to HEAD for news of the stored response to GET.
void compareWithHead(const Exchange& exchange, const CacheVisit& visit, const CachedResponse& stored,
                     const StoredResponse& head) {
    if (auto updated = updatedByHead(stored.head, head)) {
        exchange.store->replaceHead(
            visit, std::make_shared<const CachedResponse>(stored.variant, std::move(*updated), stored.body));
    } else {
        exchange.store->remove(exchange.key, stored.variant);
    }
}

/// Stores a complete response to GET, or forgets what a newer one replaces that must not be stored.
void keep(const Exchange& exchange, const Found& found, ResponseRecording& recording, const Attempt& attempted) {
    const int status = responseOf(attempted.result).statusCode();
    if (recording.isStorable()) {
        recording.commit(found, headOf(exchange, attempted), attempted.result.data.value_or(Data()));
    } else if (status >= ok && status < multipleChoices && status != partialContent &&
               exchange.store->mayContain(exchange.key)) {
        exchange.store->remove(exchange.key, found ? found->variant : headOf(exchange, attempted).variant());
    }
}

Async<URLSessionResult> loadAndStore(std::shared_ptr<Exchange> exchange, std::shared_ptr<CacheVisit> visit, Found found,
                                     CacheDecision decision) {
    const URLRequest& request = exchange->request;
    std::shared_ptr<ResponseRecording> recording;
    if (mayStoreAnswers(request)) {
        recording = std::make_shared<ResponseRecording>(visit);
    }
    Attempt attempted = co_await attempt(exchange, decision.fields, recording);
    if (attempted.failure) {
        if (found && decision.answers(attempted.failure->kind())) {
            co_return exchange->answer(*found, Source::cache);
        }
        throw std::move(*attempted.failure);
    }

    const HTTPURLResponse& response = responseOf(attempted.result);
    const int status = response.statusCode();
    if (decision.action == Action::validate && status == notModified) {
        const StoredResponse head = headOf(*exchange, attempted);
        if (confirms(head, found->head)) {
            co_return answerConfirmed(*exchange, *visit, *found, head);
        }
        exchange->store->remove(exchange->key, found->variant);
        const CacheDecision unconditional(Action::load);
        co_return co_await loadAndStore(exchange, visit, nullptr, unconditional);
    }
    if (found && decision.answers(status)) {
        co_return exchange->answer(*found, Source::cache);
    }
    if (invalidates(request.httpMethod, status)) {
        exchange->invalidate(response.allHeaderFields());
    } else if (request.httpMethod == "HEAD" && status == ok) {
        if (!found) {
            found = co_await lookUp(exchange, visit);
        }
        if (found) {
            compareWithHead(*exchange, *visit, *found, headOf(*exchange, attempted));
        }
    } else if (recording) {
        keep(*exchange, found, *recording, attempted);
    }
    co_return std::move(attempted.result);
}

Async<URLSessionResult> exchangeOnce(std::shared_ptr<Exchange> exchange) {
    const bool mayHelp = looksUp(exchange->request);
    if (mayHelp) {
        const Found found = exchange->store->findInMemory(exchange->key, exchange->request);
        if (found && exchange->decision(found).action == Action::answer) {
            co_return exchange->answer(*found, Source::cache);
        }
    }
    const auto visit = std::make_shared<CacheVisit>(exchange->store, exchange->key);
    Found found;
    if (mayHelp) {
        found = co_await lookUp(exchange, visit);
    }
    CacheDecision decision = exchange->decision(found);
    switch (decision.action) {
    case Action::answer:
        co_return exchange->answer(*found, Source::cache);
    case Action::failAsUnavailable:
        throw URLError::resourceUnavailable(summary(exchange->request));
    case Action::answerGatewayTimeout:
        co_return exchange->answerGatewayTimeout();
    case Action::load:
    case Action::validate:
        break;
    }
    co_return co_await loadAndStore(exchange, visit, std::move(found), std::move(decision));
}

} // namespace

Async<URLSessionResult> loadThroughCache(std::shared_ptr<TransferEngine> engine, std::shared_ptr<CacheStore> store,
                                         URLRequest request) {
    for (int redirects = 0;; ++redirects) {
        const auto exchange = std::make_shared<Exchange>(engine, store, request);
        URLSessionResult result = co_await exchangeOnce(exchange);
        const HTTPURLResponse& response = responseOf(result);
        const std::string* location =
            isRedirect(response.statusCode()) ? response.allHeaderFields().find("location") : nullptr;
        if (location == nullptr) {
            co_return result;
        }
        if (redirects == mostRedirects) {
            throw URLError::tooManyRedirects(summary(request));
        }
        auto next = redirected(request, response.statusCode(), *location, engine->settings().allowsPlainHTTP());
        if (const auto* kind = std::get_if<URLError::Kind>(&next)) {
            throw URLError(*kind, summary(request));
        }
        request = std::move(std::get<URLRequest>(next));
    }
}

} // namespace tovrel
