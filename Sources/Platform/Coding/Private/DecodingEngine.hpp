#pragma once

#include <Platform/Coding/Decoder.hpp>
#include <Platform/Coding/KeyStrategies.hpp>
#include <Platform/Coding/Private/NodeKind.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace tovrel::detail {

/// What went wrong, told while the calls unwind.
struct DecodingFailure {
    DecodingError::Kind kind = DecodingError::Kind::dataCorrupted;
    std::string description;
    CodingPath reversedPath;
};

/// Fills described types from the values of one document.
///
/// `Source` gives the values of a format: `Value` is a pointer-like handle, null for none, with `kind`, the getters of
/// the scalars, `count`, `forEachElement`, `forEachMember` (whose visitors return false to stop), and the coding of
/// dates and data. Internally failure is a return value, for the wrong type under a lenient field is no exception.
template <class Source>
class DecodingEngine final : public DecodingContext {
public:
    using Value = typename Source::Value;

    DecodingEngine(const Source& source, const KeyDecodingStrategy& keys) : source_(source), keys_(keys) {}

    void decode(DecodingNode node, const TypeTable& type, void* value) override {
        if (!decodeValue(Source::valueOf(node), type, value)) {
            throwFailure();
        }
    }

    bool isNull(DecodingNode node) const override { return source_.kind(Source::valueOf(node)) == NodeKind::null; }

    std::optional<DecodingNode> find(DecodingNode object, std::string_view key) const override {
        std::optional<DecodingNode> found;
        source_.forEachMember(requireObject(object), [&](std::string_view memberKey, Value member) {
            if (keys_.kind() == KeyDecodingStrategy::Kind::useDefaultKeys ? memberKey == key
                                                                          : keys_.convert(memberKey) == key) {
                found = Source::nodeOf(member);
            }
            return !found.has_value();
        });
        return found;
    }

    std::vector<std::string> keys(DecodingNode object) const override {
        std::vector<std::string> keys;
        source_.forEachMember(requireObject(object), [&](std::string_view memberKey, Value) {
            std::string key = keys_.convert(memberKey);
            if (std::find(keys.begin(), keys.end(), key) == keys.end()) {
                keys.push_back(std::move(key));
            }
            return true;
        });
        return keys;
    }

    std::vector<DecodingNode> elements(DecodingNode list) const override {
        const Value value = Source::valueOf(list);
        if (source_.kind(value) != NodeKind::list) {
            throwMismatch(value, "a list");
        }
        std::vector<DecodingNode> nodes;
        source_.forEachElement(value, [&](Value element) {
            nodes.push_back(Source::nodeOf(element));
            return true;
        });
        return nodes;
    }

    std::string keyNotFound(std::string_view key) const override {
        std::string description = "no value for the key \"" + std::string(key) + '"';
        if (keys_.kind() == KeyDecodingStrategy::Kind::convertFromSnakeCase) {
            const std::string converted = keys_.convert(key);
            if (converted != key) {
                description +=
                    "; keys are converted from snake case before they are compared, so no key can match this one: "
                    "describe it as \"" +
                    converted + '"';
            }
        }
        return description;
    }

    bool mismatch(Value value, const char* expected) {
        const NodeKind kind = source_.kind(value);
        if (kind == NodeKind::null) {
            return fail(DecodingError::Kind::valueNotFound, std::string("expected ") + expected + " but found null");
        }
        return fail(DecodingError::Kind::typeMismatch,
                    std::string("expected ") + expected + " but found " + nameOf(kind));
    }

    bool fail(DecodingError::Kind kind, std::string description) {
        failure_.kind = kind;
        failure_.description = std::move(description);
        failure_.reversedPath.clear();
        return false;
    }

    bool corrupted(std::string description) { return fail(DecodingError::Kind::dataCorrupted, std::move(description)); }

    /// Runs hand-written code on the value; errors of other families pass through.
    template <class Function>
    bool decodeByHand(Value value, Function function) {
        Decoder decoder(*this, Source::nodeOf(value));
        try {
            function(decoder);
            return true;
        } catch (const DecodingError& error) {
            fail(error.kind(), error.description());
            failure_.reversedPath.assign(error.path().rbegin(), error.path().rend());
            return false;
        }
    }

    bool decodeFloat64(Value value, double& number) {
        switch (source_.kind(value)) {
        case NodeKind::real:
            number = source_.real(value);
            return source_.isRepresentable(number) || corrupted("the number is too large");
        case NodeKind::integer:
            number = static_cast<double>(source_.integer(value));
            return true;
        case NodeKind::unsignedInteger:
            number = static_cast<double>(source_.unsignedInteger(value));
            return true;
        default:
            return mismatch(value, "a number");
        }
    }

private:
    // The slots of usual records live on the stack.
    class Slots {
    public:
        explicit Slots(std::size_t count) {
            if (count <= inPlace_.size()) {
                std::fill_n(inPlace_.begin(), count, nullptr);
                values_ = inPlace_.data();
            } else {
                onHeap_.resize(count);
                values_ = onHeap_.data();
            }
        }
        Slots(const Slots&) = delete;
        Slots& operator=(const Slots&) = delete;

