#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/SignIn/Web/Private/Cryptography.hpp>

#include <array>
#include <sodium.h>

namespace tovrel::detail {

namespace {

constexpr int alphabet = sodium_base64_VARIANT_URLSAFE_NO_PADDING;
constexpr std::size_t secretSize = 32;

const unsigned char* octets(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

/// Before any other use of the library.
void initialize() {
    static const bool isReady = sodium_init() >= 0;
    if (!isReady) {
        fatalError("the cryptographic library cannot be used on this system");
    }
}

} // namespace

std::string base64URLEncoded(std::string_view bytes) {
    std::string text(sodium_base64_encoded_len(bytes.size(), alphabet), '\0');
    sodium_bin2base64(text.data(), text.size(), octets(bytes), bytes.size(), alphabet);
    text.pop_back(); // the terminating NUL
    return text;
}

std::optional<std::string> base64URLDecoded(std::string_view text) {
    std::string bytes(text.size() / 4 * 3 + 3, '\0');
    std::size_t size = 0;
    if (sodium_base642bin(reinterpret_cast<unsigned char*>(bytes.data()), bytes.size(), text.data(), text.size(),
                          nullptr, &size, nullptr, alphabet) != 0) {
        return std::nullopt;
    }
    bytes.resize(size);
    return bytes;
}

std::string randomText() {
    initialize();
    std::array<char, secretSize> bytes{};
    randombytes_buf(bytes.data(), bytes.size());
    return base64URLEncoded(std::string_view(bytes.data(), bytes.size()));
}

std::string codeChallenge(std::string_view codeVerifier) {
    initialize();
    std::array<char, crypto_hash_sha256_BYTES> digest{};
    crypto_hash_sha256(reinterpret_cast<unsigned char*>(digest.data()), octets(codeVerifier), codeVerifier.size());
    return base64URLEncoded(std::string_view(digest.data(), digest.size()));
}

bool areEqualSecrets(std::string_view left, std::string_view right) {
    return left.size() == right.size() && sodium_memcmp(left.data(), right.data(), left.size()) == 0;
}

} // namespace tovrel::detail
