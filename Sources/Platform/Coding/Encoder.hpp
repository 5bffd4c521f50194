#pragma once

#include <Platform/Coding/Detail/TypeTables.hpp>
#include <Platform/Coding/EncodingError.hpp>
#include <Platform/System/Export.hpp>

#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>

namespace tovrel {

class Encoder;

namespace detail {

/// The value being written in one format, as the containers below see it. Failures are thrown as `EncodingError`.
class TOVREL_EXPORT EncodingContext {
public:
    virtual void encode(const TypeTable& type, const void* value) = 0;
    virtual void encodeNull() = 0;
    virtual void beginObject() = 0;
    virtual void key(std::string_view described) = 0;
    virtual void endObject() = 0;
    virtual void beginList() = 0;
    virtual void endList() = 0;

protected:
    EncodingContext() = default;
    EncodingContext(const EncodingContext&) = default;
    EncodingContext& operator=(const EncodingContext&) = default;
    ~EncodingContext() = default;
};

} // namespace detail

class KeyedEncoder;
class UnkeyedEncoder;

/// Where a hand-written coding writes its value, in whichever format is wanted. Valid only during that call.
///
/// A coding asks for one container, once, or writes a single value, once; anything else is a programming error and
/// stops the process. One that does nothing writes an empty object. Values are written at once, in the order of the
/// calls.
class TOVREL_EXPORT Encoder {
public:
    explicit Encoder(detail::EncodingContext& context) noexcept : context_(&context) {}
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;

    /// Makes the value an object.
    KeyedEncoder keyed();
    /// Makes the value a list.
    UnkeyedEncoder unkeyed();
    /// Makes the value what `value` encodes to.
    template <class T>
    void singleValue(const T& value) {
        open(Form::single);
        context_->encode(detail::TableOf<T>::value, &value);
    }
    /// Makes the value null; an `EncodingError` where the format has none.
    void null();

    /// Completes the value; called by what made this object.
    void finish();

private:
    enum class Form { none, object, list, single };

    void open(Form form);

    detail::EncodingContext* context_;
    Form form_ = Form::none;
};

/// Writes the members of an object. Each key is written once; the encoder's key strategy is applied to it.
class TOVREL_EXPORT KeyedEncoder {
public:
    explicit KeyedEncoder(detail::EncodingContext& context) noexcept : context_(&context) {}

    template <class T>
    void encode(std::string_view key, const T& value) {
        encode(key, detail::TableOf<T>::value, &value);
    }

    /// Writes nothing when the value is absent.
    template <class T>
    void encodeIfPresent(std::string_view key, const std::optional<T>& value) {
        if (value) {
            encode(key, *value);
        }
    }

    /// Writes the member that `write` encodes by hand.
    void nested(std::string_view key, const std::function<void(Encoder&)>& write);

private:
    void encode(std::string_view key, const detail::TypeTable& type, const void* value);

    detail::EncodingContext* context_;
};

/// Writes the elements of a list.
class TOVREL_EXPORT UnkeyedEncoder {
public:
    explicit UnkeyedEncoder(detail::EncodingContext& context) noexcept : context_(&context) {}

    template <class T>
    void encode(const T& value) {
        encode(detail::TableOf<T>::value, &value);
    }

    /// Writes the element that `write` encodes by hand.
    void nested(const std::function<void(Encoder&)>& write);

    /// The number of elements written.
    std::size_t count() const noexcept { return count_; }

private:
    void encode(const detail::TypeTable& type, const void* value);

    detail::EncodingContext* context_;
    std::size_t count_ = 0;
};

} // namespace tovrel