        Value& operator[](std::size_t index) { return values_[index]; }

    private:
        std::array<Value, 24> inPlace_;
        std::vector<Value> onHeap_;
        Value* values_;
    };

    template <class T>
    static void store(void* target, T value) {
        std::memcpy(target, &value, sizeof(T));
    }

    [[noreturn]] void throwFailure() {
        DecodingFailure failure = std::exchange(failure_, DecodingFailure());
        CodingPath path(std::make_move_iterator(failure.reversedPath.rbegin()),
                        std::make_move_iterator(failure.reversedPath.rend()));
        throw DecodingError(failure.kind, std::move(failure.description), std::move(path));
    }

    [[noreturn]] void throwMismatch(Value value, const char* expected) const {
        const NodeKind kind = source_.kind(value);
        throw DecodingError(kind == NodeKind::null ? DecodingError::Kind::valueNotFound
                                                   : DecodingError::Kind::typeMismatch,
                            std::string("expected ") + expected + " but found " + nameOf(kind), {});
    }

    Value requireObject(DecodingNode node) const {
        const Value value = Source::valueOf(node);
        if (source_.kind(value) != NodeKind::object) {
            throwMismatch(value, "an object");
        }
        return value;
    }

    bool decodeValue(Value value, const TypeTable& type, void* target) {
        switch (type.shape) {
        case Shape::string:
            if (source_.kind(value) != NodeKind::string) {
                return mismatch(value, "a string");
            }
            static_cast<std::string*>(target)->assign(source_.string(value));
            return true;
        case Shape::boolean: {
            const NodeKind kind = source_.kind(value);
            if (kind != NodeKind::isTrue && kind != NodeKind::isFalse) {
                return mismatch(value, "a boolean");
            }
            store(target, kind == NodeKind::isTrue);
            return true;
        }
        case Shape::int8:
            return decodeInteger<std::int8_t>(value, target);
        case Shape::int16:
            return decodeInteger<std::int16_t>(value, target);
        case Shape::int32:
            return decodeInteger<std::int32_t>(value, target);
        case Shape::int64:
            return decodeInteger<std::int64_t>(value, target);
        case Shape::uint8:
            return decodeInteger<std::uint8_t>(value, target);
        case Shape::uint16:
            return decodeInteger<std::uint16_t>(value, target);
        case Shape::uint32:
            return decodeInteger<std::uint32_t>(value, target);
        case Shape::uint64:
            return decodeInteger<std::uint64_t>(value, target);
        case Shape::float32:
            return decodeFloat32(value, target);
        case Shape::float64: {
            double number = 0.0;
            if (!decodeFloat64(value, number)) {
                return false;
            }
            store(target, number);
            return true;
        }
        case Shape::data:
            return source_.decodeData(*this, value, *static_cast<Data*>(target));
        case Shape::date:
            return source_.decodeDate(*this, value, *static_cast<Date*>(target));
        case Shape::optional:
            if (source_.kind(value) == NodeKind::null) {
                type.reset(target);
                return true;
            }
            return decodeValue(value, *type.element, type.engage(target));
        case Shape::list:
            return decodeList(value, type, target);
        case Shape::map:
            return decodeMap(value, type, target);
        case Shape::record:
            return decodeRecord(value, type, target);
        case Shape::custom:
            return decodeByHand(value, [&](Decoder& decoder) { type.decode(decoder, target); });
        }
        return false;
    }

    template <class T>
    bool decodeInteger(Value value, void* target) {
        switch (source_.kind(value)) {
        case NodeKind::integer: {
            const std::int64_t number = source_.integer(value);
            if (std::in_range<T>(number)) {
                store(target, static_cast<T>(number));
                return true;
            }
            break;
        }
        case NodeKind::unsignedInteger: {
            const std::uint64_t number = source_.unsignedInteger(value);
            if (std::in_range<T>(number)) {
                store(target, static_cast<T>(number));
                return true;
            }
            break;
        }
        case NodeKind::real: {
            // The bounds are powers of two, so they are exact as doubles.
            constexpr double end = 2.0 * static_cast<double>(std::uint64_t{1} << (std::numeric_limits<T>::digits - 1));
            constexpr double begin = std::numeric_limits<T>::is_signed ? -end : 0.0;
            const double number = source_.real(value);
            if (number >= begin && number < end && number == std::trunc(number) && source_.isRepresentable(number)) {
                store(target, static_cast<T>(number));
                return true;
            }
            break;
        }
        default:
            return mismatch(value, "an integer");
        }
        return corrupted("the number does not fit the integer type");
    }

