#include <TovrelTesting/Private/Base64URL.hpp>
#include <TovrelTesting/SignIn/Private/ReturnAddress.hpp>

#include <openssl/sha.h>

#include <array>
#include <charconv>
#include <utility>

namespace tovrel::testing {

namespace {

constexpr std::size_t leastRandomness = 16;
constexpr std::uint16_t firstUserPort = 1024;

std::optional<std::uint16_t> portOf(std::string_view text) {
    std::uint16_t port = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (error != std::errc() || end != text.data() + text.size() || text.starts_with('0') || port < firstUserPort) {
        return std::nullopt;
    }
    return port;
}

} // namespace

ReturnAddress::ReturnAddress(std::uint16_t loopbackPort, std::string proofChallenge)
    : port(loopbackPort), challenge(std::move(proofChallenge)) {}

std::optional<ReturnAddress> ReturnAddress::ofState(std::string_view state) {
    const std::size_t first = state.find('.');
    const std::size_t second = first == std::string_view::npos ? first : state.find('.', first + 1);
    if (second == std::string_view::npos) {
        return std::nullopt;
    }
    const auto random = base64URLDecoded(state.substr(0, first));
    const auto port = portOf(state.substr(first + 1, second - first - 1));
    const auto challenge = base64URLDecoded(state.substr(second + 1));
    if (!random || random->size() < leastRandomness || !port || !challenge ||
        challenge->size() != SHA256_DIGEST_LENGTH) {
        return std::nullopt;
    }
    return ReturnAddress(*port, std::string(state.substr(second + 1)));
}

bool ReturnAddress::isProvedBy(std::string_view verifier) const {
    std::array<char, SHA256_DIGEST_LENGTH> digest{};
    SHA256(reinterpret_cast<const unsigned char*>(verifier.data()), verifier.size(),
           reinterpret_cast<unsigned char*>(digest.data()));
    return base64URLEncoded(std::string_view(digest.data(), digest.size())) == challenge;
}

} // namespace tovrel::testing
