#include <Platform/System/FatalError.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/Sealing.hpp>

#include <algorithm>
#include <cstdint>
#include <sodium.h>

namespace tovrel::detail {

namespace {

static_assert(SealingKey::size == crypto_aead_xchacha20poly1305_ietf_KEYBYTES);

constexpr std::string_view mark = "TVSEAL1\n";
constexpr std::size_t lengthSize = 4;
constexpr std::size_t nonceSize = crypto_aead_xchacha20poly1305_ietf_NPUBBYTES;
constexpr std::size_t tagSize = crypto_aead_xchacha20poly1305_ietf_ABYTES;
constexpr std::size_t fileNameSize = 20;
constexpr std::string_view fileNameEnd = ".sealed";

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

/// Everything in front of the nonce.
std::string header(std::string_view name) {
    std::string text(mark);
    auto length = static_cast<std::uint32_t>(name.size());
    for (std::size_t index = 0; index < lengthSize; ++index) {
        text.push_back(static_cast<char>(length & 0xFFU));
        length >>= 8;
    }
    return text.append(name);
}

} // namespace

SealingKey::SealingKey() {
    initialize();
    randombytes_buf(bytes_.data(), bytes_.size());
}

SealingKey::SealingKey(std::string_view bytes) {
    std::copy_n(bytes.begin(), size, bytes_.begin());
}

SealingKey::~SealingKey() {
    sodium_memzero(bytes_.data(), bytes_.size());
}

Data seal(const SealingKey& key, std::string_view name, std::string_view bytes) {
    initialize();
    const std::string front = header(name);
    MutableData file;
    file.reserve(front.size() + nonceSize + bytes.size() + tagSize);
    file.append(front);
    unsigned char* nonce = file.extend(nonceSize);
    randombytes_buf(nonce, nonceSize);
    unsigned char* sealed = file.extend(bytes.size() + tagSize);
    crypto_aead_xchacha20poly1305_ietf_encrypt(sealed, nullptr, octets(bytes), bytes.size(), octets(front),
                                               front.size(), nullptr, nonce, key.data());
    return file.freeze();
}

std::optional<Data> unseal(const SealingKey& key, std::string_view name, std::string_view file) {
    initialize();
    const std::string front = header(name);
    if (file.size() < front.size() + nonceSize + tagSize || !file.starts_with(front)) {
        return std::nullopt;
    }
    const std::string_view nonce = file.substr(front.size(), nonceSize);
    const std::string_view sealed = file.substr(front.size() + nonceSize);
    MutableData bytes;
    unsigned char* opened = bytes.extend(sealed.size() - tagSize);
    if (crypto_aead_xchacha20poly1305_ietf_decrypt(opened, nullptr, nullptr, octets(sealed), sealed.size(),
                                                   octets(front), front.size(), octets(nonce), key.data()) != 0) {
        return std::nullopt;
    }
    return bytes.freeze();
}

std::optional<std::string> sealedName(std::string_view file) {
    if (file.size() < mark.size() + lengthSize || !file.starts_with(mark)) {
        return std::nullopt;
    }
    file.remove_prefix(mark.size());
    std::size_t length = 0;
    for (std::size_t index = lengthSize; index-- > 0;) {
        length = length << 8 | static_cast<unsigned char>(file[index]);
    }
    file.remove_prefix(lengthSize);
    if (file.size() < length) {
        return std::nullopt;
    }
    return std::string(file.substr(0, length));
}

std::string sealedFileName(std::string_view name) {
    initialize();
    std::array<unsigned char, fileNameSize> digest{};
    crypto_generichash(digest.data(), digest.size(), octets(name), name.size(), nullptr, 0);
    std::array<char, fileNameSize * 2 + 1> text{};
    sodium_bin2hex(text.data(), text.size(), digest.data(), digest.size());
    return std::string(text.data()).append(fileNameEnd);
}

bool isSealedFileName(std::string_view fileName) {
    return fileName.ends_with(fileNameEnd);
}

} // namespace tovrel::detail
