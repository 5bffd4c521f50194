#pragma once

#include <Platform/System/Export.hpp>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tovrel {

/// A URL or a relative reference (RFC 3986). It keeps its text: nothing is normalised, encoded or lowered.
///
/// The accessors describe the absolute URL, that is, the text resolved against the base where there is one. The
/// `percentEncoded…` forms are the characters of the text, the others the bytes they stand for (not necessarily UTF-8).
class TOVREL_EXPORT URL {
public:
    /// Absent if the text is empty, no URI reference by the grammar of RFC 3986, or has a port above 65535.
    static std::optional<URL> parse(std::string_view text);

    /// A reference that is resolved against `base` (RFC 3986, section 5.2); a text with a scheme ignores it. Absent
    /// also if the two together form no URL.
    static std::optional<URL> parse(std::string_view text, const URL& base);

    /// The whole URL, resolved against the base.
    const std::string& absoluteString() const noexcept { return absolute_; }
    /// The text as it was given.
    const std::string& relativeString() const noexcept { return base_ ? relative_ : absolute_; }
    /// What the text is relative to.
    std::optional<URL> baseURL() const;
    /// The same URL without a base.
    URL absoluteURL() const;

    std::optional<std::string> scheme() const;
    std::optional<std::string> user() const;
    std::optional<std::string> password() const;
    /// Decoded, and without the brackets of an IPv6 address.
    std::optional<std::string> host() const;
    std::optional<std::string> percentEncodedHost() const;
    /// Absent where the URL names none, also for schemes with a default port.
    std::optional<std::uint16_t> port() const;
    std::string path() const;
    std::string percentEncodedPath() const;
    std::optional<std::string> query() const;
    std::optional<std::string> percentEncodedQuery() const;
    std::optional<std::string> fragment() const;
    std::optional<std::string> percentEncodedFragment() const;

    /// Same text and same base; "HTTPS://h" and "https://h" are different URLs.
    TOVREL_EXPORT friend bool operator==(const URL& a, const URL& b);

private:
    explicit URL(std::string absolute);

    std::string absolute_;
    std::string relative_;
    std::shared_ptr<const URL> base_;
};

} // namespace tovrel

template <>
struct std::hash<tovrel::URL> {
    std::size_t operator()(const tovrel::URL& url) const noexcept {
        return std::hash<std::string>{}(url.absoluteString());
    }
};
