#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/Coding/TextEncoding.hpp>
#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>
#include <Platform/URLLoading/URL.hpp>
#include <Platform/URLLoading/URLComponents.hpp>
#include <Platform/URLLoading/URLProgress.hpp>
#include <Platform/URLLoading/URLRequest.hpp>
#include <TovrelWebServices/Transport/AcceptEncodingType.hpp>
#include <TovrelWebServices/Transport/AcceptLanguage.hpp>
#include <TovrelWebServices/Transport/CachePolicy.hpp>
#include <TovrelWebServices/Transport/ContentType.hpp>
#include <TovrelWebServices/Transport/DecodingStrategy.hpp>
#include <TovrelWebServices/Transport/HttpMethod.hpp>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel {

class RetryLogicStrategy;

/// A request of any kind, as the executor and the services read it. Implemented by `WebRequest` alone.
///
/// Shared by reference: the service and its caller see the same object. One caller at a time may use it.
class TOVREL_EXPORT WebRequestable : public std::enable_shared_from_this<WebRequestable> {
public:
    using HeaderMap = std::map<std::string, std::string>;
    using QueryParameters = std::map<std::string, std::vector<std::string>>;
    using WillRetryObserver = std::function<void()>;
    using ProgressObserver = std::function<void(const URLProgress&)>;

    virtual ~WebRequestable();
    WebRequestable(const WebRequestable&) = delete;
    WebRequestable& operator=(const WebRequestable&) = delete;

    [[nodiscard]] const URL& url() const { return url_; }
    [[nodiscard]] HttpMethod method() const { return method_; }
    void setMethod(HttpMethod method) { method_ = method; }

    /// Names are compared exactly, letter case included.
    [[nodiscard]] const HeaderMap& headers() const { return headers_; }

    /// Name to values, unencoded.
    [[nodiscard]] const QueryParameters& queryParameters() const { return queryParameters_; }
    [[nodiscard]] const std::optional<Data>& body() const { return body_; }

    /// Seconds without a byte in either direction.
    [[nodiscard]] double timeoutInterval() const { return timeoutInterval_; }
    void setTimeoutInterval(double seconds) { timeoutInterval_ = seconds; }
    [[nodiscard]] CachePolicy cachePolicy() const { return cachePolicy_; }

    /// What overrides the default decoding strategy, if anything does.
    [[nodiscard]] const std::optional<DecodingStrategy>& customDecodingStrategy() const {
        return customDecodingStrategy_;
    }

    /// The custom decoding strategy, else `DecodingStrategy::default_()`: the general reading, for code that takes
    /// requests of any kind. Requests of the API and CDN kinds read as such have another default.
    [[nodiscard]] DecodingStrategy decodingStrategy() const;

    [[nodiscard]] const std::shared_ptr<RetryLogicStrategy>& retryStrategy() const { return retryStrategy_; }
    std::shared_ptr<WebRequestable> setRetryStrategy(std::shared_ptr<RetryLogicStrategy> strategy);
    std::shared_ptr<WebRequestable> setWillRetryObserver(WillRetryObserver observer);

    /// Who is told how far the response's body has come; may be null.
    [[nodiscard]] const std::shared_ptr<const URLProgressObserver>& progressObserver() const {
        return progressObserver_;
    }

    /// Whether the retry strategy allows one more retry now.
    [[nodiscard]] bool shouldRetry() const;

    /// Lets the retry strategy wait, then calls the observer.
    ///
    /// @throws what the strategy throws; the observer is then not called.
    [[nodiscard]] Async<void> willRetry();

    /// The platform request, finished for the request's kind.
    ///
    /// @throws WebServiceError invalidUrl
    [[nodiscard]] URLRequest buildURLRequest() const;

    /// The platform request before its kind's own step.
    ///
    /// @throws WebServiceError invalidUrl
    [[nodiscard]] URLRequest setUpRequest() const;

    /// The URL with the query parameters behind its own query.
    ///
    /// @throws WebServiceError invalidUrl
    [[nodiscard]] URLComponents createURLComponents() const;

    /// Replaces the query by the existing items and, sorted by name, one item for each value of a parameter.
    void setupQueryItems(URLComponents& urlComponents, std::vector<URLQueryItem> existingQueryParameters) const;

    /// Writes "+" as "%2B", so that it does not reach the server as a space.
    static void endcodeURLComponenets(URLComponents& urlComponents);

protected:
    WebRequestable(URL url, HttpMethod method, const ContentType& contentType, double timeoutInterval,
                   CachePolicy cachePolicy);

    /// The URL of a resource below a host.
    ///
    /// @throws WebServiceError invalidUrl
    static URL resourceURL(std::string_view domain, std::string_view resourceUrl);

    void storeHeader(std::string key, std::string value) {
        headers_.insert_or_assign(std::move(key), std::move(value));
    }
    void storeContentType(const ContentType& contentType);
    void storeAcceptEncoding(std::span<const AcceptEncodingType> types);
    void storeAcceptLanguages(std::span<const AcceptLanguage> languages);
    void storeQueryParameter(std::string key, std::vector<std::string> values);
    void mergeQueryParameter(std::string key, std::vector<std::string> values);
    void storeBody(std::optional<Data> body, const ContentType& contentType);
    void storeCachePolicy(CachePolicy policy) { cachePolicy_ = policy; }
    void storeProgressObserver(ProgressObserver observer, std::optional<Executor> executor);
    void storeDecodingStrategy(DecodingStrategy strategy) { customDecodingStrategy_ = std::move(strategy); }

private:
    URL url_;
    HttpMethod method_;
    HeaderMap headers_;
    QueryParameters queryParameters_;
    std::optional<Data> body_;
    double timeoutInterval_;
    CachePolicy cachePolicy_;
    std::optional<DecodingStrategy> customDecodingStrategy_;
    std::shared_ptr<RetryLogicStrategy> retryStrategy_;
    WillRetryObserver willRetryObserver_;
    std::shared_ptr<const URLProgressObserver> progressObserver_;
};

/// A request to the API. Its platform request carries the process-wide user agent, if there is one.
class TOVREL_EXPORT ApiRequestable {
public:
    virtual ~ApiRequestable();
    [[nodiscard]] URLRequest populate(URLRequest urlRequest) const;

protected:
    ApiRequestable();
};

/// A request to the CDN. Its platform request carries the process-wide user agent, if there is one.
class TOVREL_EXPORT CdnRequestable {
public:
    virtual ~CdnRequestable();
    [[nodiscard]] URLRequest populate(URLRequest urlRequest) const;

protected:
    CdnRequestable();
};

/// A request to any HTTP host. Its platform request is as it is.
class TOVREL_EXPORT HttpRequestable {
public:
    virtual ~HttpRequestable();
    [[nodiscard]] URLRequest populate(URLRequest urlRequest) const;

protected:
    HttpRequestable();
};

} // namespace tovrel
