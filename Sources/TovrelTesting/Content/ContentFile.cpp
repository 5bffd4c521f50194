#include <TovrelTesting/Content/ContentFile.hpp>
#include <TovrelTesting/Envelope.hpp>
#include <TovrelTesting/LocalBackEndError.hpp>
#include <TovrelTesting/Private/Base64URL.hpp>

#include <fmt/format.h>
#include <openssl/evp.h>

#include <array>
#include <utility>

namespace tovrel::testing {

namespace {

std::string digestOf(const std::string& bytes) {
    std::array<char, EVP_MAX_MD_SIZE> digest{};
    unsigned size = 0;
    if (EVP_Digest(bytes.data(), bytes.size(), reinterpret_cast<unsigned char*>(digest.data()), &size, EVP_sha256(),
                   nullptr) != 1) {
        throw LocalBackEndError::cryptography("EVP_Digest");
    }
    return base64URLEncoded(std::string_view(digest.data(), size));
}

std::string tagOf(const ResponseBody& body) {
    const auto* generated = std::get_if<GeneratedBytes>(&body);
    return generated ? fmt::format("\"generated-{}\"", generated->count)
                     : fmt::format("\"{}\"", digestOf(std::get<std::string>(body)));
}

} // namespace

ContentFile::ContentFile(ResponseBody fileBody, std::string fileContentType)
    : body(std::move(fileBody)), contentType(std::move(fileContentType)), entityTag(tagOf(body)) {}

ContentFile ContentFile::enveloped(const std::string& data) {
    return ContentFile(envelope(data).body, "application/json");
}

} // namespace tovrel::testing
