#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace tovrel::detail {

constexpr bool isUpper(char character) noexcept {
    return character >= 'A' && character <= 'Z';
}
constexpr bool isLower(char character) noexcept {
    return character >= 'a' && character <= 'z';
}
constexpr char toUpper(char character) noexcept {
    return isLower(character) ? static_cast<char>(character - 'a' + 'A') : character;
}
constexpr char toLower(char character) noexcept {
    return isUpper(character) ? static_cast<char>(character - 'A' + 'a') : character;
}

/// Writes the camel-case form of `key` to `out`, which has room for `key.size()` characters, and returns its length.
constexpr std::size_t convertFromSnakeCase(std::string_view key, char* out) noexcept {
    const std::size_t first = key.find_first_not_of('_');
    const std::size_t last = key.find_last_not_of('_');
    const bool oneWord =
        first == std::string_view::npos || key.substr(first, last - first).find('_') == std::string_view::npos;
    std::size_t length = 0;
    bool inFirstWord = true;
    bool startsWord = false;
    for (std::size_t index = 0; index < key.size(); ++index) {
        const char character = key[index];
        if (oneWord || index < first || index > last) {
            out[length++] = character;
        } else if (character == '_') {
            inFirstWord = false;
            startsWord = true;
        } else {
            out[length++] = startsWord && !inFirstWord ? toUpper(character) : toLower(character);
            startsWord = false;
        }
    }
    return length;
}

/// Writes the snake-case form of `key` to `out`, which has room for `2 * key.size()` characters, and returns its
/// length.
constexpr std::size_t convertToSnakeCase(std::string_view key, char* out) noexcept {
    std::size_t length = 0;
    for (std::size_t index = 0; index < key.size(); ++index) {
        const char character = key[index];
        if (isUpper(character) && index > 0 && key[index - 1] != '_') {
            const bool endsAcronym = index + 1 < key.size() && isLower(key[index + 1]);
            if (!isUpper(key[index - 1]) || endsAcronym) {
                out[length++] = '_';
            }
        }
        out[length++] = toLower(character);
    }
    return length;
}

/// A string as a template argument.
template <std::size_t N>
struct FixedString {
    char text[N] = {};

    consteval FixedString(const char (&literal)[N]) { // NOLINT: converts from a literal on purpose
        for (std::size_t index = 0; index < N; ++index) {
            text[index] = literal[index];
        }
    }

    constexpr std::string_view view() const noexcept { return {text, N - 1}; }
};

/// The spellings of one described key that the coders would otherwise make on every use.
template <FixedString Key>
class KeySpellings {
    struct Spelling {
        std::array<char, 2 * sizeof(Key.text) + 2> text{};
        std::size_t length = 0;
    };

    static constexpr std::string_view name = Key.view();

    static constexpr Spelling snake = [] {
        Spelling spelling;
        spelling.length = convertToSnakeCase(name, spelling.text.data());
        std::array<char, 2 * sizeof(Key.text) + 2> back{};
        const std::size_t length = convertFromSnakeCase({spelling.text.data(), spelling.length}, back.data());
        if (std::string_view(back.data(), length) != name) {
            spelling.length = 0;
        }
        return spelling;
    }();

    static constexpr Spelling quoted = [] {
        Spelling spelling;
        for (const char character : name) {
            if (character < ' ' || character > '~' || character == '"' || character == '\\') {
                return spelling;
            }
        }
        spelling.text[spelling.length++] = '"';
        for (const char character : name) {
            spelling.text[spelling.length++] = character;
        }
        spelling.text[spelling.length++] = '"';
        return spelling;
    }();

public:
    /// The snake-case key that converts to the described one; empty when the usual one does not.
    static constexpr std::string_view snakeCase{snake.text.data(), snake.length};
    /// The key as a JSON string; empty when it would need an escape.
    static constexpr std::string_view json{quoted.text.data(), quoted.length};
};

} // namespace tovrel::detail
