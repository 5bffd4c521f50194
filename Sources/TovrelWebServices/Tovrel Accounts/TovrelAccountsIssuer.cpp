#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsIssuer.hpp>

#include <string>
#include <vector>

namespace tovrel {

namespace {

constexpr std::string_view clientKey = "client";
constexpr std::string_view appleKey = "apple";

} // namespace

TovrelAccountsIssuer Coding<TovrelAccountsIssuer>::decode(Decoder& decoder) {
    const KeyedDecoder object = decoder.keyed();
    const std::vector<std::string> keys = object.allKeys();
    if (keys.size() != 1) {
        throw DecodingError::dataCorrupted("Invalid number of keys found, expected one.");
    }
    if (keys.front() != clientKey && keys.front() != appleKey) {
        throw DecodingError::keyNotFound(std::string(clientKey), "The only key names no issuer.");
    }
    object.nested(keys.front()).keyed();
    return keys.front() == clientKey ? TovrelAccountsIssuer::client : TovrelAccountsIssuer::apple;
}

void Coding<TovrelAccountsIssuer>::encode(const TovrelAccountsIssuer& value, Encoder& encoder) {
    encoder.keyed().nested(value == TovrelAccountsIssuer::client ? clientKey : appleKey,
                           [](Encoder& nested) { nested.keyed(); });
}

} // namespace tovrel
