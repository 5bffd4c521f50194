#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tovrel {

/// The components of a URI reference as views into its text (RFC 3986, appendix B).
struct URIReference {
    std::optional<std::string_view> scheme;
    std::optional<std::string_view> authority;
    std::string_view path;
    std::optional<std::string_view> query;
    std::optional<std::string_view> fragment;

    /// Splits without judging: the text must be known to be well-formed where that matters.
    explicit URIReference(std::string_view text) noexcept;

    std::string text() const;
};

/// The components of an authority (RFC 3986, section 3.2).
struct URIAuthority {
    std::optional<std::string_view> user;
    std::optional<std::string_view> password;
    /// With the brackets of an IP literal.
    std::string_view host;
    std::optional<std::string_view> port;

    explicit URIAuthority(std::string_view text) noexcept;
};

/// RFC 3986, section 5.2.2. Absent where the result would read as something else, as happens without an authority: a
/// path that starts with "//", or a first segment with a colon.
std::optional<std::string> resolved(const URIReference& base, const URIReference& reference);

/// RFC 3986, section 5.2.4.
std::string removingDotSegments(std::string_view path);

} // namespace tovrel
