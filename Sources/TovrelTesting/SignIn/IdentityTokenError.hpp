#pragma once

#include <Platform/System/Error.hpp>
#include <Platform/System/Export.hpp>

#include <string>

namespace tovrel::testing {

/// Why an identity token is not accepted.
class TOVREL_EXPORT IdentityTokenError : public Error {
public:
    enum class Kind {
        /// It is no token of this issuer's key, or was changed.
        signature,
        /// A required claim is missing or of the wrong type.
        claims,
        /// It names another issuer.
        issuer,
        /// It is for another application.
        audience,
        /// Its time is over.
        expired,
        /// It is from the future.
        notYetValid,
    };

    static IdentityTokenError signature();
    static IdentityTokenError claims();
    static IdentityTokenError issuer();
    static IdentityTokenError audience();
    static IdentityTokenError expired();
    static IdentityTokenError notYetValid();

    Kind kind() const noexcept { return kind_; }

    /// Compares the kinds.
    bool operator==(const IdentityTokenError& other) const noexcept { return kind_ == other.kind_; }

private:
    IdentityTokenError(Kind kind, std::string message);

    Kind kind_;
};

} // namespace tovrel::testing
