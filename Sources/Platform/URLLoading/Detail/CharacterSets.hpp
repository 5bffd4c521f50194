#pragma once

#include <Platform/URLLoading/Detail/ASCII.hpp>

#include <array>
#include <string>
#include <string_view>

namespace tovrel {

/// A set of bytes, for the grammars of RFC 3986 and RFC 9110.
class CharacterSet {
public:
    constexpr explicit CharacterSet(std::string_view characters) {
        for (const char c : characters) {
            allowed_[static_cast<unsigned char>(c)] = true;
        }
    }

    constexpr CharacterSet with(std::string_view characters) const {
        CharacterSet result = *this;
        for (const char c : characters) {
            result.allowed_[static_cast<unsigned char>(c)] = true;
        }
        return result;
    }

    constexpr CharacterSet without(std::string_view characters) const {
        CharacterSet result = *this;
        for (const char c : characters) {
            result.allowed_[static_cast<unsigned char>(c)] = false;
        }
        return result;
    }

    constexpr bool contains(char c) const noexcept { return allowed_[static_cast<unsigned char>(c)]; }

    constexpr bool containsAll(std::string_view text) const noexcept {
        for (const char c : text) {
            if (!contains(c)) {
                return false;
            }
        }
        return true;
    }

private:
    std::array<bool, 256> allowed_{};
};

namespace characters {

inline constexpr CharacterSet alphanumeric{"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"};
inline constexpr CharacterSet unreserved = alphanumeric.with("-._~");
inline constexpr CharacterSet subDelims{"!$&'()*+,;="};
inline constexpr CharacterSet userInfo = unreserved.with("!$&'()*+,;=");
inline constexpr CharacterSet host = userInfo;
inline constexpr CharacterSet path = unreserved.with("!$&'()*+,;=:@/");
inline constexpr CharacterSet query = path.with("?");
/// Within the name or the value of a query item the separators are data.
inline constexpr CharacterSet queryItem = query.without("&=");
inline constexpr CharacterSet fragment = query;
/// RFC 9110, section 5.6.2.
inline constexpr CharacterSet token = alphanumeric.with("!#$%&'*+-.^_`|~");

} // namespace characters

/// Replaces every byte outside the set by %XX.
std::string percentEncoded(std::string_view text, const CharacterSet& allowed);

bool isValidUTF8(std::string_view text) noexcept;

} // namespace tovrel
