#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/Coding/JSONEncoder.hpp>
#include <Platform/Coding/PropertyListDecoder.hpp>
#include <Platform/Coding/PropertyListEncoder.hpp>
#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/Tovrel Accounts/AccessTokenValidator.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsToken.hpp>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tovrel;
    TovrelAccountsToken token;
    try {
        token = JSONDecoder().decode<TovrelAccountsToken>(Data(bytes, size));
    } catch (const DecodingError&) {
        return 0;
    }
    if (JSONDecoder().decode<TovrelAccountsToken>(JSONEncoder().encode(token)) != token) {
        fatalError("a token does not come back from JSON");
    }
    try {
        if (PropertyListDecoder().decode<TovrelAccountsToken>(PropertyListEncoder().encode(token)) != token) {
            fatalError("a token does not come back from a property list");
        }
    } catch (const EncodingError&) {
        // Property lists have no text with a zero byte.
    }
    const auto status =
        AccessTokenValidator::validate(token, {"content"}, std::nullopt, "client", Date::fromSecondsSince1970(1.7e9));
    if (status.kind() == AccessTokenValidator::TokenStatus::Kind::refreshable && !token.refreshToken) {
        fatalError("a token is to be refreshed that cannot be");
    }
    static_cast<void>(token.debugDescription());
    return 0;
}
