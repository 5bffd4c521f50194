#pragma once

#include <Platform/System/Error.hpp>
#include <TovrelTesting/ScriptedResponse.hpp>

#include <string>

namespace tovrel::testing {

/// An error answer of the token or logout endpoint (RFC 6749 section 5.2). The message is the answer's description.
class OAuthRefusal : public Error {
public:
    static OAuthRefusal invalidRequest(const std::string& description);
    static OAuthRefusal invalidClient();
    /// The client tried a header of this authentication scheme, which the server does not take.
    static OAuthRefusal unsupportedAuthentication(std::string scheme);
    static OAuthRefusal invalidGrant(const std::string& description);
    static OAuthRefusal unauthorizedClient();
    static OAuthRefusal unsupportedGrantType();
    static OAuthRefusal invalidScope();
    static OAuthRefusal unknownRealm();

    ScriptedResponse response() const;

private:
    OAuthRefusal(int status, std::string code, const std::string& description);

    int status_;
    std::string code_;
    std::string scheme_;
};

} // namespace tovrel::testing
