#include <Platform/Coding/DecodingError.hpp>
#include <Platform/Coding/JSONDecoder.hpp>
#include <TovrelTesting/LocalBackEndError.hpp>
#include <TovrelTesting/Private/Base64URL.hpp>
#include <TovrelTesting/Private/SigningKey.hpp>

#include <openssl/ecdsa.h>
#include <openssl/evp.h>

#include <memory>
#include <tuple>
#include <utility>

namespace tovrel::testing {

namespace {

constexpr int coordinateSize = 32;

struct Header {
    std::string algorithm;

    static constexpr auto fields() { return std::tuple{Field<&Header::algorithm, "alg">{}}; }
};

using Digest = std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)>;
using Signature = std::unique_ptr<ECDSA_SIG, decltype(&ECDSA_SIG_free)>;

void check(bool succeeded, const char* operation) {
    if (!succeeded) {
        throw LocalBackEndError::cryptography(operation);
    }
}

const unsigned char* bytesOf(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

/// The two numbers of a DER signature, one behind the other.
std::string joined(const std::string& der) {
    const unsigned char* position = bytesOf(der);
    const Signature signature(d2i_ECDSA_SIG(nullptr, &position, static_cast<long>(der.size())), &ECDSA_SIG_free);
    check(signature != nullptr, "d2i_ECDSA_SIG");
    std::string numbers(2 * coordinateSize, '\0');
    auto* bytes = reinterpret_cast<unsigned char*>(numbers.data());
    check(BN_bn2binpad(ECDSA_SIG_get0_r(signature.get()), bytes, coordinateSize) == coordinateSize &&
              BN_bn2binpad(ECDSA_SIG_get0_s(signature.get()), bytes + coordinateSize, coordinateSize) == coordinateSize,
          "BN_bn2binpad");
    return numbers;
}

/// The DER form of two numbers that lie one behind the other.
std::string separated(const std::string& numbers) {
    const Signature signature(ECDSA_SIG_new(), &ECDSA_SIG_free);
    check(signature != nullptr, "ECDSA_SIG_new");
    BIGNUM* r = BN_bin2bn(bytesOf(numbers), coordinateSize, nullptr);
    BIGNUM* s = BN_bin2bn(bytesOf(numbers) + coordinateSize, coordinateSize, nullptr);
    check(r != nullptr && s != nullptr && ECDSA_SIG_set0(signature.get(), r, s) == 1, "ECDSA_SIG_set0");
    unsigned char* der = nullptr;
    const int size = i2d_ECDSA_SIG(signature.get(), &der);
    check(size > 0, "i2d_ECDSA_SIG");
    std::string result(reinterpret_cast<const char*>(der), static_cast<std::size_t>(size));
    OPENSSL_free(der);
    return result;
}

bool isES256(const std::string& header) {
    try {
        return JSONDecoder().decode<Header>(Data(header)).algorithm == "ES256";
    } catch (const DecodingError&) {
        return false;
    }
}

} // namespace

SigningKey::SigningKey() : key_(EVP_EC_gen("P-256")) {
    check(key_ != nullptr, "EVP_EC_gen");
}

std::string SigningKey::sign(std::string_view payload) const {
    const std::string input = base64URLEncoded(R"({"alg":"ES256","typ":"JWT"})") + "." + base64URLEncoded(payload);
    const Digest digest(EVP_MD_CTX_new(), &EVP_MD_CTX_free);
    check(digest && EVP_DigestSignInit(digest.get(), nullptr, EVP_sha256(), nullptr, key_.get()) == 1,
          "EVP_DigestSignInit");
    std::size_t size = 0;
    check(EVP_DigestSign(digest.get(), nullptr, &size, bytesOf(input), input.size()) == 1, "EVP_DigestSign");
    std::string der(size, '\0');
    check(EVP_DigestSign(digest.get(), reinterpret_cast<unsigned char*>(der.data()), &size, bytesOf(input),
                         input.size()) == 1,
          "EVP_DigestSign");
    der.resize(size);
    return input + "." + base64URLEncoded(joined(der));
}

std::optional<std::string> SigningKey::verifiedPayload(std::string_view token) const {
    const std::size_t first = token.find('.');
    const std::size_t last = token.rfind('.');
    if (first == last || token.find('.', first + 1) != last) {
        return std::nullopt;
    }
    const auto header = base64URLDecoded(token.substr(0, first));
    auto payload = base64URLDecoded(token.substr(first + 1, last - first - 1));
    const auto numbers = base64URLDecoded(token.substr(last + 1));
    if (!header || !isES256(*header) || !payload || !numbers || numbers->size() != 2 * coordinateSize) {
        return std::nullopt;
    }
    const std::string der = separated(*numbers);
    const std::string_view input = token.substr(0, last);
    const Digest digest(EVP_MD_CTX_new(), &EVP_MD_CTX_free);
    check(digest && EVP_DigestVerifyInit(digest.get(), nullptr, EVP_sha256(), nullptr, key_.get()) == 1,
          "EVP_DigestVerifyInit");
    const bool isGenuine = EVP_DigestVerify(digest.get(), bytesOf(der), der.size(), bytesOf(input), input.size()) == 1;
    return isGenuine ? std::move(payload) : std::nullopt;
}

} // namespace tovrel::testing
