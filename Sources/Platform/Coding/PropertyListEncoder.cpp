#include <Platform/Coding/Private/BinaryPropertyList.hpp>
#include <Platform/Coding/Private/EncodingEngine.hpp>
#include <Platform/Coding/PropertyListEncoder.hpp>

#include <simdjson.h>

#include <cmath>
#include <utility>
#include <vector>

namespace tovrel {

namespace detail {

namespace {

/// Builds a property list in memory from what an engine writes.
class PropertyListBuilder {
public:
    using Engine = EncodingEngine<PropertyListBuilder>;

    void null() { throw EncodingError::invalidValue("a property list has no null"); }
    void boolean(bool value) { add(PropertyListValue(value ? NodeKind::isTrue : NodeKind::isFalse)); }

    void integer(std::int64_t value) {
        PropertyListValue node(NodeKind::integer);
        node.integer = value;
        add(std::move(node));
    }

    void unsignedInteger(std::uint64_t value) {
        if (std::in_range<std::int64_t>(value)) {
            return integer(static_cast<std::int64_t>(value));
        }
        PropertyListValue node(NodeKind::unsignedInteger);
        node.unsignedInteger = value;
        add(std::move(node));
    }

    void real(double value) {
        PropertyListValue node(NodeKind::real);
        node.real = value;
        add(std::move(node));
    }

    void string(std::string_view text) {
        requireUTF8(text);
        PropertyListValue node(NodeKind::string);
        node.bytes = text;
        add(std::move(node));
    }

    void data(const Data& bytes) {
        PropertyListValue node(NodeKind::data);
        node.bytes = bytes.view();
        add(std::move(node));
    }

    void date(Engine&, const Date& date) {
        if (!std::isfinite(date.secondsSince2001())) {
            throw EncodingError::invalidValue("the date is not finite");
        }
        PropertyListValue node(NodeKind::date);
        node.real = date.secondsSince2001();
        add(std::move(node));
    }

    void beginObject() { open_.emplace_back(NodeKind::object); }
    void fieldKey(const FieldTable& field) { mapKey(field.key); }
    void describedKey(std::string_view key) { mapKey(key); }
    void mapKey(std::string_view key) {
        requireUTF8(key);
        open_.back().keys.emplace_back(key);
    }
    void endObject() { close(); }
    void beginList() { open_.emplace_back(NodeKind::list); }
    void endList() { close(); }

    const PropertyListValue& root() const { return root_; }

private:
    static void requireUTF8(std::string_view text) {
        if (!simdjson::validate_utf8(text.data(), text.size())) {
            throw EncodingError::invalidValue("the text is not UTF-8");
        }
    }

    void add(PropertyListValue node) {
        if (open_.empty()) {
            root_ = std::move(node);
        } else {
            open_.back().elements.push_back(std::move(node));
        }
    }

    void close() {
        PropertyListValue node = std::move(open_.back());
        open_.pop_back();
        add(std::move(node));
    }

    std::vector<PropertyListValue> open_;
    PropertyListValue root_;
};

} // namespace

} // namespace detail

Data PropertyListEncoder::encode(const detail::TypeTable& type, const void* value) {
    detail::PropertyListBuilder builder;
    detail::EncodingEngine<detail::PropertyListBuilder> engine(builder);
    engine.encode(type, value);
    return detail::writeBinaryPropertyList(builder.root());
}

} // namespace tovrel
