#pragma once

#include <Platform/Coding/DateStrategies.hpp>
#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/Coding/KeyStrategies.hpp>

#include <utility>

namespace tovrel {

/// How a JSON body becomes a typed value.
struct TOVREL_EXPORT DecodingStrategy {
    KeyDecodingStrategy keyDecodingStrategy;
    DateDecodingStrategy dateDecodingStrategy;

    DecodingStrategy(KeyDecodingStrategy keys, DateDecodingStrategy dates)
        : keyDecodingStrategy(std::move(keys)), dateDecodingStrategy(std::move(dates)) {}

    /// Keys as they are, dates in their own form (seconds since 2001-01-01T00:00:00Z).
    [[nodiscard]] static DecodingStrategy default_() {
        return DecodingStrategy(KeyDecodingStrategy::useDefaultKeys(), DateDecodingStrategy::deferredToDate());
    }

    /// Keys from snake case, dates from milliseconds since 1970-01-01T00:00:00Z.
    [[nodiscard]] static DecodingStrategy snakeCaseAndMilliseconds() {
        return DecodingStrategy(KeyDecodingStrategy::convertFromSnakeCase(),
                                DateDecodingStrategy::millisecondsSince1970());
    }

    [[nodiscard]] JSONDecoder jsonDecoder() const { return JSONDecoder(keyDecodingStrategy, dateDecodingStrategy); }

    friend bool operator==(const DecodingStrategy&, const DecodingStrategy&) = default;
};

} // namespace tovrel
