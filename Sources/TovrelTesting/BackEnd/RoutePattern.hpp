#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel::testing {

/// A path with `{name}` segments and perhaps a `{name...}` end, ready to be compared with request paths.
class RoutePattern {
public:
    using Parameters = std::map<std::string, std::string>;

    explicit RoutePattern(std::string_view text);

    /// The values of the named parts, percent-decoded, or nothing where the path does not fit.
    std::optional<Parameters> match(std::string_view path) const;

private:
    enum class PartKind { literal, segment, rest };

    struct Part {
        PartKind kind;
        std::string text;

        Part(PartKind kind, std::string_view text);
    };

    std::vector<Part> parts_;
};

} // namespace tovrel::testing
