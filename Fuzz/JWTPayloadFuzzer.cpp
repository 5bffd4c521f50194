#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/Tovrel Accounts/JWT.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsToken.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tovrel;
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    const auto jwt = JWT::parse(text);
    const auto dots = std::count(text.begin(), text.end(), '.');
    if (jwt.has_value() != (dots == 1 || dots == 2)) {
        fatalError("the segments are miscounted");
    }
    if (jwt) {
        static_cast<void>(jwt->decodePayload<TovrelAccountsToken::IDToken>(JSONDecoder()));
    }
    return 0;
}
