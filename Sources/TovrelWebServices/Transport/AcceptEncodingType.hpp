#pragma once

#include <Platform/System/Export.hpp>
#include <Platform/System/RawRepresentable.hpp>

#include <array>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel {

/// A content coding that a response may have; the raw value is its token (RFC 9110, section 8.4.1).
class TOVREL_EXPORT AcceptEncodingType : public RawRepresentable<AcceptEncodingType> {
public:
    enum Value { gzip, deflate, br, compress, identity, zstd };

    static constexpr std::array<std::string_view, 6> rawValues{"gzip", "deflate", "br", "compress", "identity", "zstd"};

    /// Deflate, then gzip. Made once and shared.
    [[nodiscard]] static const std::vector<AcceptEncodingType>& default_();

    /// The "Accept-Encoding" value of a list: its tokens in its order (RFC 9110, section 12.5.3).
    [[nodiscard]] static std::string headerValue(std::span<const AcceptEncodingType> types);

    /* implicit */ constexpr AcceptEncodingType(Value value) : value_(value) {}

    /// For `switch`.
    [[nodiscard]] constexpr Value value() const { return value_; }

    friend constexpr bool operator==(AcceptEncodingType a, AcceptEncodingType b) { return a.value_ == b.value_; }

private:
    Value value_;
};

} // namespace tovrel

template <>
struct std::hash<tovrel::AcceptEncodingType> {
    std::size_t operator()(tovrel::AcceptEncodingType type) const noexcept { return type.value(); }
};
