#pragma once

#include <TovrelTesting/ReceivedRequest.hpp>
#include <TovrelTesting/SignIn/IdentityProvider.hpp>
#include <TovrelTesting/SignIn/Private/AuthorizationQuestion.hpp>
#include <TovrelTesting/SignIn/Private/SignInPages.hpp>

#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <variant>

namespace tovrel::testing {

/// What an identity provider knows. The mutex guards what stands below it and is held for no callback.
class IdentityProviderState {
public:
    explicit IdentityProviderState(const IdentityProviderOptions& providerOptions);

    /// Shows the page that asks the user.
    ScriptedResponse ask(const ReceivedRequest& request);

    /// Carries the user's decision to the application.
    ScriptedResponse decide(const ReceivedRequest& request);

    /// A mistake, or the error code of a refusal.
    using Twist = std::variant<IdentityProviderMistake, std::string>;

    const IdentityProviderOptions options;

    std::mutex mutex;
    IdentityUser user;
    std::set<std::string> consents;
    std::deque<Twist> twists;
    IdentityProviderCounts counts;

private:
    struct Answer {
        std::string url;
        FormFields fields;
    };

    Answer consent(const AuthorizationQuestion& question, Date now);
    Answer granted(const AuthorizationQuestion& question, std::optional<IdentityProviderMistake> mistake, Date now);

    std::map<std::string, AuthorizationQuestion> questions_;
    std::optional<Answer> lastAnswer_;
};

} // namespace tovrel::testing
