#include <Platform/Coding/JSONEncoder.hpp>
#include <Platform/Coding/TextEncoding.hpp>
#include <TovrelTesting/Accounts/Private/IDToken.hpp>

#include <fmt/format.h>

#include <cmath>
#include <tuple>
#include <utility>

namespace tovrel::testing {

namespace {

struct Payload {
    std::string issuer;
    std::string subject;
    std::string audience;
    double issuedAt = 0.0;
    double expiry = 0.0;
    std::optional<std::string> givenName;
    std::optional<std::string> familyName;
    std::optional<std::string> email;

    static constexpr auto fields() {
        return std::tuple{Field<&Payload::issuer, "iss">{},
                          Field<&Payload::subject, "sub">{},
                          Field<&Payload::audience, "aud">{},
                          Field<&Payload::issuedAt, "iat">{},
                          Field<&Payload::expiry, "exp">{},
                          Field<&Payload::givenName, "given_name">{},
                          Field<&Payload::familyName, "family_name">{},
                          Field<&Payload::email, "email">{}};
    }
};

/// The two last digits of the alphabet have five set bits in a row at their top. Of ASCII's bytes only those of ">",
/// "?", "~" and DEL can bring that about, and all four stand in strings alone.
std::string withoutTroublesomeBytes(std::string_view json) {
    const Data units = encodeText(json, TextEncoding::utf16BigEndian, false).value();
    std::string result;
    for (std::size_t i = 0; i < units.size(); i += 2) {
        const unsigned unit = units.data()[i] * 256U + units.data()[i + 1];
        const bool isHarmless = unit < 0x7EU && unit != '>' && unit != '?';
        result += isHarmless ? std::string(1, static_cast<char>(unit)) : fmt::format("\\u{:04x}", unit);
    }
    return result;
}

} // namespace

IDTokenContext::IDTokenContext(std::string tokenIssuer, std::string tokenAudience, Date issued, double seconds)
    : issuer(std::move(tokenIssuer)), audience(std::move(tokenAudience)), issuedAt(issued), lifetime(seconds) {}

std::string makeIDToken(const SigningKey& key, const AccountsServerUser& user, const IDTokenContext& context) {
    Payload payload;
    payload.issuer = context.issuer;
    payload.subject = user.identifier;
    payload.audience = context.audience;
    payload.issuedAt = std::floor(context.issuedAt.secondsSince1970());
    payload.expiry = payload.issuedAt + context.lifetime;
    payload.givenName = user.firstName;
    payload.familyName = user.lastName;
    payload.email = user.email;
    return key.sign(withoutTroublesomeBytes(JSONEncoder().encode(payload).view()));
}

} // namespace tovrel::testing
