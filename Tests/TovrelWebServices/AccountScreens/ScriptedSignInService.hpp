#pragma once

#include <TovrelWebServices/SignIn/TovrelAppleSignInService.hpp>

#include <utility>
#include <vector>

namespace tovrel::tests {

/// A sign-in service whose requests the test ends.
class ScriptedSignInService final : public TovrelAppleSignInService {
public:
    std::vector<Completion> requests;

    Async<std::optional<TovrelAppleCredentialState>> getCredentialState(TovrelAccountsClient /*client*/) override {
        co_return std::nullopt;
    }

    void requestAuthorization(Completion completion) override { requests.push_back(std::move(completion)); }

    /// Ends the latest request.
    void end(TovrelAppleSignInResult result) {
        auto completion = std::move(requests.back());
        requests.pop_back();
        completion(std::move(result));
    }
};

} // namespace tovrel::tests
