#include <Platform/Coding/JSONDecoder.hpp>
#include <TovrelWebServices/SignIn/AuthorizationError.hpp>
#include <TovrelWebServices/SignIn/Web/Private/Cryptography.hpp>
#include <TovrelWebServices/SignIn/Web/Private/IdentityTokenCheck.hpp>
#include <TovrelWebServices/Tovrel Accounts/JWT.hpp>

#include <algorithm>
#include <optional>
#include <tuple>
#include <vector>

namespace tovrel {

namespace {

using Flaw = AuthorizationError::IdentityTokenFlaw;

/// One name, or a list of them (RFC 7519 section 4.1.3).
struct Audience {
    std::vector<std::string> names;

    Audience() = default;
};

} // namespace

template <>
struct Coding<Audience> {
    static Audience decode(Decoder& decoder) {
        Audience audience;
        try {
            audience.names.push_back(decoder.singleValue().decode<std::string>());
        } catch (const DecodingError&) {
            audience.names = decoder.singleValue().decode<std::vector<std::string>>();
        }
        return audience;
    }

    static void encode(const Audience& audience, Encoder& encoder) { encoder.singleValue(audience.names); }
};

namespace {

struct Claims {
    std::string issuer;
    std::string subject;
    Audience audience;
    std::optional<std::string> authorizedParty;
    double expiry = 0.0;
    std::optional<std::string> nonce;

    Claims() = default;
    static constexpr auto fields() {
        return std::tuple{Field<&Claims::issuer, "iss">{},   Field<&Claims::subject, "sub">{},
                          Field<&Claims::audience, "aud">{}, Field<&Claims::authorizedParty, "azp">{},
                          Field<&Claims::expiry, "exp">{},   Field<&Claims::nonce, "nonce">{}};
    }
};

Claims claimsOf(std::string_view token) {
    const std::optional<JWT> parts = JWT::parse(token);
    const auto payload =
        parts && parts->segments.size() == 3 ? detail::base64URLDecoded(parts->segments[1]) : std::nullopt;
    if (!payload) {
        throw AuthorizationError::invalidIdentityToken(Flaw::malformed);
    }
    try {
        return JSONDecoder().decode<Claims>(Data(*payload));
    } catch (const DecodingError&) {
        throw AuthorizationError::invalidIdentityToken(Flaw::malformed);
    }
}

bool isFor(const Claims& claims, const std::string& audience) {
    const auto& names = claims.audience.names;
    return std::ranges::count(names, audience) != 0 && (names.size() == 1 || claims.authorizedParty == audience);
}

} // namespace

namespace detail {

std::string checkedSubject(std::string_view token, const IdentityTokenExpectation& expectation) {
    const Claims claims = claimsOf(token);
    if (claims.subject.empty()) {
        throw AuthorizationError::invalidIdentityToken(Flaw::malformed);
    }
    if (claims.issuer != expectation.issuer) {
        throw AuthorizationError::invalidIdentityToken(Flaw::issuer);
    }
    if (!isFor(claims, expectation.audience)) {
        throw AuthorizationError::invalidIdentityToken(Flaw::audience);
    }
    if (!claims.nonce || !areEqualSecrets(*claims.nonce, expectation.nonce)) {
        throw AuthorizationError::invalidIdentityToken(Flaw::nonce);
    }
    if (!(expectation.now.secondsSince1970() < claims.expiry)) {
        throw AuthorizationError::invalidIdentityToken(Flaw::expired);
    }
    return claims.subject;
}

} // namespace detail

} // namespace tovrel
