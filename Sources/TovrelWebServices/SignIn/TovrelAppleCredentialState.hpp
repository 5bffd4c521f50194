#pragma once

namespace tovrel {

/// What the platform says of a user's Apple credential.
enum class TovrelAppleCredentialState {
    revoked,    ///< the user withdrew it
    authorized, ///< it is good
    notFound,   ///< the platform does not know the user
    transferred ///< the application changed teams and the user has to be moved
};

} // namespace tovrel
