#pragma once

#include <Platform/System/Export.hpp>

#include <cstdint>

namespace tovrel {

/// Status codes from `lowerBound` up to, but not including, `upperBound`.
struct TOVREL_EXPORT StatusCodeRange {
    std::int64_t lowerBound;
    std::int64_t upperBound;

    constexpr StatusCodeRange(std::int64_t lower, std::int64_t upper) : lowerBound(lower), upperBound(upper) {}

    /// 200 to 299.
    [[nodiscard]] static constexpr StatusCodeRange success() { return StatusCodeRange(200, 300); }

    [[nodiscard]] constexpr bool contains(std::int64_t code) const { return lowerBound <= code && code < upperBound; }
};

/// What status codes mean.
class TOVREL_EXPORT WebServiceUtility {
public:
    WebServiceUtility() = delete;

    /// Accepts every code in the range.
    ///
    /// @throws WebServiceError invalidServerResponse (400), unauthorized (401), notFound (404), internalServerError
    /// (500), or unexpectedServerStatusCode for any other code.
    static void validateStatusCode(std::int64_t statusCode, StatusCodeRange acceptableCodes);
};

} // namespace tovrel
