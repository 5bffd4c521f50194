#pragma once

#include <Platform/System/Export.hpp>

#include <optional>
#include <span>
#include <string>

namespace tovrel {

/// Renders weights: at least one and at most three fraction digits, half to even, "." whatever the locale.
class TOVREL_EXPORT WeightFormatter {
public:
    /// Absent for what is no number.
    [[nodiscard]] std::optional<std::string> string(double weight) const;
};

/// A language that a response may be in, and how much it is wanted (RFC 9110, section 12.5.4).
struct TOVREL_EXPORT AcceptLanguage {
    /// The language tag as it goes into the header, for example "en-US".
    std::string languageCode;
    /// The quality value, from 0 to 1; absent for no "q" parameter.
    std::optional<double> weight;

    /// Clamps the weight into 0 to 1; one that is not a number stays as it is.
    explicit AcceptLanguage(std::string code, std::optional<double> languageWeight = std::nullopt);

    /// Made once, on first use.
    [[nodiscard]] static const WeightFormatter& numberFormatter();

    /// The "Accept-Language" value of a list: the most wanted first, equals in the caller's order, an absent weight
    /// counting as 1; "*" for an empty list.
    [[nodiscard]] static std::string headerValue(std::span<const AcceptLanguage> languages);

    friend bool operator==(const AcceptLanguage&, const AcceptLanguage&) = default;
};

} // namespace tovrel
