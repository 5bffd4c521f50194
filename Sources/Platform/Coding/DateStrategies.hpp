#pragma once

#include <Platform/Coding/Date.hpp>
#include <Platform/System/Export.hpp>

#include <functional>
#include <memory>

namespace tovrel {

class Decoder;
class Encoder;

/// How JSON values map onto dates.
class TOVREL_EXPORT DateDecodingStrategy {
public:
    enum class Kind { deferredToDate, millisecondsSince1970, secondsSince1970, iso8601, custom };
    using Function = std::function<Date(Decoder& decoder)>;

    /// The same as `deferredToDate()`.
    DateDecodingStrategy() noexcept = default;
    /// The date's own form: a number of seconds since 2001-01-01T00:00:00Z.
    static DateDecodingStrategy deferredToDate() noexcept { return DateDecodingStrategy(); }
    /// A number of milliseconds since 1970-01-01T00:00:00Z.
    static DateDecodingStrategy millisecondsSince1970() noexcept {
        return DateDecodingStrategy(Kind::millisecondsSince1970);
    }
    /// A number of seconds since 1970-01-01T00:00:00Z.
    static DateDecodingStrategy secondsSince1970() noexcept { return DateDecodingStrategy(Kind::secondsSince1970); }
    /// Text of a date and time with time zone (RFC 3339 section 5.6).
    static DateDecodingStrategy iso8601() noexcept { return DateDecodingStrategy(Kind::iso8601); }
    /// Whatever `function` makes of the value. The function may be called from any thread that decodes.
    static DateDecodingStrategy custom(Function function);

    Kind kind() const noexcept { return kind_; }
    /// The function of a custom strategy, else null.
    const Function* function() const noexcept { return function_.get(); }

    /// Custom strategies are equal when one is a copy of the other.
    friend bool operator==(const DateDecodingStrategy&, const DateDecodingStrategy&) noexcept = default;

private:
    explicit DateDecodingStrategy(Kind kind) noexcept : kind_(kind) {}

    Kind kind_ = Kind::deferredToDate;
    std::shared_ptr<const Function> function_;
};

/// How dates are written as JSON values.
class TOVREL_EXPORT DateEncodingStrategy {
public:
    enum class Kind { deferredToDate, millisecondsSince1970, secondsSince1970, iso8601, custom };
    using Function = std::function<void(const Date& date, Encoder& encoder)>;

    /// The same as `deferredToDate()`.
    DateEncodingStrategy() noexcept = default;
    /// The date's own form: a number of seconds since 2001-01-01T00:00:00Z.
    static DateEncodingStrategy deferredToDate() noexcept { return DateEncodingStrategy(); }
    /// A number of milliseconds since 1970-01-01T00:00:00Z.
    static DateEncodingStrategy millisecondsSince1970() noexcept {
        return DateEncodingStrategy(Kind::millisecondsSince1970);
    }
    /// A number of seconds since 1970-01-01T00:00:00Z.
    static DateEncodingStrategy secondsSince1970() noexcept { return DateEncodingStrategy(Kind::secondsSince1970); }
    /// Text as `Date::iso8601()` makes it; a date that has none is an `EncodingError`.
    static DateEncodingStrategy iso8601() noexcept { return DateEncodingStrategy(Kind::iso8601); }
    /// Whatever `function` writes. The function may be called from any thread that encodes.
    static DateEncodingStrategy custom(Function function);

    Kind kind() const noexcept { return kind_; }
    /// The function of a custom strategy, else null.
    const Function* function() const noexcept { return function_.get(); }

    /// Custom strategies are equal when one is a copy of the other.
    friend bool operator==(const DateEncodingStrategy&, const DateEncodingStrategy&) noexcept = default;

private:
    explicit DateEncodingStrategy(Kind kind) noexcept : kind_(kind) {}

    Kind kind_ = Kind::deferredToDate;
    std::shared_ptr<const Function> function_;
};

} // namespace tovrel
