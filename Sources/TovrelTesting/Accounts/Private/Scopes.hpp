#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tovrel::testing {

/// The names between single spaces (RFC 6749 section 3.3); where there are two spaces in a row an empty one.
std::vector<std::string> scopesFrom(std::string_view text);

std::string textOf(const std::vector<std::string>& scopes);

bool containsScope(const std::vector<std::string>& scopes, std::string_view name);

} // namespace tovrel::testing
