#include <Platform/Coding/Private/BinaryPropertyList.hpp>
#include <Platform/Coding/Private/DecodingEngine.hpp>
#include <Platform/Coding/Private/XMLPropertyList.hpp>
#include <Platform/Coding/PropertyListDecoder.hpp>

#include <cmath>

namespace tovrel {

namespace detail {

namespace {

constexpr std::size_t largestDocument = std::size_t{16} << 20;

/// The values of a property list.
class PropertyListSource {
public:
    using Value = const PropertyListValue*;
    using Engine = DecodingEngine<PropertyListSource>;

    static Value valueOf(DecodingNode node) { return static_cast<Value>(node.document); }
    static DecodingNode nodeOf(Value value) {
        DecodingNode node;
        node.document = value;
        return node;
    }

    NodeKind kind(Value value) const { return value->kind; }
    std::int64_t integer(Value value) const { return value->integer; }
    std::uint64_t unsignedInteger(Value value) const { return value->unsignedInteger; }
    double real(Value value) const { return value->real; }
    bool isRepresentable(double) const { return true; }
    std::string_view string(Value value) const { return value->bytes; }
    std::size_t count(Value list) const { return list->elements.size(); }

    template <class Visitor>
    bool forEachElement(Value list, Visitor visitor) const {
        for (const PropertyListValue& element : list->elements) {
            if (!visitor(&element)) {
                return false;
            }
        }
        return true;
    }

    template <class Visitor>
    bool forEachMember(Value object, Visitor visitor) const {
        for (std::size_t index = 0; index < object->keys.size(); ++index) {
            if (!visitor(std::string_view(object->keys[index]), &object->elements[index])) {
                return false;
            }
        }
        return true;
    }

    bool decodeData(Engine& engine, Value value, Data& data) const {
        if (value->kind != NodeKind::data) {
            return engine.mismatch(value, "data");
        }
        data = Data(value->bytes);
        return true;
    }

    bool decodeDate(Engine& engine, Value value, Date& date) const {
        if (value->kind != NodeKind::date) {
            return engine.mismatch(value, "a date");
        }
        if (!std::isfinite(value->real)) {
            return engine.corrupted("the date is not finite");
        }
        date = Date(value->real);
        return true;
    }
};

PropertyListValue read(const Data& propertyList) {
    if (propertyList.size() > largestDocument) {
        throw DecodingError::dataCorrupted("the property list is too large");
    }
    if (isBinaryPropertyList(propertyList.view())) {
        return readBinaryPropertyList(propertyList.view());
    }
    return readBinaryPropertyList(binaryFromXMLPropertyList(propertyList.view()).view());
}

} // namespace

} // namespace detail

void PropertyListDecoder::decode(const Data& propertyList, const detail::TypeTable& type, void* value) {
    const detail::PropertyListValue root = detail::read(propertyList);
    const detail::PropertyListSource source;
    const KeyDecodingStrategy keys;
    detail::DecodingEngine<detail::PropertyListSource> engine(source, keys);
    engine.decode(detail::PropertyListSource::nodeOf(&root), type, value);
}

} // namespace tovrel
