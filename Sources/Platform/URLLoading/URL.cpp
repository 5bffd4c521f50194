#include <Platform/URLLoading/Detail/URIReference.hpp>
#include <Platform/URLLoading/PercentEncoding.hpp>
#include <Platform/URLLoading/URL.hpp>

#include <boost/url/parse.hpp>

#include <charconv>
#include <utility>

namespace tovrel {

namespace {

/// An empty port ("h:") is no port; nothing above 65535 is one.
std::optional<std::uint16_t> portNumber(std::string_view digits) noexcept {
    std::uint16_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc{} || end != digits.data() + digits.size()) {
        return std::nullopt;
    }
    return number;
}

bool isWellFormed(std::string_view text) {
    if (text.empty() || boost::urls::parse_uri_reference({text.data(), text.size()}).has_error()) {
        return false;
    }
    const URIReference reference(text);
    const std::string_view port =
        reference.authority ? URIAuthority(*reference.authority).port.value_or("") : std::string_view{};
    return port.empty() || portNumber(port);
}

std::optional<std::string> owned(std::optional<std::string_view> view) {
    return view ? std::optional<std::string>(*view) : std::nullopt;
}

std::optional<std::string> decoded(std::optional<std::string_view> view) {
    return view ? std::optional<std::string>(percentDecoded(*view)) : std::nullopt;
}

} // namespace

URL::URL(std::string absolute) : absolute_(std::move(absolute)) {}

std::optional<URL> URL::parse(std::string_view text) {
    if (!isWellFormed(text)) {
        return std::nullopt;
    }
    return URL(std::string(text));
}

std::optional<URL> URL::parse(std::string_view text, const URL& base) {
    if (!isWellFormed(text)) {
        return std::nullopt;
    }
    const URIReference reference(text);
    if (reference.scheme) {
        return URL(std::string(text));
    }
    std::optional<std::string> absolute = resolved(URIReference(base.absolute_), reference);
    if (!absolute || !isWellFormed(*absolute)) {
        return std::nullopt;
    }
    URL url(std::move(*absolute));
    url.relative_.assign(text);
    url.base_ = std::make_shared<const URL>(base);
    return url;
}

std::optional<URL> URL::baseURL() const {
    return base_ ? std::optional<URL>(*base_) : std::nullopt;
}

URL URL::absoluteURL() const {
    return URL(absolute_);
}

std::optional<std::string> URL::scheme() const {
    return owned(URIReference(absolute_).scheme);
}

std::optional<std::string> URL::user() const {
    const URIReference reference(absolute_);
    return reference.authority ? decoded(URIAuthority(*reference.authority).user) : std::nullopt;
}

std::optional<std::string> URL::password() const {
    const URIReference reference(absolute_);
    return reference.authority ? decoded(URIAuthority(*reference.authority).password) : std::nullopt;
}

std::optional<std::string> URL::host() const {
    std::optional<std::string> encoded = percentEncodedHost();
    if (!encoded) {
        return std::nullopt;
    }
    if (encoded->starts_with('[')) {
        return encoded->substr(1, encoded->size() - 2);
    }
    return percentDecoded(*encoded);
}

std::optional<std::string> URL::percentEncodedHost() const {
    const URIReference reference(absolute_);
    if (!reference.authority) {
        return std::nullopt;
    }
    return std::string(URIAuthority(*reference.authority).host);
}

std::optional<std::uint16_t> URL::port() const {
    const URIReference reference(absolute_);
    if (!reference.authority) {
        return std::nullopt;
    }
    return portNumber(URIAuthority(*reference.authority).port.value_or(""));
}

std::string URL::path() const {
    return percentDecoded(URIReference(absolute_).path);
}

std::string URL::percentEncodedPath() const {
    return std::string(URIReference(absolute_).path);
}

std::optional<std::string> URL::query() const {
    return decoded(URIReference(absolute_).query);
}

std::optional<std::string> URL::percentEncodedQuery() const {
    return owned(URIReference(absolute_).query);
}

std::optional<std::string> URL::fragment() const {
    return decoded(URIReference(absolute_).fragment);
}

std::optional<std::string> URL::percentEncodedFragment() const {
    return owned(URIReference(absolute_).fragment);
}

bool operator==(const URL& a, const URL& b) {
    if (a.absolute_ != b.absolute_ || a.relative_ != b.relative_ || !a.base_ != !b.base_) {
        return false;
    }
    return !a.base_ || *a.base_ == *b.base_;
}

} // namespace tovrel
