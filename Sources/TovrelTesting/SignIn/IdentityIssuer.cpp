#include <Platform/Coding/DecodingError.hpp>
#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/Coding/JSONEncoder.hpp>
#include <TovrelTesting/Private/SigningKey.hpp>
#include <TovrelTesting/SignIn/IdentityIssuer.hpp>

#include <cmath>
#include <tuple>
#include <utility>

namespace tovrel::testing {

namespace {

/// The payload as it travels (RFC 7519 section 4.1); times are seconds since 1970.
struct Payload {
    std::string issuer;
    std::string subject;
    std::string audience;
    double issuedAt = 0.0;
    double expiry = 0.0;
    std::optional<std::string> nonce;
    std::optional<std::string> email;

    static constexpr auto fields() {
        return std::tuple{Field<&Payload::issuer, "iss">{},   Field<&Payload::subject, "sub">{},
                          Field<&Payload::audience, "aud">{}, Field<&Payload::issuedAt, "iat">{},
                          Field<&Payload::expiry, "exp">{},   Field<&Payload::nonce, "nonce">{},
                          Field<&Payload::email, "email">{}};
    }
};

Payload decoded(const std::string& json) {
    try {
        return JSONDecoder().decode<Payload>(Data(json));
    } catch (const DecodingError&) {
        throw IdentityTokenError::claims();
    }
}

} // namespace

IdentityIssuer::IdentityIssuer(std::string name) : name_(std::move(name)), key_(std::make_unique<SigningKey>()) {}

IdentityIssuer::~IdentityIssuer() = default;

std::shared_ptr<IdentityIssuer> IdentityIssuer::make(std::string name) {
    return std::shared_ptr<IdentityIssuer>(new IdentityIssuer(std::move(name)));
}

std::string IdentityIssuer::mint(const IdentityClaims& claims, Date issuedAt, std::chrono::seconds lifetime) const {
    Payload payload;
    payload.issuer = name_;
    payload.subject = claims.subject;
    payload.audience = claims.audience;
    payload.issuedAt = std::floor(issuedAt.secondsSince1970());
    payload.expiry = payload.issuedAt + static_cast<double>(lifetime.count());
    payload.nonce = claims.nonce;
    payload.email = claims.email;
    return key_->sign(JSONEncoder().encode(payload).view());
}

IdentityClaims IdentityIssuer::verify(std::string_view token, std::string_view audience, Date now) const {
    const auto json = key_->verifiedPayload(token);
    if (!json) {
        throw IdentityTokenError::signature();
    }
    const Payload payload = decoded(*json);
    if (payload.issuer != name_) {
        throw IdentityTokenError::issuer();
    }
    if (payload.audience != audience) {
        throw IdentityTokenError::audience();
    }
    if (payload.expiry <= now.secondsSince1970()) {
        throw IdentityTokenError::expired();
    }
    if (payload.issuedAt > now.secondsSince1970()) {
        throw IdentityTokenError::notYetValid();
    }
    IdentityClaims claims(payload.subject, payload.audience);
    claims.email = payload.email;
    claims.nonce = payload.nonce;
    return claims;
}

} // namespace tovrel::testing
