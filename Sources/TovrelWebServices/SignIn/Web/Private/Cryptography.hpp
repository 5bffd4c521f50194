#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tovrel::detail {

/// The bytes in the URL-safe alphabet without padding (RFC 4648 section 5).
std::string base64URLEncoded(std::string_view bytes);

/// The bytes that such a text stands for; absent for padding, other characters and unused bits that are not zero.
std::optional<std::string> base64URLDecoded(std::string_view text);

/// 256 bits that nobody guesses, as 43 URL-safe characters.
std::string randomText();

/// The code challenge of a code verifier, method S256 (RFC 7636 section 4.2).
std::string codeChallenge(std::string_view codeVerifier);

/// Compares in a time that does not tell where texts of one length differ.
bool areEqualSecrets(std::string_view left, std::string_view right);

} // namespace tovrel::detail
