#include <TovrelTesting/LocalBackEndError.hpp>
#include <TovrelTesting/Private/Base64URL.hpp>
#include <TovrelTesting/Private/OpaqueToken.hpp>

#include <openssl/rand.h>

namespace tovrel::testing {

std::string makeOpaqueToken(std::size_t byteCount) {
    std::string bytes(byteCount, '\0');
    if (RAND_bytes(reinterpret_cast<unsigned char*>(bytes.data()), static_cast<int>(bytes.size())) != 1) {
        throw LocalBackEndError::cryptography("RAND_bytes");
    }
    return base64URLEncoded(bytes);
}

} // namespace tovrel::testing
