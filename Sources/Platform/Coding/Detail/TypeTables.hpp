#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/Coding/Date.hpp>
#include <Platform/Coding/Field.hpp>

#include <concepts>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace tovrel::detail {

template <class T>
concept HandCoded = requires(Decoder& decoder, Encoder& encoder, const T& value) {
    { Coding<T>::decode(decoder) } -> std::convertible_to<T>;
    Coding<T>::encode(value, encoder);
};

template <class T>
concept DescribedRecord = std::is_class_v<T> && requires {
    T::fields();
};

template <class T>
inline constexpr bool isOptional = false;
template <class T>
inline constexpr bool isOptional<std::optional<T>> = true;

template <class T>
inline constexpr bool isList = false;
template <class T, class Allocator>
inline constexpr bool isList<std::vector<T, Allocator>> = true;

template <class T>
inline constexpr bool isMap = false;
template <class T, class Compare, class Allocator>
inline constexpr bool isMap<std::map<std::string, T, Compare, Allocator>> = true;

template <class T>
concept BuiltIn =
    std::is_arithmetic_v<T> || std::same_as<T, std::string> || std::same_as<T, Data> || std::same_as<T, Date>;

template <class T>
concept Container = isOptional<T> || isList<T> || isMap<T>;

template <class T>
constexpr Shape arithmeticShape() {
    if constexpr (std::same_as<T, bool>) {
        return Shape::boolean;
    } else if constexpr (std::is_floating_point_v<T>) {
        static_assert(sizeof(T) == 4 || sizeof(T) == 8, "long double has no coding");
        return sizeof(T) == 4 ? Shape::float32 : Shape::float64;
    } else {
        static_assert(sizeof(T) <= 8);
        constexpr bool isSigned = std::is_signed_v<T>;
        switch (sizeof(T)) {
        case 1:
            return isSigned ? Shape::int8 : Shape::uint8;
        case 2:
            return isSigned ? Shape::int16 : Shape::uint16;
        case 4:
            return isSigned ? Shape::int32 : Shape::uint32;
        default:
            return isSigned ? Shape::int64 : Shape::uint64;
        }
    }
}

template <class T>
struct TableOf {
    static const TypeTable value;
};

template <class T>
void resetValue(void* value) {
    if constexpr (isOptional<T>) {
        static_cast<T*>(value)->reset();
    } else {
        *static_cast<T*>(value) = T();
    }
}

template <class Record, class Entry>
struct FieldOf {
    using Member = std::remove_cvref_t<decltype(std::declval<Record&>().*Entry::member)>;

    static void* member(void* record) { return &(static_cast<Record*>(record)->*Entry::member); }

    static constexpr FieldTable table() {
        FieldTable field;
        field.key = Entry::key.view();
        field.snakeCaseKey = KeySpellings<Entry::key>::snakeCase;
        field.jsonKey = KeySpellings<Entry::key>::json;
        field.type = &TableOf<Member>::value;
        field.member = &FieldOf::member;
        field.rule = Entry::rule;
        if constexpr (Entry::rule == FieldRule::defaulted) {
            field.makeDefault = [](void* value) { *static_cast<Member*>(value) = Entry::makeDefault(); };
        }
        return field;
    }
};

template <class Record>
struct FieldsOf {
    using List = decltype(Record::fields());
    static constexpr std::size_t count = std::tuple_size_v<List>;

    struct Tables {
        FieldTable entries[count == 0 ? 1 : count];
    };

    static const Tables tables;

    template <std::size_t... Index>
    static constexpr Tables make(std::index_sequence<Index...>) {
        return Tables{{FieldOf<Record, std::tuple_element_t<Index, List>>::table()...}};
    }
};

template <class Record>
constinit const typename FieldsOf<Record>::Tables
    FieldsOf<Record>::tables = FieldsOf<Record>::make(std::make_index_sequence<FieldsOf<Record>::count>());

template <class T>
constexpr void describeOptional(TypeTable& table) {
    using Element = typename T::value_type;
    static_assert(!isOptional<Element>, "an optional of an optional has no coding");
    table.shape = Shape::optional;
    table.element = &TableOf<Element>::value;
    table.engage = [](void* optional) -> void* { return &static_cast<T*>(optional)->emplace(); };
    table.engaged = [](const void* optional) -> const void* {
        const T& value = *static_cast<const T*>(optional);
        return value ? &*value : nullptr;
    };
}

template <class T>
constexpr void describeList(TypeTable& table) {
    using Element = typename T::value_type;
    table.shape = Shape::list;
    table.element = &TableOf<Element>::value;
    table.reserve = [](void* list, std::size_t count) {
        static_cast<T*>(list)->clear();
        static_cast<T*>(list)->reserve(count);
    };
    table.resize = [](void* list, std::size_t count) -> void* {
        T& elements = *static_cast<T*>(list);
        elements.resize(count);
        return elements.data();
    };
    table.elements = [](const void* list, std::size_t& count) -> const void* {
        const T& elements = *static_cast<const T*>(list);
        count = elements.size();
        return elements.data();
    };
}

template <class T>
constexpr void describeMap(TypeTable& table) {
    using Element = typename T::mapped_type;
    table.shape = Shape::map;
    table.element = &TableOf<Element>::value;
    table.insert = [](void* map, std::string_view key) -> void* {
        const auto [position, inserted] = static_cast<T*>(map)->try_emplace(std::string(key));
        return inserted ? &position->second : nullptr;
    };
    table.visit = [](const void* map, void* context, MapVisitor visitor) {
        for (const auto& [key, value] : *static_cast<const T*>(map)) {
            visitor(context, key, &value);
        }
    };
}

template <class T>
constexpr TypeTable describeType() {
    static_assert(std::is_default_constructible_v<T>, "a coded type needs a default constructor");
    TypeTable table;
    table.size = sizeof(T);
    table.reset = &resetValue<T>;
    if constexpr (HandCoded<T>) {
        table.shape = Shape::custom;
        table.decode = [](Decoder& decoder, void* value) { *static_cast<T*>(value) = Coding<T>::decode(decoder); };
        table.encode = [](const void* value, Encoder& encoder) {
            Coding<T>::encode(*static_cast<const T*>(value), encoder);
        };
    } else if constexpr (std::is_arithmetic_v<T>) {
        table.shape = arithmeticShape<T>();
    } else if constexpr (std::same_as<T, std::string>) {
        table.shape = Shape::string;
    } else if constexpr (std::same_as<T, Data>) {
        table.shape = Shape::data;
    } else if constexpr (std::same_as<T, Date>) {
        table.shape = Shape::date;
    } else if constexpr (isOptional<T>) {
        describeOptional<T>(table);
    } else if constexpr (isList<T>) {
        describeList<T>(table);
    } else if constexpr (isMap<T>) {
        describeMap<T>(table);
    } else {
        static_assert(DescribedRecord<T>, "the type has neither fields() nor a Coding");
        table.shape = Shape::record;
        table.fields = FieldsOf<T>::tables.entries;
        table.fieldCount = FieldsOf<T>::count;
    }
    return table;
}

template <class T>
constinit const TypeTable TableOf<T>::value = describeType<T>();

} // namespace tovrel::detail
