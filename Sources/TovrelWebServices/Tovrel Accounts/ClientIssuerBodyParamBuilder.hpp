#pragma once

#include <TovrelWebServices/Tovrel Accounts/IssuerBodyParamBuilder.hpp>

namespace tovrel {

/// The client itself is the subject (RFC 6749 section 4.4). A value.
class TOVREL_EXPORT ClientIssuerBodyParamBuilder final : public IssuerBodyParamBuilder {
public:
    explicit ClientIssuerBodyParamBuilder(TovrelAccountsClient client);

    [[nodiscard]] const TovrelAccountsClient& client() const override { return client_; }
    [[nodiscard]] TovrelAccountsBodyParameters bodyParamsForRequestingNewToken() const override;

private:
    TovrelAccountsClient client_;
};

} // namespace tovrel
