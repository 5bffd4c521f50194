#pragma once

#include <Platform/System/Export.hpp>
#include <Platform/System/RawRepresentable.hpp>

#include <array>
#include <functional>
#include <string_view>

namespace tovrel {

/// A request method; the raw value is the one on the request line (RFC 9110, section 9.1).
class TOVREL_EXPORT HttpMethod : public RawRepresentable<HttpMethod> {
public:
    enum Value { get, post, delete_, put, head };

    static constexpr std::array<std::string_view, 5> rawValues{"GET", "POST", "DELETE", "PUT", "HEAD"};

    /* implicit */ constexpr HttpMethod(Value value) : value_(value) {}

    /// For `switch`.
    [[nodiscard]] constexpr Value value() const { return value_; }

    friend constexpr bool operator==(HttpMethod a, HttpMethod b) { return a.value_ == b.value_; }

private:
    Value value_;
};

} // namespace tovrel

template <>
struct std::hash<tovrel::HttpMethod> {
    std::size_t operator()(tovrel::HttpMethod method) const noexcept { return method.value(); }
};
