#include <Platform/URLLoading/Detail/ASCII.hpp>
#include <Platform/URLLoading/Detail/CharacterSets.hpp>
#include <Platform/URLLoading/Detail/Redirect.hpp>
#include <Platform/URLLoading/Detail/URIReference.hpp>

#include <algorithm>
#include <string>
#include <utility>

namespace tovrel {

namespace {

int effectivePort(const URL& url) {
    constexpr int httpsPort = 443;
    constexpr int httpPort = 80;
    return url.port().value_or(ascii::lowered(url.scheme().value_or("")) == "https" ? httpsPort : httpPort);
}

/// Every character that no URI may hold becomes %XX, and so does a "%" that encodes nothing.
std::string repaired(std::string_view location) {
    static constexpr CharacterSet uri = characters::query.with("[]#");
    std::string result;
    for (std::size_t i = 0; i < location.size(); ++i) {
        const bool encodes = location[i] == '%' && i + 2 < location.size() && ascii::hexValue(location[i + 1]) >= 0 &&
                             ascii::hexValue(location[i + 2]) >= 0;
        result += encodes ? std::string(1, '%') : percentEncoded(location.substr(i, 1), uri);
    }
    return result;
}

std::optional<URL> target(const URL& from, std::string_view location) {
    const std::optional<URL> relative = URL::parse(repaired(ascii::trimmed(location)), from);
    if (!relative) {
        return std::nullopt;
    }
    if (relative->percentEncodedFragment() || !from.percentEncodedFragment()) {
        return relative->absoluteURL();
    }
    return URL::parse(relative->absoluteString() + "#" + *from.percentEncodedFragment());
}

bool becomesGet(const std::string& method, int statusCode) {
    return statusCode == 303 ? method != "GET" && method != "HEAD"
                             : (statusCode == 301 || statusCode == 302) && method == "POST";
}

} // namespace

bool sameOrigin(const URL& a, const URL& b) {
    return ascii::lowered(a.scheme().value_or("")) == ascii::lowered(b.scheme().value_or("")) &&
           ascii::lowered(a.host().value_or("")) == ascii::lowered(b.host().value_or("")) &&
           effectivePort(a) == effectivePort(b);
}

bool isRedirect(int statusCode) noexcept {
    return statusCode == 301 || statusCode == 302 || statusCode == 303 || statusCode == 307 || statusCode == 308;
}

std::optional<URLError::Kind> refusal(const URL& url, bool allowsPlainHTTP) {
    const URIReference reference(url.absoluteString());
    if (!reference.scheme) {
        return URLError::Kind::badURL;
    }
    const bool isPlain = ascii::equalIgnoringCase(*reference.scheme, "http");
    if (!isPlain && !ascii::equalIgnoringCase(*reference.scheme, "https")) {
        return URLError::Kind::unsupportedURL;
    }
    const URIAuthority authority(reference.authority.value_or(""));
    if (authority.host.empty() || authority.user) {
        return URLError::Kind::badURL;
    }
    if (isPlain && !allowsPlainHTTP) {
        return URLError::Kind::insecureURL;
    }
    return std::nullopt;
}

std::variant<URLRequest, URLError::Kind> redirected(URLRequest request, int statusCode, std::string_view location,
                                                    bool allowsPlainHTTP) {
    std::optional<URL> url = target(request.url, location);
    if (!url) {
        return URLError::Kind::badServerResponse;
    }
    if (const auto kind = refusal(*url, allowsPlainHTTP)) {
        return *kind;
    }
    if (!sameOrigin(request.url, *url)) {
        for (const std::string_view name : {"Authorization", "Proxy-Authorization", "Cookie", "Host"}) {
            request.headers.remove(name);
        }
    }
    if (becomesGet(request.httpMethod, statusCode)) {
        request.httpMethod = "GET";
        request.body.reset();
        for (const std::string_view name : {"Content-Type", "Content-Length", "Content-Encoding", "Content-Language",
                                            "Content-Location", "Content-MD5", "Digest", "Transfer-Encoding"}) {
            request.headers.remove(name);
        }
    }
    request.url = std::move(*url);
    return request;
}

} // namespace tovrel
