#pragma once

#include <Platform/Coding/JSONEncoder.hpp>
#include <TovrelWebServices/Services/RetryLogicStrategy.hpp>
#include <TovrelWebServices/Services/WebServiceEnvironment.hpp>
#include <TovrelWebServices/Transport/WebRequestable.hpp>

#include <concepts>
#include <initializer_list>
#include <type_traits>
#include <utility>

namespace tovrel {

/// The kinds of endpoint that a request can address.
struct RequestType {
    struct HTTP;
    struct API;
    struct CDN;
};

/// A query parameter in a list of them: `{"limit", "20"}` or `{"tag", {"new", "hot"}}`.
struct TOVREL_EXPORT QueryParameter {
    std::string key;
    std::vector<std::string> values;

    QueryParameter(std::string parameterKey, std::vector<std::string> parameterValues)
        : key(std::move(parameterKey)), values(std::move(parameterValues)) {}

    // A template, so that values in braces are always a list.
    template <std::convertible_to<std::string> Value>
    QueryParameter(std::string parameterKey, Value&& value) : key(std::move(parameterKey)) {
        values.emplace_back(std::forward<Value>(value));
    }
};

namespace detail {

struct AnyRequestable {};

template <class Kind>
struct RequestableOf {
    using Type = AnyRequestable;
};

template <>
struct RequestableOf<RequestType::API> {
    using Type = ApiRequestable;
};

template <>
struct RequestableOf<RequestType::CDN> {
    using Type = CdnRequestable;
};

template <>
struct RequestableOf<RequestType::HTTP> {
    using Type = HttpRequestable;
};

} // namespace detail

/// The mutable description of one call. Every setter changes the request in place and returns it, so calls chain, also
/// on a request that has just been made.
///
/// @tparam Kind `RequestType::HTTP`, `RequestType::API` or `RequestType::CDN`.
template <class Kind>
class WebRequest final : public WebRequestable, public detail::RequestableOf<Kind>::Type {
public:
    using Pointer = std::shared_ptr<WebRequest>;

    /// A request without body, query parameters or retries; its only header is "Content-Type".
    static Pointer make(URL url, HttpMethod method, const ContentType& contentType, double timeoutInterval,
                        CachePolicy cachePolicy) {
        return Pointer(new WebRequest(std::move(url), method, contentType, timeoutInterval, cachePolicy));
    }

    /// A GET of "https://", the environment's host, "/" and the percent-encoded path, as "application/json", with 60
    /// seconds of timeout and the protocol's cache policy.
    ///
    /// @param in Of which only the host counts.
    /// @param resourceUrl The path below the host, without a leading slash.
    /// @throws WebServiceError invalidUrl
    template <WebServiceEnvironment Environment>
    static Pointer buildRequest(const Environment& in, std::string_view resourceUrl) {
        return make(resourceURL(in.domain(), resourceUrl), HttpMethod::get, ContentType::applicationJson(), 60.0,
                    CachePolicy::useProtocolCachePolicy);
    }

    /// A request to the endpoint of the stage that accepts deflate and gzip.
    ///
    /// @throws WebServiceError invalidUrl
    static Pointer build(TovrelEnvironment in, std::string_view resourceUrl) requires
        std::same_as<Kind, RequestType::API> || std::same_as<Kind, RequestType::CDN> {
        using Environment =
            std::conditional_t<std::same_as<Kind, RequestType::API>, TovrelApiEnvironment, TovrelCdnEnvironment>;
        return buildRequest(Environment(in), resourceUrl)->setAcceptEncoding(AcceptEncodingType::default_());
    }

    /// A request to any host.
    ///
    /// @throws WebServiceError invalidUrl
    static Pointer build(TovrelEnvironment in, std::string domain,
                         std::string_view resourceUrl) requires std::same_as<Kind, RequestType::HTTP> {
        return buildRequest(TovrelHttpEnvironment(in, std::move(domain)), resourceUrl);
    }

    /// The custom decoding strategy, else the default of the kind: snake-case keys and dates in milliseconds for API
    /// and CDN requests. Code that takes a `WebRequestable` reads the general default instead.
    [[nodiscard]] DecodingStrategy decodingStrategy() const {
        if constexpr (std::same_as<Kind, RequestType::API> || std::same_as<Kind, RequestType::CDN>) {
            return customDecodingStrategy().value_or(DecodingStrategy::snakeCaseAndMilliseconds());
        } else {
            return WebRequestable::decodingStrategy();
        }
    }

    Pointer setMethod(HttpMethod method) {
        WebRequestable::setMethod(method);
        return self();
    }

    /// Replaces any value under exactly this name.
    Pointer setHeader(std::string key, std::string value) {
        storeHeader(std::move(key), std::move(value));
        return self();
    }

