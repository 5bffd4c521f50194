#pragma once

#include <TovrelWebServices/Tovrel Accounts/IssuerBodyParamBuilder.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsUserProfile.hpp>

#include <optional>
#include <string>

namespace tovrel {

/// The subject is a user, vouched for by an identity token of Sign in with Apple (RFC 8693 section 2.1). A value.
///
/// The scopes are always "openid" and "roles"; those of the client are not asked for.
class TOVREL_EXPORT AppleIssuerBodyParamBuilder final : public IssuerBodyParamBuilder {
public:
    AppleIssuerBodyParamBuilder(TovrelAccountsClient client, std::optional<TovrelAccountsUserProfile> userProfile,
                                std::string identityToken);

    [[nodiscard]] const TovrelAccountsClient& client() const override { return client_; }
    [[nodiscard]] const std::optional<TovrelAccountsUserProfile>& userProfile() const { return userProfile_; }
    [[nodiscard]] const std::string& identityToken() const { return identityToken_; }

    /// The profile, if there is one, goes along as JSON with sorted keys; one that is not UTF-8 is left out.
    [[nodiscard]] TovrelAccountsBodyParameters bodyParamsForRequestingNewToken() const override;

private:
    TovrelAccountsClient client_;
    std::optional<TovrelAccountsUserProfile> userProfile_;
    std::string identityToken_;
};

} // namespace tovrel
