#include <Platform/URLLoading/Detail/CharacterSets.hpp>
#include <Platform/URLLoading/Detail/URIReference.hpp>
#include <Platform/URLLoading/PercentEncoding.hpp>
#include <Platform/URLLoading/URLComponents.hpp>

#include <algorithm>
#include <utility>

namespace tovrel {

namespace {

std::optional<std::string> decoded(const std::optional<std::string>& text) {
    return text ? std::optional<std::string>(percentDecoded(*text)) : std::nullopt;
}

std::optional<std::string> encoded(std::optional<std::string_view> text, const CharacterSet& allowed) {
    return text ? std::optional<std::string>(percentEncoded(*text, allowed)) : std::nullopt;
}

std::optional<std::string> owned(std::optional<std::string_view> text) {
    return text ? std::optional<std::string>(*text) : std::nullopt;
}

} // namespace

URLQueryItem::URLQueryItem(std::string itemName, std::optional<std::string> itemValue)
    : name(std::move(itemName)), value(std::move(itemValue)) {}

URLComponents::URLComponents() = default;

URLComponents::URLComponents(const URL& url, bool resolvingAgainstBaseURL)
    : URLComponents(std::string_view(resolvingAgainstBaseURL ? url.absoluteString() : url.relativeString())) {}

URLComponents::URLComponents(std::string_view wellFormed) {
    const URIReference reference(wellFormed);
    scheme_ = owned(reference.scheme);
    if (reference.authority) {
        const URIAuthority authority(*reference.authority);
        percentEncodedUser_ = owned(authority.user);
        percentEncodedPassword_ = owned(authority.password);
        percentEncodedHost_.emplace(authority.host);
        if (authority.port && !authority.port->empty()) {
            port_ = static_cast<std::uint16_t>(std::stoul(std::string(*authority.port)));
        }
    }
    percentEncodedPath_.assign(reference.path);
    percentEncodedQuery_ = owned(reference.query);
    percentEncodedFragment_ = owned(reference.fragment);
}

std::optional<URLComponents> URLComponents::parse(std::string_view text) {
    const std::optional<URL> url = URL::parse(text);
    return url ? std::optional<URLComponents>(URLComponents(*url)) : std::nullopt;
}

void URLComponents::setScheme(std::optional<std::string> scheme) {
    scheme_ = std::move(scheme);
}

std::optional<std::string> URLComponents::user() const {
    return decoded(percentEncodedUser_);
}

void URLComponents::setUser(std::optional<std::string_view> user) {
    percentEncodedUser_ = encoded(user, characters::userInfo);
}

std::optional<std::string> URLComponents::password() const {
    return decoded(percentEncodedPassword_);
}

void URLComponents::setPassword(std::optional<std::string_view> password) {
    percentEncodedPassword_ = encoded(password, characters::userInfo);
}

std::optional<std::string> URLComponents::host() const {
    if (percentEncodedHost_ && percentEncodedHost_->starts_with('[')) {
        return percentEncodedHost_->substr(1, percentEncodedHost_->size() - 2);
    }
    return decoded(percentEncodedHost_);
}

void URLComponents::setHost(std::optional<std::string_view> host) {
    if (host && host->find(':') != std::string_view::npos) {
        percentEncodedHost_ = std::string("[").append(*host).append("]");
    } else {
        percentEncodedHost_ = encoded(host, characters::host);
    }
}

void URLComponents::setPort(std::optional<std::uint16_t> port) noexcept {
    port_ = port;
}

std::string URLComponents::path() const {
    return percentDecoded(percentEncodedPath_);
}

void URLComponents::setPath(std::string_view path) {
    percentEncodedPath_ = percentEncoded(path, characters::path);
}

void URLComponents::setPercentEncodedPath(std::string path) {
    percentEncodedPath_ = std::move(path);
}

std::optional<std::string> URLComponents::query() const {
    return decoded(percentEncodedQuery_);
}

void URLComponents::setQuery(std::optional<std::string_view> query) {
    percentEncodedQuery_ = encoded(query, characters::query);
}

void URLComponents::setPercentEncodedQuery(std::optional<std::string> query) {
    percentEncodedQuery_ = std::move(query);
}

std::optional<std::string> URLComponents::fragment() const {
    return decoded(percentEncodedFragment_);
}

void URLComponents::setFragment(std::optional<std::string_view> fragment) {
    percentEncodedFragment_ = encoded(fragment, characters::fragment);
}

void URLComponents::setPercentEncodedFragment(std::optional<std::string> fragment) {
    percentEncodedFragment_ = std::move(fragment);
}

std::optional<std::vector<URLQueryItem>> URLComponents::queryItems() const {
    if (!percentEncodedQuery_) {
        return std::nullopt;
    }
    std::vector<URLQueryItem> items;
    std::string_view rest = *percentEncodedQuery_;
    bool more = !rest.empty();
    while (more) {
        const std::size_t separator = rest.find('&');
        const std::string_view item = rest.substr(0, separator);
        const std::size_t equals = item.find('=');
        items.emplace_back(percentDecoded(item.substr(0, equals)),
                           equals == std::string_view::npos
                               ? std::optional<std::string>()
                               : std::optional<std::string>(percentDecoded(item.substr(equals + 1))));
        more = separator != std::string_view::npos;
        rest.remove_prefix(more ? separator + 1 : rest.size());
    }
    return items;
}

void URLComponents::setQueryItems(const std::optional<std::vector<URLQueryItem>>& items) {
    if (!items) {
        percentEncodedQuery_.reset();
        return;
    }
    std::string query;
    for (const URLQueryItem& item : *items) {
        if (&item != &items->front()) {
            query += '&';
        }
        query += percentEncoded(item.name, characters::queryItem);
        if (item.value) {
            query += '=';
            query += percentEncoded(*item.value, characters::queryItem);
        }
    }
    percentEncodedQuery_ = std::move(query);
}

std::optional<URL> URLComponents::url() const {
    const bool hasAuthority = percentEncodedHost_ || percentEncodedUser_ || percentEncodedPassword_ || port_;
    if (hasAuthority ? !percentEncodedPath_.empty() && !percentEncodedPath_.starts_with('/')
                     : percentEncodedPath_.starts_with("//")) {
        return std::nullopt;
    }
    std::string authority;
    if (percentEncodedUser_ || percentEncodedPassword_) {
        authority += percentEncodedUser_.value_or("");
        if (percentEncodedPassword_) {
            authority.append(1, ':').append(*percentEncodedPassword_);
        }
        authority += '@';
    }
    authority += percentEncodedHost_.value_or("");
    if (port_) {
        authority.append(1, ':').append(std::to_string(*port_));
    }
    URIReference parts("");
    parts.scheme = scheme_;
    if (hasAuthority) {
        parts.authority = authority;
    }
    parts.path = percentEncodedPath_;
    parts.query = percentEncodedQuery_;
    parts.fragment = percentEncodedFragment_;

    std::optional<URL> url = URL::parse(parts.text());
    // A part with a delimiter of another one in it parses too, but as something else.
    if (url && URLComponents(*url) != *this) {
        return std::nullopt;
    }
    return url;
}

} // namespace tovrel