    /// Merges; the new value of a name wins.
    Pointer setHeaders(const HeaderMap& headers) {
        for (const auto& [key, value] : headers) {
            storeHeader(key, value);
        }
        return self();
    }

    /// Sets the header "Content-Type".
    Pointer setContentType(const ContentType& contentType) {
        storeContentType(contentType);
        return self();
    }

    /// Sets the header "Accept-Encoding" to the tokens, in their order; to an empty value for an empty list.
    Pointer setAcceptEncoding(const std::vector<AcceptEncodingType>& types) {
        storeAcceptEncoding(types);
        return self();
    }

    // A template, so that braces always are a list.
    template <class Type>
    requires std::same_as<Type, AcceptEncodingType> || std::same_as<Type, AcceptEncodingType::Value>
        Pointer setAcceptEncoding(Type type) {
        const AcceptEncodingType types[] = {type};
        storeAcceptEncoding(types);
        return self();
    }

    /// Sets the header "Accept-Language": the most wanted first, "*" for an empty list.
    Pointer setAcceptLanguages(const std::vector<AcceptLanguage>& languages) {
        storeAcceptLanguages(languages);
        return self();
    }

    /// Replaces the parameter's values by one; an absent value removes the parameter.
    template <std::convertible_to<std::optional<std::string>> Value>
    Pointer setQueryParameter(std::string key, Value&& value) {
        const std::optional<std::string> single(std::forward<Value>(value));
        storeQueryParameter(std::move(key), single ? std::vector<std::string>{*single} : std::vector<std::string>());
        return self();
    }

    /// Replaces the parameter's values; an empty list removes the parameter.
    Pointer setQueryParameter(std::string key, std::vector<std::string> values) {
        storeQueryParameter(std::move(key), std::move(values));
        return self();
    }

    /// Merges; the new list of a parameter replaces the old one whole, and an empty list is kept as such.
    Pointer setQueryParameters(std::initializer_list<QueryParameter> parameters) {
        for (const QueryParameter& parameter : parameters) {
            mergeQueryParameter(parameter.key, parameter.values);
        }
        return self();
    }

    template <class Map>
    requires std::same_as<Map, QueryParameters> || std::same_as<Map, HeaderMap>
        Pointer setQueryParameters(const Map& parameters) {
        for (const auto& [key, value] : parameters) {
            mergeQueryParameter(key, {value});
        }
        return self();
    }

    /// Sets the body and the header "Content-Type"; an absent body clears it.
    Pointer setBody(std::optional<Data> body, const ContentType& contentType) {
        storeBody(std::move(body), contentType);
        return self();
    }

    /// Sets the body to the text in an encoding; a text that cannot be converted makes the body absent.
    ///
    /// @param text In UTF-8.
    /// @param allowLossyConversion Whether characters that the encoding lacks may be replaced by "?".
    Pointer setBody(std::string_view text, TextEncoding encoding, bool allowLossyConversion,
                    const ContentType& contentType) {
        return setBody(encodeText(text, encoding, allowLossyConversion), contentType);
    }

    /// Sets the body to the value as JSON and "Content-Type" to "application/json"; an absent optional is `null`.
    ///
    /// @throws EncodingError, which leaves the request unchanged.
    template <Codable T>
    Pointer setBody(const T& value, const JSONEncoder& encoder) {
        return setBody(encoder.encode(value), ContentType::applicationJson());
    }

    /// In seconds.
    Pointer setTimeoutInterval(double seconds) {
        WebRequestable::setTimeoutInterval(seconds);
        return self();
    }

    Pointer setCachePolicy(CachePolicy to) {
        storeCachePolicy(to);
        return self();
    }

    Pointer setDecodingStrategy(DecodingStrategy to) {
        storeDecodingStrategy(std::move(to));
        return self();
    }

    Pointer setRetryStrategy(std::shared_ptr<RetryLogicStrategy> strategy) {
        WebRequestable::setRetryStrategy(std::move(strategy));
        return self();
    }

    /// Called once per retry, after its wait and before the request is sent again.
    Pointer setWillRetryObserver(WillRetryObserver observer) {
        WebRequestable::setWillRetryObserver(std::move(observer));
        return self();
    }

    /// Called on the main actor while the body of the response comes in; see `URLProgressObserver` for when. An empty
    /// observer stands for none.
    Pointer setProgressObserver(ProgressObserver observer) {
        storeProgressObserver(std::move(observer), std::nullopt);
        return self();
    }

    /// As above, called on that executor.
    Pointer setProgressObserver(ProgressObserver observer, Executor executor) {
        storeProgressObserver(std::move(observer), std::move(executor));
        return self();
    }

private:
    using WebRequestable::WebRequestable;

    Pointer self() { return std::static_pointer_cast<WebRequest>(shared_from_this()); }
};

} // namespace tovrel
