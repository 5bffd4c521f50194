#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/Coding/DecodingError.hpp>
#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/System/Export.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tovrel {

/// A JSON Web Token in its compact form (RFC 7519 section 3), cut into its segments. Nothing is verified: it tells what
/// a token says, not that it is true.
struct TOVREL_EXPORT JWT {
    std::vector<std::string> segments;

    explicit JWT(std::vector<std::string> tokenSegments) : segments(std::move(tokenSegments)) {}

    /// Cuts the token at every ".". Absent unless that gives two or three segments; empty ones count.
    [[nodiscard]] static std::optional<JWT> parse(std::string_view token);

    /// What the second segment says; absent when it is not the Base64 (RFC 4648 section 4, its padding may be missing)
    /// of a JSON text that decodes as a `T`. Text in the URL-safe alphabet counts as no Base64.
    template <Codable T>
    [[nodiscard]] std::optional<T> decodePayload(const JSONDecoder& decoder) const {
        const std::optional<Data> json = payload();
        if (!json) {
            return std::nullopt;
        }
        try {
            return decoder.decode<T>(*json);
        } catch (const DecodingError&) {
            return std::nullopt;
        }
    }

private:
    [[nodiscard]] std::optional<Data> payload() const;
};

} // namespace tovrel
