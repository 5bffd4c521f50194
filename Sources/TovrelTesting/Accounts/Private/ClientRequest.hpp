#pragma once

#include <TovrelTesting/Accounts/AccountsServerOptions.hpp>
#include <TovrelTesting/Private/FormParameters.hpp>

namespace tovrel::testing {

/// A form that a client sent and authenticated.
class ClientRequest {
public:
    /// Checks form and client. Throws `OAuthRefusal`.
    ClientRequest(const AccountsServerOptions& options, const ReceivedRequest& request);

    const AccountsServerClient& client() const noexcept { return *client_; }

    std::optional<std::string> value(const std::string& name) const { return form_.value(name); }

    /// A value that must be there. Throws `OAuthRefusal`.
    std::string required(const std::string& name) const;

private:
    FormParameters form_;
    const AccountsServerClient* client_;
};

} // namespace tovrel::testing
