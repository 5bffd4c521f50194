#include <Platform/Coding/DecodingError.hpp>
#include <Platform/Coding/Private/BinaryPropertyList.hpp>

#include <simdjson.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace tovrel::detail {

namespace {

// The file is a header, objects, a table of their offsets and a trailer. An object starts with a marker: its type in
// the upper half, a size in the lower one. Numbers are big-endian; lists and dictionaries hold indices into the table.
constexpr std::string_view header = "bplist00";
constexpr std::size_t trailerSize = 32;
constexpr std::size_t deepestNesting = 512;

[[noreturn]] void refuse(const char* reason) {
    throw DecodingError::dataCorrupted(std::string("the binary property list is damaged: ") + reason);
}

class Reader {
public:
    explicit Reader(std::string_view bytes) : bytes_(bytes), budget_(budgetFor(bytes.size())) {
        if (bytes.size() < header.size() + trailerSize || !isBinaryPropertyList(bytes)) {
            refuse("header or trailer are missing");
        }
        const std::size_t trailer = bytes.size() - trailerSize;
        offsetSize_ = byteAt(trailer + 6);
        referenceSize_ = byteAt(trailer + 7);
        objectCount_ = number(trailer + 8, 8);
        root_ = number(trailer + 16, 8);
        offsetTable_ = number(trailer + 24, 8);
        if (offsetSize_ == 0 || offsetSize_ > 8 || referenceSize_ == 0 || referenceSize_ > 8) {
            refuse("an index has an impossible size");
        }
        if (offsetTable_ < header.size() || offsetTable_ > trailer ||
            objectCount_ > (trailer - offsetTable_) / offsetSize_) {
            refuse("the offset table lies outside");
        }
        end_ = static_cast<std::size_t>(offsetTable_);
    }

    PropertyListValue read() { return object(root_, 0); }

private:
    std::uint8_t byteAt(std::size_t position) const { return static_cast<std::uint8_t>(bytes_[position]); }

    std::uint64_t number(std::size_t position, std::size_t size) const {
        std::uint64_t value = 0;
        for (std::size_t index = 0; index < size; ++index) {
            value = value << 8 | byteAt(position + index);
        }
        return value;
    }

    void require(std::size_t position, std::uint64_t size) const {
        if (position > end_ || size > end_ - position) {
            refuse("an object reaches outside");
        }
    }

    // Objects that are referred to more than once are copied: without a limit a small file unfolds without end.
    static std::size_t budgetFor(std::size_t size) {
        constexpr std::size_t least = std::size_t{4} << 20;
        constexpr std::size_t most = std::size_t{512} << 20;
        return (std::min)(least + 256 * size, most);
    }

    void spend(std::size_t cost) {
        if (cost > budget_) {
            refuse("it unfolds to more than its size allows");
        }
        budget_ -= cost;
    }

    PropertyListValue object(std::uint64_t index, std::size_t depth) {
        if (index >= objectCount_) {
            refuse("a reference points nowhere");
        }
        if (depth > deepestNesting) {
            refuse("it is nested too deeply");
        }
        const std::uint64_t offset = number(end_ + static_cast<std::size_t>(index) * offsetSize_, offsetSize_);
        if (offset < header.size() || offset >= end_) {
            refuse("an object lies outside");
        }
        spend(sizeof(PropertyListValue));
        auto position = static_cast<std::size_t>(offset);
        const std::uint8_t marker = byteAt(position++);
        switch (marker >> 4) {
        case 0x0:
            return simple(marker);
        case 0x1:
            return integer(position, marker & 0xf);
        case 0x2:
            return real(position, marker & 0xf);
        case 0x3:
            return date(position, marker);
        case 0x4:
            return bytes(NodeKind::data, lengthAt(position, marker));
        case 0x5:
            return asciiString(lengthAt(position, marker));
        case 0x6:
            return utf16String(lengthAt(position, marker));
        case 0xa:
            return list(lengthAt(position, marker), depth);
        case 0xd:
            return dictionary(lengthAt(position, marker), depth);
        default:
            refuse("an object has an unknown type");
        }
    }

    // The content of an object and how many bytes, characters or elements it has.
    struct Extent {
        std::size_t position = 0;
        std::uint64_t count = 0;
    };

    // A length that does not fit the marker follows it as an integer.
    Extent lengthAt(std::size_t position, std::uint8_t marker) const {
        Extent extent;
        extent.position = position;
        extent.count = marker & 0xf;
        if (extent.count != 0xf) {
            return extent;
        }
        require(position, 1);
        const std::uint8_t sizeMarker = byteAt(position);
        if (sizeMarker >> 4 != 0x1 || (sizeMarker & 0xf) > 3) {
            refuse("a length is no integer");
        }
        const std::size_t size = std::size_t{1} << (sizeMarker & 0xf);
        require(position + 1, size);
        extent.count = number(position + 1, size);
        extent.position = position + 1 + size;
        return extent;
    }

    static PropertyListValue simple(std::uint8_t marker) {
        switch (marker) {
        case 0x00:
            return PropertyListValue(NodeKind::null);
        case 0x08:
            return PropertyListValue(NodeKind::isFalse);
        case 0x09:
            return PropertyListValue(NodeKind::isTrue);
        default:
            refuse("an object has an unknown type");
        }
    }

