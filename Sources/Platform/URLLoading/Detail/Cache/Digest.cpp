#include <Platform/URLLoading/Detail/Cache/Digest.hpp>

#include <openssl/sha.h>

#include <array>

namespace tovrel {

std::string digest(std::string_view bytes) {
    std::array<unsigned char, SHA256_DIGEST_LENGTH> sum{};
    SHA256(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), sum.data());
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result;
    result.reserve(2 * sum.size());
    for (const unsigned char byte : sum) {
        result += digits[byte >> 4U];
        result += digits[byte & 0xfU];
    }
    return result;
}

} // namespace tovrel
