#pragma once

#include <Platform/System/Export.hpp>
#include <Platform/URLLoading/URL.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel {

/// One "name=value" of a query, decoded. Without a value there is no "=".
struct TOVREL_EXPORT URLQueryItem {
    std::string name;
    std::optional<std::string> value;

    URLQueryItem(std::string itemName, std::optional<std::string> itemValue);

    friend bool operator==(const URLQueryItem&, const URLQueryItem&) = default;
};

/// The parts of a URL, to be changed and put together again.
///
/// Everything is stored percent-encoded; the plain setters encode what may not stand in their component. A
/// `percentEncoded…` part must be well-formed, otherwise `url()` is absent.
class TOVREL_EXPORT URLComponents {
public:
    /// No scheme, no host, an empty path: `url()` is absent until there is something.
    URLComponents();

    /// The parts of `url`, or, if not resolving, of its text alone.
    explicit URLComponents(const URL& url, bool resolvingAgainstBaseURL = true);

    /// Absent where `URL::parse` is.
    static std::optional<URLComponents> parse(std::string_view text);

    const std::optional<std::string>& scheme() const noexcept { return scheme_; }
    void setScheme(std::optional<std::string> scheme);

    std::optional<std::string> user() const;
    void setUser(std::optional<std::string_view> user);
    std::optional<std::string> password() const;
    void setPassword(std::optional<std::string_view> password);

    std::optional<std::string> host() const;
    /// An IPv6 address is given without brackets.
    void setHost(std::optional<std::string_view> host);

    std::optional<std::uint16_t> port() const noexcept { return port_; }
    void setPort(std::optional<std::uint16_t> port) noexcept;

    std::string path() const;
    void setPath(std::string_view path);
    const std::string& percentEncodedPath() const noexcept { return percentEncodedPath_; }
    void setPercentEncodedPath(std::string path);

    std::optional<std::string> query() const;
    void setQuery(std::optional<std::string_view> query);
    const std::optional<std::string>& percentEncodedQuery() const noexcept { return percentEncodedQuery_; }
    void setPercentEncodedQuery(std::optional<std::string> query);

    std::optional<std::string> fragment() const;
    void setFragment(std::optional<std::string_view> fragment);
    const std::optional<std::string>& percentEncodedFragment() const noexcept { return percentEncodedFragment_; }
    void setPercentEncodedFragment(std::optional<std::string> fragment);

    /// The items between the "&" of the query, in their order. Absent without a query, empty for an empty one ("?").
    /// A "+" is a plus sign, not a space.
    std::optional<std::vector<URLQueryItem>> queryItems() const;

    /// Replaces the query. Names and values keep the characters of a query (RFC 3986, section 3.4) but "&" and "=";
    /// everything else, a space or a "#" for example, is percent-encoded. A "+" stays as it is.
    void setQueryItems(const std::optional<std::vector<URLQueryItem>>& items);

    /// Absent if the parts do not form a URL: nothing at all, a host and a path that does not start with "/", a path
    /// that starts with "//" and no host, or a part that is not well-formed.
    std::optional<URL> url() const;

    friend bool operator==(const URLComponents&, const URLComponents&) = default;

private:
    explicit URLComponents(std::string_view wellFormed);

    std::optional<std::string> scheme_;
    std::optional<std::string> percentEncodedUser_;
    std::optional<std::string> percentEncodedPassword_;
    std::optional<std::string> percentEncodedHost_;
    std::optional<std::uint16_t> port_;
    std::string percentEncodedPath_;
    std::optional<std::string> percentEncodedQuery_;
    std::optional<std::string> percentEncodedFragment_;
};

} // namespace tovrel
