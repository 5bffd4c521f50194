#pragma once

#include <Platform/Coding/Coding.hpp>
#include <Platform/System/Export.hpp>

namespace tovrel {

/// Who issued the subject of a token exchange.
///
/// Coded as an object whose only key is the name of the case, holding an empty object: `{"apple":{}}`.
enum class TovrelAccountsIssuer { client, apple };

/// How an issuer is coded.
template <>
struct TOVREL_EXPORT Coding<TovrelAccountsIssuer> {
    /// @throws DecodingError dataCorrupted for an object that has not exactly one key, keyNotFound for one whose key is
    /// no case, typeMismatch where an object is missing.
    static TovrelAccountsIssuer decode(Decoder& decoder);
    static void encode(const TovrelAccountsIssuer& value, Encoder& encoder);
};

} // namespace tovrel
