#include <Platform/Coding/TextEncoding.hpp>

#include <array>
#include <bit>
#include <cerrno>
#include <iconv.h>
#include <string>

namespace tovrel {

namespace {

const char* iconvName(TextEncoding encoding) {
    switch (encoding) {
    case TextEncoding::utf8:
        return "UTF-8";
    case TextEncoding::ascii:
        return "ASCII";
    case TextEncoding::isoLatin1:
        return "ISO-8859-1";
    case TextEncoding::windowsCP1252:
        return "CP1252";
    case TextEncoding::utf16:
        return "UTF-16";
    case TextEncoding::utf16BigEndian:
        return "UTF-16BE";
    case TextEncoding::utf16LittleEndian:
        return "UTF-16LE";
    case TextEncoding::utf32:
        return "UTF-32";
    case TextEncoding::utf32BigEndian:
        return "UTF-32BE";
    case TextEncoding::utf32LittleEndian:
        return "UTF-32LE";
    }
    return "UTF-8";
}

/// One conversion between two encodings.
class Converter {
public:
    explicit Converter(TextEncoding to) : descriptor_(iconv_open(iconvName(to), "UTF-8")) {}
    ~Converter() { iconv_close(descriptor_); }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    /// Converts as much of the text as it can and moves it past that; false before a character that cannot be
    /// converted.
    bool convert(std::string_view& text, std::string& output) {
        char* input = const_cast<char*>(text.data());
        std::size_t inputLeft = text.size();
        bool isConverted = true;
        while (inputLeft > 0 && isConverted) {
            std::array<char, 4096> buffer;
            char* next = buffer.data();
            std::size_t room = buffer.size();
            const bool isDone = iconv(descriptor_, &input, &inputLeft, &next, &room) != static_cast<std::size_t>(-1);
            isConverted = isDone || errno == E2BIG;
            output.append(buffer.data(), buffer.size() - room);
        }
        text.remove_prefix(text.size() - inputLeft);
        return isConverted;
    }

private:
    iconv_t descriptor_;
};

bool isUTF8(std::string_view text) {
    std::string ignored;
    return Converter(TextEncoding::utf32).convert(text, ignored);
}

/// The length of the character that starts a valid UTF-8 text.
std::size_t characterLength(std::string_view text) {
    const auto leadingOnes = std::countl_one(static_cast<unsigned char>(text.front()));
    return leadingOnes == 0 ? 1 : static_cast<std::size_t>(leadingOnes);
}

} // namespace

std::optional<Data> encodeText(std::string_view text, TextEncoding encoding, bool allowLossyConversion) {
    if (!isUTF8(text)) {
        return std::nullopt;
    }
    Converter converter(encoding);
    std::string bytes;
    while (!converter.convert(text, bytes)) {
        if (!allowLossyConversion) {
            return std::nullopt;
        }
        text.remove_prefix(characterLength(text));
        std::string_view replacement = "?";
        converter.convert(replacement, bytes);
    }
    return Data(bytes);
}

} // namespace tovrel
