#include <Platform/Coding/Private/BinaryPropertyList.hpp>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tovrel::detail {

namespace {

std::size_t bytesFor(std::uint64_t value) {
    for (std::size_t size = 1; size < 8; size *= 2) {
        if (value >> (8 * size) == 0) {
            return size;
        }
    }
    return 8;
}

class Writer {
public:
    explicit Writer(const PropertyListValue& root) {
        addValue(root);
        referenceSize_ = bytesFor(objects_.size() - 1);
    }

    Data write() {
        out_.append("bplist00");
        std::vector<std::size_t> offsets;
        offsets.reserve(objects_.size());
        for (const Object& object : objects_) {
            offsets.push_back(out_.size());
            writeObject(object);
        }
        const std::size_t offsetTable = out_.size();
        const std::size_t offsetSize = bytesFor(offsetTable);
        for (const std::size_t offset : offsets) {
            putNumber(offset, offsetSize);
        }
        putNumber(0, 6);
        putNumber(offsetSize, 1);
        putNumber(referenceSize_, 1);
        putNumber(objects_.size(), 8);
        putNumber(0, 8); // the root is the first object
        putNumber(offsetTable, 8);
        return out_.freeze();
    }

private:
    struct Object {
        const PropertyListValue* value = nullptr;
        const std::string* key = nullptr; // of a string that is a key
        std::vector<std::size_t> references;
    };

    std::size_t addValue(const PropertyListValue& value) {
        if (value.kind == NodeKind::string) {
            return addString(value.bytes);
        }
        const std::size_t index = objects_.size();
        objects_.emplace_back();
        objects_.back().value = &value;
        std::vector<std::size_t> references;
        references.reserve(value.keys.size() + value.elements.size());
        for (const std::string& key : value.keys) {
            references.push_back(addString(key));
        }
        for (const PropertyListValue& element : value.elements) {
            references.push_back(addValue(element));
        }
        objects_[index].references = std::move(references);
        return index;
    }

    std::size_t addString(const std::string& text) {
        const auto [position, isNew] = strings_.try_emplace(text, objects_.size());
        if (isNew) {
            objects_.emplace_back();
            objects_.back().key = &text;
        }
        return position->second;
    }

    void putNumber(std::uint64_t value, std::size_t size) {
        std::uint8_t* bytes = out_.extend(size);
        for (std::size_t index = 0; index < size; ++index) {
            bytes[size - 1 - index] = static_cast<std::uint8_t>(index < 8 ? value >> (8 * index) : 0);
        }
    }

    void putMarker(unsigned type, unsigned low) { putNumber(type << 4 | low, 1); }

    void putMarkerWithLength(unsigned type, std::size_t length) {
        if (length < 15) {
            return putMarker(type, static_cast<unsigned>(length));
        }
        putMarker(type, 15);
        putInteger(static_cast<std::int64_t>(length));
    }

    void putInteger(std::int64_t value) {
        const std::size_t size = value < 0 ? 8 : bytesFor(static_cast<std::uint64_t>(value));
        putMarker(0x1, static_cast<unsigned>(std::countr_zero(size)));
        putNumber(static_cast<std::uint64_t>(value), size);
    }

    void writeObject(const Object& object) {
        if (object.key != nullptr) {
            return writeString(*object.key);
        }
        const PropertyListValue& value = *object.value;
        switch (value.kind) {
        case NodeKind::isTrue:
            return putMarker(0x0, 9);
        case NodeKind::isFalse:
            return putMarker(0x0, 8);
        case NodeKind::integer:
            return putInteger(value.integer);
        case NodeKind::unsignedInteger:
            putMarker(0x1, 4);
            putNumber(value.unsignedInteger, 16);
            return;
        case NodeKind::real:
            putMarker(0x2, 3);
            putNumber(std::bit_cast<std::uint64_t>(value.real), 8);
            return;
        case NodeKind::date:
            putMarker(0x3, 3);
            putNumber(std::bit_cast<std::uint64_t>(value.real), 8);
            return;
        case NodeKind::data:
            putMarkerWithLength(0x4, value.bytes.size());
            out_.append(value.bytes);
            return;
        case NodeKind::list:
            putMarkerWithLength(0xa, value.elements.size());
            return putReferences(object);
        case NodeKind::object:
            putMarkerWithLength(0xd, value.elements.size());
            return putReferences(object);
        case NodeKind::null:
        case NodeKind::string:
            return putMarker(0x0, 0);
        }
    }

    void putReferences(const Object& object) {
        for (const std::size_t reference : object.references) {
            putNumber(reference, referenceSize_);
        }
    }

    void writeString(std::string_view text) {
        const bool isASCII =
            std::all_of(text.begin(), text.end(), [](char byte) { return static_cast<std::uint8_t>(byte) < 0x80; });
        if (isASCII) {
            putMarkerWithLength(0x5, text.size());
            out_.append(text);
            return;
        }
        const std::u16string units = toUTF16(text);
        putMarkerWithLength(0x6, units.size());
        for (const char16_t unit : units) {
            putNumber(unit, 2);
        }
    }

    static std::u16string toUTF16(std::string_view text) {
        std::u16string units;
        for (std::size_t index = 0; index < text.size();) {
            const auto lead = static_cast<std::uint8_t>(text[index]);
            const std::size_t size = lead < 0x80 ? 1 : lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
            std::uint32_t character = size == 1 ? lead : lead & (0x7fu >> size);
            for (std::size_t next = 1; next < size; ++next) {
                character = character << 6 | (static_cast<std::uint8_t>(text[index + next]) & 0x3fu);
            }
            index += size;
            if (character < 0x10000) {
                units += static_cast<char16_t>(character);
            } else {
                units += static_cast<char16_t>(0xd800 + ((character - 0x10000) >> 10));
                units += static_cast<char16_t>(0xdc00 + ((character - 0x10000) & 0x3ff));
            }
        }
        return units;
    }

    std::vector<Object> objects_;
    std::map<std::string_view, std::size_t> strings_;
    std::size_t referenceSize_ = 1;
    MutableData out_;
};

} // namespace

Data writeBinaryPropertyList(const PropertyListValue& root) {
    return Writer(root).write();
}

} // namespace tovrel::detail