    bool decodeFloat32(Value value, void* target) {
        double number = 0.0;
        if (!decodeFloat64(value, number)) {
            return false;
        }
        if (std::isfinite(number) && std::fabs(number) > static_cast<double>((std::numeric_limits<float>::max)())) {
            return corrupted("the number does not fit the floating-point type");
        }
        store(target, static_cast<float>(number));
        return true;
    }

    bool decodeList(Value value, const TypeTable& type, void* target) {
        if (source_.kind(value) != NodeKind::list) {
            return mismatch(value, "a list");
        }
        // A hostile document may claim far more elements than it has well-formed ones, so the list grows with what is
        // decoded.
        constexpr std::size_t step = 128;
        constexpr std::size_t mostReserved = 65536;
        const TypeTable& element = *type.element;
        const std::size_t count = source_.count(value);
        type.reserve(target, (std::min)(count, mostReserved));
        std::size_t index = 0;
        std::size_t ready = 0;
        char* position = nullptr;
        const bool decoded = source_.forEachElement(value, [&](Value item) {
            if (index == ready) {
                ready = (std::min)(ready + step, (std::max)(count, index + 1));
                position = static_cast<char*>(type.resize(target, ready)) + index * element.size;
            }
            if (!decodeValue(item, element, position)) {
                return false;
            }
            position += element.size;
            ++index;
            return true;
        });
        if (!decoded) {
            failure_.reversedPath.emplace_back(index);
        }
        return decoded;
    }

    bool decodeMap(Value value, const TypeTable& type, void* target) {
        if (source_.kind(value) != NodeKind::object) {
            return mismatch(value, "an object");
        }
        type.reset(target);
        return source_.forEachMember(value, [&](std::string_view key, Value member) {
            void* slot = type.insert(target, key);
            if (slot == nullptr || decodeValue(member, *type.element, slot)) {
                return true;
            }
            failure_.reversedPath.emplace_back(std::string(key));
            return false;
        });
    }

    bool decodeRecord(Value value, const TypeTable& type, void* target) {
        if (source_.kind(value) != NodeKind::object) {
            return mismatch(value, "an object");
        }
        Slots slots(type.fieldCount);
        std::size_t next = 0;
        source_.forEachMember(value, [&](std::string_view key, Value member) {
            const std::size_t index = fieldFor(key, type, next);
            if (index < type.fieldCount) {
                next = index + 1;
                if (slots[index] == nullptr) {
                    slots[index] = member;
                }
            }
            return true;
        });
        for (std::size_t index = 0; index < type.fieldCount; ++index) {
            const FieldTable& field = type.fields[index];
            if (!decodeField(field, slots[index], field.member(target))) {
                failure_.reversedPath.emplace_back(std::string(field.key));
                return false;
            }
        }
        return true;
    }

    bool decodeField(const FieldTable& field, Value value, void* target) {
        const bool isAbsent =
            value == nullptr || (field.rule != FieldRule::strict && source_.kind(value) == NodeKind::null);
        if (!isAbsent) {
            if (decodeValue(value, *field.type, target)) {
                return true;
            }
            if (field.rule != FieldRule::lenient) {
                return false;
            }
            field.type->reset(target);
            return true;
        }
        if (field.rule == FieldRule::defaulted) {
            field.makeDefault(target);
            return true;
        }
        if (field.rule == FieldRule::lenient || field.type->shape == Shape::optional) {
            field.type->reset(target);
            return true;
        }
        return fail(DecodingError::Kind::keyNotFound, keyNotFound(field.key));
    }

    // The field that a key of the document fills, searched from the one expected next; `type.fieldCount` when there is
    // none.
    std::size_t fieldFor(std::string_view key, const TypeTable& type, std::size_t next) const {
        switch (keys_.kind()) {
        case KeyDecodingStrategy::Kind::useDefaultKeys:
            return search(key, type, next, &FieldTable::key);
        case KeyDecodingStrategy::Kind::convertFromSnakeCase: {
            const std::size_t index = search(key, type, next, &FieldTable::snakeCaseKey);
            if (index < type.fieldCount) {
                return index;
            }
            if (key.find('_') == std::string_view::npos) {
                return search(key, type, next, &FieldTable::key);
            }
            break;
        }
        case KeyDecodingStrategy::Kind::custom:
            break;
        }
        return search(keys_.convert(key), type, next, &FieldTable::key);
    }

    static std::size_t search(std::string_view key, const TypeTable& type, std::size_t next,
                              std::string_view FieldTable::*spelling) {
        for (std::size_t index = next; index < type.fieldCount; ++index) {
            if (type.fields[index].*spelling == key) {
                return index;
            }
        }
        for (std::size_t index = 0; index < next; ++index) {
            if (type.fields[index].*spelling == key) {
                return index;
            }
        }
        return type.fieldCount;
    }

    const Source& source_;
    const KeyDecodingStrategy& keys_;
    DecodingFailure failure_;
};

} // namespace tovrel::detail
