#include <TovrelWebServices/Transport/AcceptLanguage.hpp>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace tovrel {

namespace {

std::optional<double> clamped(std::optional<double> weight) {
    if (!weight || std::isnan(*weight)) {
        return weight;
    }
    return std::clamp(*weight, 0.0, 1.0) + 0.0; // no negative zero
}

/// What is not a number sorts last: it has no place among the others.
double rank(const AcceptLanguage& language) {
    const double weight = language.weight.value_or(1.0);
    return std::isnan(weight) ? -1.0 : weight;
}

std::string rendered(const AcceptLanguage& language) {
    if (language.weight) {
        if (const auto weight = AcceptLanguage::numberFormatter().string(*language.weight)) {
            return language.languageCode + ";q=" + *weight;
        }
    }
    return language.languageCode;
}

} // namespace

std::optional<std::string> WeightFormatter::string(double weight) const {
    if (!std::isfinite(weight)) {
        return std::nullopt;
    }
    std::string text = fmt::format("{:.3f}", weight); // rounds the exact value, half to even
    while (text.ends_with('0') && text[text.size() - 2] != '.') {
        text.pop_back();
    }
    return text;
}

AcceptLanguage::AcceptLanguage(std::string code, std::optional<double> languageWeight)
    : languageCode(std::move(code)), weight(clamped(languageWeight)) {}

const WeightFormatter& AcceptLanguage::numberFormatter() {
    static const WeightFormatter formatter;
    return formatter;
}

std::string AcceptLanguage::headerValue(std::span<const AcceptLanguage> languages) {
    if (languages.empty()) {
        return "*";
    }
    std::vector<AcceptLanguage> sorted(languages.begin(), languages.end());
    std::stable_sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) { return rank(a) > rank(b); });
    std::string value;
    for (const AcceptLanguage& language : sorted) {
        if (&language != &sorted.front()) {
            value += ',';
        }
        value += rendered(language);
    }
    return value;
}

} // namespace tovrel
