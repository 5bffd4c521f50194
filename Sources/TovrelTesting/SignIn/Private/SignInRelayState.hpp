#pragma once

#include <TovrelTesting/Private/FormParameters.hpp>
#include <TovrelTesting/ReceivedRequest.hpp>
#include <TovrelTesting/SignIn/Private/ReturnAddress.hpp>
#include <TovrelTesting/SignIn/SignInRelay.hpp>

#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>

namespace tovrel::testing {

/// What a relay keeps: the answers that wait for their application, and the provider's codes that it has seen.
class SignInRelayState {
public:
    explicit SignInRelayState(const SignInRelayOptions& options) : options_(options) {}

    /// Sends the browser on to the application.
    ScriptedResponse relay(const ReceivedRequest& request);

    /// Hands the answer to the application.
    ScriptedResponse exchange(const ReceivedRequest& request);

    SignInRelayCounts counts() const;

private:
    struct Grant {
        std::string identityToken;
        std::optional<std::string> user;
        ReturnAddress address;
        Date expiry;
    };

    std::optional<std::string> location(const FormParameters& form, Date now);
    Grant redeem(const ReceivedRequest& request, Date now);

    const SignInRelayOptions options_;
    mutable std::mutex mutex_;
    std::map<std::string, Grant> grants_;
    std::set<std::string> seenCodes_;
    SignInRelayCounts counts_;
};

} // namespace tovrel::testing
