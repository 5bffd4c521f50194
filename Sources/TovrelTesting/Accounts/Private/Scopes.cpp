#include <TovrelTesting/Accounts/Private/Scopes.hpp>

#include <fmt/ranges.h>

#include <algorithm>

namespace tovrel::testing {

std::vector<std::string> scopesFrom(std::string_view text) {
    std::vector<std::string> scopes;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(' ', start), text.size());
        scopes.emplace_back(text.substr(start, end - start));
        start = end + 1;
    }
    return scopes;
}

std::string textOf(const std::vector<std::string>& scopes) {
    return fmt::format("{}", fmt::join(scopes, " "));
}

bool containsScope(const std::vector<std::string>& scopes, std::string_view name) {
    return std::ranges::find(scopes, name) != scopes.end();
}

} // namespace tovrel::testing
