#pragma once

#include <Platform/Coding/Encoder.hpp>

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace tovrel::detail {

[[noreturn]] void rethrowBelow(CodingKey step, const EncodingError& error);

/// Writes described types to a `Sink`, which gives a format its form: `null`, the scalars, `beginList`, `endList`,
/// `beginObject`, `endObject`, and the keys of fields, of hand-written codings and of maps. Failures are
/// `EncodingError`.
template <class Sink>
class EncodingEngine final : public EncodingContext {
public:
    explicit EncodingEngine(Sink& sink) : sink_(sink) {}

    void encode(const TypeTable& type, const void* value) override {
        switch (type.shape) {
        case Shape::boolean:
            return sink_.boolean(load<bool>(value));
        case Shape::int8:
            return sink_.integer(load<std::int8_t>(value));
        case Shape::int16:
            return sink_.integer(load<std::int16_t>(value));
        case Shape::int32:
            return sink_.integer(load<std::int32_t>(value));
        case Shape::int64:
            return sink_.integer(load<std::int64_t>(value));
        case Shape::uint8:
            return sink_.integer(load<std::uint8_t>(value));
        case Shape::uint16:
            return sink_.integer(load<std::uint16_t>(value));
        case Shape::uint32:
            return sink_.integer(load<std::uint32_t>(value));
        case Shape::uint64:
            return sink_.unsignedInteger(load<std::uint64_t>(value));
        case Shape::float32:
            return sink_.real(load<float>(value));
        case Shape::float64:
            return sink_.real(load<double>(value));
        case Shape::string:
            return sink_.string(*static_cast<const std::string*>(value));
        case Shape::data:
            return sink_.data(*static_cast<const Data*>(value));
        case Shape::date:
            return sink_.date(*this, *static_cast<const Date*>(value));
        case Shape::optional:
            if (const void* present = type.engaged(value)) {
                return encode(*type.element, present);
            }
            return sink_.null();
        case Shape::list:
            return encodeList(type, value);
        case Shape::map:
            return encodeMap(type, value);
        case Shape::record:
            return encodeRecord(type, value);
        case Shape::custom:
            return encodeByHand([&](Encoder& encoder) { type.encode(value, encoder); });
        }
    }

    void encodeNull() override { sink_.null(); }
    void beginObject() override { sink_.beginObject(); }
    void key(std::string_view described) override { sink_.describedKey(described); }
    void endObject() override { sink_.endObject(); }
    void beginList() override { sink_.beginList(); }
    void endList() override { sink_.endList(); }

    template <class Function>
    void encodeByHand(Function function) {
        Encoder encoder(*this);
        function(encoder);
        encoder.finish();
    }

private:
    template <class T>
    static T load(const void* source) {
        T value;
        std::memcpy(&value, source, sizeof(T));
        return value;
    }

    void encodeList(const TypeTable& type, const void* value) {
        std::size_t count = 0;
        const char* position = static_cast<const char*>(type.elements(value, count));
        std::size_t index = 0;
        sink_.beginList();
        try {
            for (; index < count; ++index, position += type.element->size) {
                encode(*type.element, position);
            }
        } catch (const EncodingError& error) {
            rethrowBelow(CodingKey(index), error);
        }
        sink_.endList();
    }

    void encodeMap(const TypeTable& type, const void* value) {
        struct Visit {
            EncodingEngine* engine;
            const TypeTable* element;
        };
        Visit visit{this, type.element};
        sink_.beginObject();
        type.visit(value, &visit, [](void* context, std::string_view key, const void* element) {
            const Visit& current = *static_cast<const Visit*>(context);
            try {
                current.engine->sink_.mapKey(key);
                current.engine->encode(*current.element, element);
            } catch (const EncodingError& error) {
                rethrowBelow(CodingKey(std::string(key)), error);
            }
        });
        sink_.endObject();
    }

    void encodeRecord(const TypeTable& type, const void* value) {
        std::size_t index = 0;
        sink_.beginObject();
        try {
            for (; index < type.fieldCount; ++index) {
                const FieldTable& field = type.fields[index];
                const TypeTable* fieldType = field.type;
                // The members of a constant record are only read.
                const void* member = field.member(const_cast<void*>(value));
                if (fieldType->shape == Shape::optional) {
                    member = fieldType->engaged(member);
                    if (member == nullptr) {
                        continue;
                    }
                    fieldType = fieldType->element;
                }
                sink_.fieldKey(field);
                encode(*fieldType, member);
            }
        } catch (const EncodingError& error) {
            rethrowBelow(CodingKey(std::string(type.fields[index].key)), error);
        }
        sink_.endObject();
    }

    Sink& sink_;
};

} // namespace tovrel::detail
