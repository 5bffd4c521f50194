#pragma once

#include <Platform/Coding/CodingPath.hpp>
#include <Platform/Coding/DecodingError.hpp>
#include <Platform/Coding/Detail/TypeTables.hpp>
#include <Platform/System/Export.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel {

namespace detail {

/// A value inside the document that is being decoded.
struct DecodingNode {
    const void* document = nullptr;
    std::size_t index = 0;
};

/// A document in one format, as the containers below see it. Failures are thrown as `DecodingError` with a path that
/// starts at the node in question.
class TOVREL_EXPORT DecodingContext {
public:
    virtual void decode(DecodingNode node, const TypeTable& type, void* value) = 0;
    virtual bool isNull(DecodingNode node) const = 0;
    virtual std::optional<DecodingNode> find(DecodingNode object, std::string_view key) const = 0;
    virtual std::vector<std::string> keys(DecodingNode object) const = 0;
    virtual std::vector<DecodingNode> elements(DecodingNode list) const = 0;
    virtual std::string keyNotFound(std::string_view key) const = 0;

protected:
    DecodingContext() = default;
    DecodingContext(const DecodingContext&) = default;
    DecodingContext& operator=(const DecodingContext&) = default;
    ~DecodingContext() = default;
};

} // namespace detail

class KeyedDecoder;
class UnkeyedDecoder;
class SingleValueDecoder;

/// The value that a hand-written coding decodes, in whichever format it comes. Valid only during that call.
///
/// A coding may ignore its value: then anything decodes. All operations throw `DecodingError`.
class TOVREL_EXPORT Decoder {
public:
    Decoder(detail::DecodingContext& context, detail::DecodingNode node, CodingPath path = {})
        : context_(&context), node_(node), path_(std::move(path)) {}

    /// The value as an object; `typeMismatch` when it is none.
    KeyedDecoder keyed() const;
    /// The value as a list; `typeMismatch` when it is none.
    UnkeyedDecoder unkeyed() const;
    /// The value as it is.
    SingleValueDecoder singleValue() const;

private:
    detail::DecodingContext* context_;
    detail::DecodingNode node_;
    CodingPath path_;
};

/// The members of an object, under the keys that the decoder's key strategy makes of them. Of equal keys the first
/// counts.
class TOVREL_EXPORT KeyedDecoder {
public:
    KeyedDecoder(detail::DecodingContext& context, detail::DecodingNode node, CodingPath path);

    /// All keys in the order of the document, each once.
    std::vector<std::string> allKeys() const;
    /// Whether the key is there, be its value null.
    bool contains(std::string_view key) const;
    /// Whether the key is there and its value is null.
    bool isNull(std::string_view key) const;

    /// The value under `key`; `keyNotFound` when the key is missing.
    template <class T>
    T decode(std::string_view key) const {
        T value{};
        decode(key, detail::TableOf<T>::value, &value);
        return value;
    }

    /// The value under `key`; absent when the key is missing or its value is null.
    template <class T>
    std::optional<T> decodeIfPresent(std::string_view key) const {
        if (!contains(key) || isNull(key)) {
            return std::nullopt;
        }
        return decode<T>(key);
    }

    /// The value under `key` for decoding by hand; `keyNotFound` when the key is missing.
    Decoder nested(std::string_view key) const;

private:
    void decode(std::string_view key, const detail::TypeTable& type, void* value) const;
    detail::DecodingNode require(std::string_view key) const;

    detail::DecodingContext* context_;
    detail::DecodingNode node_;
    CodingPath path_;
};

/// The elements of a list, one after the other.
class TOVREL_EXPORT UnkeyedDecoder {
public:
    UnkeyedDecoder(detail::DecodingContext& context, detail::DecodingNode node, CodingPath path);

    /// The number of elements in all.
    std::size_t count() const noexcept { return elements_.size(); }
    /// The index of the next element.
    std::size_t currentIndex() const noexcept { return index_; }
    bool isAtEnd() const noexcept { return index_ == elements_.size(); }
    /// Whether there is a next element and it is null.
    bool isNull() const;

    /// The next element, which is then behind; `valueNotFound` at the end. A failure leaves it the next one.
    template <class T>
    T decode() {
        T value{};
        decode(detail::TableOf<T>::value, &value);
        return value;
    }

    /// The next element; absent when it is null or at the end.
    template <class T>
    std::optional<T> decodeIfPresent() {
        if (isAtEnd() || isNull()) {
            index_ += isAtEnd() ? 0 : 1;
            return std::nullopt;
        }
        return decode<T>();
    }

    /// The next element for decoding by hand, which is then behind; `valueNotFound` at the end.
    Decoder nested();

private:
    void decode(const detail::TypeTable& type, void* value);
    detail::DecodingNode require() const;

    detail::DecodingContext* context_;
    std::vector<detail::DecodingNode> elements_;
    std::size_t index_ = 0;
    CodingPath path_;
};

/// One value without regard to its form.
class TOVREL_EXPORT SingleValueDecoder {
public:
    SingleValueDecoder(detail::DecodingContext& context, detail::DecodingNode node, CodingPath path)
        : context_(&context), node_(node), path_(std::move(path)) {}

    bool isNull() const { return context_->isNull(node_); }

    /// The value as a `T`.
    template <class T>
    T decode() const {
        T value{};
        decode(detail::TableOf<T>::value, &value);
        return value;
    }

private:
    void decode(const detail::TypeTable& type, void* value) const;

    detail::DecodingContext* context_;
    detail::DecodingNode node_;
    CodingPath path_;
};

} // namespace tovrel
