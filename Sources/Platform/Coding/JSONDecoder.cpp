#include <Platform/Coding/Base64.hpp>
#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/Coding/Private/DecodingEngine.hpp>
#include <Platform/Coding/Private/JSONDocument.hpp>

#include <bit>
#include <cstring>

namespace tovrel {

namespace detail {

namespace {

/// The values of a JSON document: positions on the tape.
class JSONSource {
public:
    using Value = const std::uint64_t*;
    using Engine = DecodingEngine<JSONSource>;

    JSONSource(const JSONDocument& document, const DateDecodingStrategy& dates)
        : tape_(document.tape()),
          strings_(document.strings()),
          unrepresentable_(document.unrepresentable()),
          dates_(dates) {}

    Value root() const { return tape_ + 1; }

    static Value valueOf(DecodingNode node) { return static_cast<Value>(node.document); }
    static DecodingNode nodeOf(Value value) {
        DecodingNode node;
        node.document = value;
        return node;
    }

    NodeKind kind(Value value) const { return static_cast<NodeKind>(*value >> 56); }
    std::int64_t integer(Value value) const { return static_cast<std::int64_t>(value[1]); }
    std::uint64_t unsignedInteger(Value value) const { return value[1]; }
    double real(Value value) const { return std::bit_cast<double>(value[1]); }
    bool isRepresentable(double number) const { return !unrepresentable_ || number != *unrepresentable_; }

    std::string_view string(Value value) const {
        const std::uint8_t* position = strings_ + payload(value);
        std::uint32_t length = 0;
        std::memcpy(&length, position, sizeof(length));
        return {reinterpret_cast<const char*>(position + sizeof(length)), length};
    }

    std::size_t count(Value list) const {
        constexpr std::size_t most = 0xffffff;
        const std::size_t counted = payload(list) >> 32;
        if (counted < most) {
            return counted;
        }
        std::size_t exact = 0;
        forEachElement(list, [&exact](Value) {
            ++exact;
            return true;
        });
        return exact;
    }

    template <class Visitor>
    bool forEachElement(Value list, Visitor visitor) const {
        const Value end = closing(list);
        for (Value element = list + 1; element != end; element = behind(element)) {
            if (!visitor(element)) {
                return false;
            }
        }
        return true;
    }

    template <class Visitor>
    bool forEachMember(Value object, Visitor visitor) const {
        const Value end = closing(object);
        for (Value key = object + 1; key != end;) {
            const Value member = key + 1;
            if (!visitor(string(key), member)) {
                return false;
            }
            key = behind(member);
        }
        return true;
    }

    bool decodeData(Engine& engine, Value value, Data& data) const {
        if (kind(value) != NodeKind::string) {
            return engine.mismatch(value, "a string of Base64");
        }
        std::optional<Data> decoded = base64Decoded(string(value));
        if (!decoded) {
            return engine.corrupted("the string is not Base64");
        }
        data = std::move(*decoded);
        return true;
    }

    bool decodeDate(Engine& engine, Value value, Date& date) const {
        double number = 0.0;
        switch (dates_.kind()) {
        case DateDecodingStrategy::Kind::deferredToDate:
            if (!engine.decodeFloat64(value, number)) {
                return false;
            }
            date = Date(number);
            return true;
        case DateDecodingStrategy::Kind::millisecondsSince1970:
            if (!engine.decodeFloat64(value, number)) {
                return false;
            }
            date = Date::fromMillisecondsSince1970(number);
            return true;
        case DateDecodingStrategy::Kind::secondsSince1970:
            if (!engine.decodeFloat64(value, number)) {
                return false;
            }
            date = Date::fromSecondsSince1970(number);
            return true;
        case DateDecodingStrategy::Kind::iso8601:
            return decodeTextDate(engine, value, date);
        case DateDecodingStrategy::Kind::custom:
            return engine.decodeByHand(value, [&](Decoder& decoder) { date = (*dates_.function())(decoder); });
        }
        return false;
    }

private:
    bool decodeTextDate(Engine& engine, Value value, Date& date) const {
        if (kind(value) != NodeKind::string) {
            return engine.mismatch(value, "a string of a date");
        }
        const std::optional<Date> decoded = Date::fromISO8601(string(value));
        if (!decoded) {
            return engine.corrupted("the string is no ISO 8601 date and time with time zone");
        }
        date = *decoded;
        return true;
    }

    static std::uint64_t payload(Value value) { return *value & 0x00ffffffffffffff; }

    // An opening bracket tells the index behind its closing one.
    Value behindContainer(Value value) const { return tape_ + static_cast<std::uint32_t>(*value); }
    Value closing(Value value) const { return behindContainer(value) - 1; }

    Value behind(Value value) const {
        switch (kind(value)) {
        case NodeKind::list:
        case NodeKind::object:
            return behindContainer(value);
        case NodeKind::integer:
        case NodeKind::unsignedInteger:
        case NodeKind::real:
            return value + 2;
        default:
            return value + 1;
        }
    }

    const std::uint64_t* tape_;
    const std::uint8_t* strings_;
    std::optional<double> unrepresentable_;
    const DateDecodingStrategy& dates_;
};

} // namespace

} // namespace detail

void JSONDecoder::decode(const Data& json, const detail::TypeTable& type, void* value) const {
    std::string_view text = json.view();
    if (text.starts_with("\xef\xbb\xbf")) {
        text.remove_prefix(3);
    }
    const detail::JSONDocument document(text);
    const detail::JSONSource source(document, dateDecodingStrategy);
    detail::DecodingEngine<detail::JSONSource> engine(source, keyDecodingStrategy);
    engine.decode(detail::JSONSource::nodeOf(source.root()), type, value);
}

} // namespace tovrel
