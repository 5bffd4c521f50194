#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsBodyParameter.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsClient.hpp>

#include <string>

namespace tovrel {

/// Decides what the forms of token and logout requests hold, and in which order. The client's secret is part of every
/// form (RFC 6749 section 2.3.1).
class TOVREL_EXPORT IssuerBodyParamBuilder {
public:
    virtual ~IssuerBodyParamBuilder();

    [[nodiscard]] virtual const TovrelAccountsClient& client() const = 0;
    [[nodiscard]] virtual TovrelAccountsBodyParameters bodyParamsForRequestingNewToken() const = 0;

    /// RFC 6749 section 6.
    [[nodiscard]] TovrelAccountsBodyParameters createRefreshTokenBodyParameters(std::string refreshToken) const;
    [[nodiscard]] TovrelAccountsBodyParameters createLogoutBodyParameters(std::string refreshToken) const;

protected:
    IssuerBodyParamBuilder();
    IssuerBodyParamBuilder(const IssuerBodyParamBuilder&) = default;
    IssuerBodyParamBuilder& operator=(const IssuerBodyParamBuilder&) = default;
};

} // namespace tovrel