    PropertyListValue integer(std::size_t position, unsigned sizeExponent) const {
        if (sizeExponent > 4) {
            refuse("an integer is too long");
        }
        const std::size_t size = std::size_t{1} << sizeExponent;
        require(position, size);
        // Integers of up to four bytes are unsigned, longer ones are signed.
        std::uint64_t value = 0;
        bool isUnsigned = false;
        if (size == 16) {
            const std::uint64_t upper = number(position, 8);
            value = number(position + 8, 8);
            const bool isNegative = (value >> 63) != 0;
            if (upper != 0 && !(upper == ~std::uint64_t{0} && isNegative)) {
                refuse("an integer is too large");
            }
            isUnsigned = upper == 0 && isNegative;
        } else {
            value = number(position, size);
        }
        PropertyListValue result(isUnsigned ? NodeKind::unsignedInteger : NodeKind::integer);
        result.unsignedInteger = value;
        result.integer = static_cast<std::int64_t>(value);
        return result;
    }

    PropertyListValue real(std::size_t position, unsigned sizeExponent) const {
        PropertyListValue result(NodeKind::real);
        if (sizeExponent == 2) {
            require(position, 4);
            result.real = std::bit_cast<float>(static_cast<std::uint32_t>(number(position, 4)));
        } else if (sizeExponent == 3) {
            require(position, 8);
            result.real = std::bit_cast<double>(number(position, 8));
        } else {
            refuse("a real has an impossible size");
        }
        return result;
    }

    PropertyListValue date(std::size_t position, std::uint8_t marker) const {
        if (marker != 0x33) {
            refuse("a date has an impossible size");
        }
        require(position, 8);
        PropertyListValue result(NodeKind::date);
        result.real = std::bit_cast<double>(number(position, 8));
        return result;
    }

    PropertyListValue bytes(NodeKind kind, Extent extent) {
        require(extent.position, extent.count);
        const auto count = static_cast<std::size_t>(extent.count);
        spend(count);
        PropertyListValue result(kind);
        result.bytes = bytes_.substr(extent.position, count);
        return result;
    }

    PropertyListValue asciiString(Extent extent) {
        PropertyListValue result = bytes(NodeKind::string, extent);
        if (!simdjson::validate_utf8(result.bytes)) {
            refuse("a string has characters outside its encoding");
        }
        return result;
    }

    PropertyListValue utf16String(Extent extent) {
        const std::size_t count = requireItems(extent, 2);
        spend(3 * count);
        PropertyListValue result(NodeKind::string);
        std::size_t position = extent.position;
        const std::size_t end = position + 2 * count;
        while (position < end) {
            std::uint32_t character = static_cast<std::uint32_t>(number(position, 2));
            position += 2;
            if (character >= 0xd800 && character < 0xe000) {
                const std::uint32_t low = position < end ? static_cast<std::uint32_t>(number(position, 2)) : 0;
                position += 2;
                if (character >= 0xdc00 || low < 0xdc00 || low >= 0xe000) {
                    refuse("a string has half a surrogate pair");
                }
                character = 0x10000 + ((character - 0xd800) << 10) + (low - 0xdc00);
            }
            appendUTF8(result.bytes, character);
        }
        return result;
    }

    static void appendUTF8(std::string& text, std::uint32_t character) {
        const auto put = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
        if (character < 0x80) {
            put(character);
        } else if (character < 0x800) {
            put(0xc0 | character >> 6);
            put(0x80 | (character & 0x3f));
        } else if (character < 0x10000) {
            put(0xe0 | character >> 12);
            put(0x80 | (character >> 6 & 0x3f));
            put(0x80 | (character & 0x3f));
        } else {
            put(0xf0 | character >> 18);
            put(0x80 | (character >> 12 & 0x3f));
            put(0x80 | (character >> 6 & 0x3f));
            put(0x80 | (character & 0x3f));
        }
    }

    std::uint64_t reference(std::size_t position, std::size_t index) const {
        return number(position + index * referenceSize_, referenceSize_);
    }

    std::size_t requireItems(Extent extent, std::size_t size) const {
        if (extent.count > bytes_.size()) {
            refuse("an object reaches outside");
        }
        require(extent.position, extent.count * size);
        return static_cast<std::size_t>(extent.count);
    }

    PropertyListValue list(Extent extent, std::size_t depth) {
        const std::size_t count = requireItems(extent, referenceSize_);
        PropertyListValue result(NodeKind::list);
        for (std::size_t index = 0; index < count; ++index) {
            result.elements.push_back(object(reference(extent.position, index), depth + 1));
        }
        return result;
    }

    PropertyListValue dictionary(Extent extent, std::size_t depth) {
        const std::size_t count = requireItems(extent, 2 * referenceSize_);
        PropertyListValue result(NodeKind::object);
        for (std::size_t index = 0; index < count; ++index) {
            PropertyListValue key = object(reference(extent.position, index), depth + 1);
            if (key.kind != NodeKind::string) {
                refuse("a key is no string");
            }
            result.keys.push_back(std::move(key.bytes));
            result.elements.push_back(object(reference(extent.position, count + index), depth + 1));
        }
        return result;
    }

    std::string_view bytes_;
    std::size_t budget_;
    std::size_t end_ = 0; // of the objects
    std::size_t offsetSize_ = 0;
    std::size_t referenceSize_ = 0;
    std::uint64_t objectCount_ = 0;
    std::uint64_t root_ = 0;
    std::uint64_t offsetTable_ = 0;
};

} // namespace

bool isBinaryPropertyList(std::string_view bytes) {
    return bytes.starts_with("bplist0");
}

PropertyListValue readBinaryPropertyList(std::string_view bytes) {
    return Reader(bytes).read();
}

} // namespace tovrel::detail
