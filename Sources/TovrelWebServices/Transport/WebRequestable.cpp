#include <Platform/URLLoading/PercentEncoding.hpp>
#include <Platform/URLLoading/URLProgressObserver.hpp>
#include <TovrelContracts/AssertionCoordinator.hpp>
#include <TovrelWebServices/Services/NoRetryLogicStrategy.hpp>
#include <TovrelWebServices/Transport/WebRequestable.hpp>
#include <TovrelWebServices/Transport/WebRequestConfig.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <utility>

namespace tovrel {

namespace {

URLRequest withUserAgent(URLRequest request) {
    if (const auto userAgent = WebRequestConfig::userAgent()) {
        request.headers.add("User-Agent", *userAgent);
    }
    return request;
}

Async<void> waitThenObserve(std::shared_ptr<RetryLogicStrategy> strategy, WebRequestable::WillRetryObserver observer) {
    co_await strategy->willRetry();
    if (observer) {
        observer();
    }
}

} // namespace

WebRequestable::WebRequestable(URL url, HttpMethod method, const ContentType& contentType, double timeoutInterval,
                               CachePolicy cachePolicy)
    : url_(std::move(url)),
      method_(method),
      timeoutInterval_(timeoutInterval),
      cachePolicy_(cachePolicy),
      retryStrategy_(NoRetryLogicStrategy::make()) {
    storeContentType(contentType);
}

WebRequestable::~WebRequestable() = default;

URL WebRequestable::resourceURL(std::string_view domain, std::string_view resourceUrl) {
    const auto path = percentEncodePath(resourceUrl);
    if (!path) {
        throw WebServiceError::invalidUrl();
    }
    auto url = URL::parse("https://" + std::string(domain) + "/" + *path);
    if (!url) {
        throw WebServiceError::invalidUrl();
    }
    return *std::move(url);
}

DecodingStrategy WebRequestable::decodingStrategy() const {
    return customDecodingStrategy_.value_or(DecodingStrategy::default_());
}

std::shared_ptr<WebRequestable> WebRequestable::setRetryStrategy(std::shared_ptr<RetryLogicStrategy> strategy) {
    retryStrategy_ = std::move(strategy);
    return shared_from_this();
}

std::shared_ptr<WebRequestable> WebRequestable::setWillRetryObserver(WillRetryObserver observer) {
    willRetryObserver_ = std::move(observer);
    return shared_from_this();
}

bool WebRequestable::shouldRetry() const {
    return retryStrategy_->shouldRetry();
}

Async<void> WebRequestable::willRetry() {
    return waitThenObserve(retryStrategy_, willRetryObserver_);
}

URLRequest WebRequestable::buildURLRequest() const {
    URLRequest request = setUpRequest();
    if (const auto* api = dynamic_cast<const ApiRequestable*>(this)) {
        return api->populate(std::move(request));
    }
    if (const auto* cdn = dynamic_cast<const CdnRequestable*>(this)) {
        return cdn->populate(std::move(request));
    }
    if (const auto* http = dynamic_cast<const HttpRequestable*>(this)) {
        return http->populate(std::move(request));
    }
    AssertionCoordinator::assertionFailure("Unsupported WebRequest Type", "WebRequestable", 60);
    return request;
}

URLRequest WebRequestable::setUpRequest() const {
    auto url = createURLComponents().url();
    if (!url) {
        throw WebServiceError::invalidUrl();
    }
    URLRequest request(*std::move(url));
    request.timeoutInterval = timeoutInterval_;
    request.cachePolicy = platformCachePolicy(cachePolicy_);
    request.httpMethod = method_.rawValue();
    for (const auto& [name, value] : headers_) {
        request.headers.add(name, value);
    }
    request.body = body_;
    request.progressObserver = progressObserver_;
    return request;
}

URLComponents WebRequestable::createURLComponents() const {
    URLComponents components(url_, true);
    auto existing = components.queryItems();
    if (!queryParameters_.empty() || existing) {
        setupQueryItems(components, std::move(existing).value_or(std::vector<URLQueryItem>()));
        endcodeURLComponenets(components);
    }
    return components;
}

void WebRequestable::setupQueryItems(URLComponents& urlComponents,
                                     std::vector<URLQueryItem> existingQueryParameters) const {
    for (const auto& [name, values] : queryParameters_) {
        for (const std::string& value : values) {
            existingQueryParameters.emplace_back(name, value);
        }
    }
    urlComponents.setQueryItems(std::move(existingQueryParameters));
}

void WebRequestable::endcodeURLComponenets(URLComponents& urlComponents) {
    const auto& query = urlComponents.percentEncodedQuery();
    if (!query) {
        return;
    }
    std::string encoded;
    encoded.reserve(query->size());
    for (const char character : *query) {
        if (character == '+') {
            encoded += "%2B";
        } else {
            encoded += character;
        }
    }
    urlComponents.setPercentEncodedQuery(std::move(encoded));
}

void WebRequestable::storeContentType(const ContentType& contentType) {
    storeHeader(std::string(ContentType::header), contentType.value());
}

void WebRequestable::storeAcceptEncoding(std::span<const AcceptEncodingType> types) {
    storeHeader("Accept-Encoding", AcceptEncodingType::headerValue(types));
}

void WebRequestable::storeAcceptLanguages(std::span<const AcceptLanguage> languages) {
    storeHeader("Accept-Language", AcceptLanguage::headerValue(languages));
}

void WebRequestable::storeQueryParameter(std::string key, std::vector<std::string> values) {
    if (values.empty()) {
        queryParameters_.erase(key);
    } else {
        mergeQueryParameter(std::move(key), std::move(values));
    }
}

void WebRequestable::mergeQueryParameter(std::string key, std::vector<std::string> values) {
    queryParameters_.insert_or_assign(std::move(key), std::move(values));
}

void WebRequestable::storeProgressObserver(ProgressObserver observer, std::optional<Executor> executor) {
    if (!observer) {
        progressObserver_ = nullptr;
    } else if (executor) {
        progressObserver_ = URLProgressObserver::make(std::move(observer), *std::move(executor));
    } else {
        progressObserver_ = URLProgressObserver::make(std::move(observer));
    }
}

void WebRequestable::storeBody(std::optional<Data> body, const ContentType& contentType) {
    body_ = std::move(body);
    storeContentType(contentType);
}

ApiRequestable::ApiRequestable() = default;

ApiRequestable::~ApiRequestable() = default;

URLRequest ApiRequestable::populate(URLRequest urlRequest) const {
    return withUserAgent(std::move(urlRequest));
}

CdnRequestable::CdnRequestable() = default;

CdnRequestable::~CdnRequestable() = default;

URLRequest CdnRequestable::populate(URLRequest urlRequest) const {
    return withUserAgent(std::move(urlRequest));
}

HttpRequestable::HttpRequestable() = default;

HttpRequestable::~HttpRequestable() = default;

URLRequest HttpRequestable::populate(URLRequest urlRequest) const {
    return urlRequest;
}

} // namespace tovrel
