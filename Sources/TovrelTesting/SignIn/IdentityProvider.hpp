#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelTesting/LocalBackEnd.hpp>
#include <TovrelTesting/SignIn/IdentityProviderOptions.hpp>
#include <TovrelTesting/SignIn/IdentityUser.hpp>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tovrel::testing {

class IdentityProviderState;

/// What an identity provider can get wrong in an answer.
enum class IdentityProviderMistake {
    /// The first part of the state is another; the answer still finds its way.
    wrongState,
    /// The token has a nonce that nobody sent.
    wrongNonce,
    /// The token is for another application.
    wrongAudience,
    /// The token is from another issuer.
    wrongIssuer,
    /// The token's time is over.
    expiredToken,
    /// The token is no token.
    malformedToken,
    /// The user record is no JSON.
    malformedUser,
    /// The user record says nothing: "{}".
    emptyUser,
    /// The answer before this one is sent again.
    replayedAnswer,
};

/// How often what happened at an identity provider.
struct TOVREL_EXPORT IdentityProviderCounts {
    std::uint64_t pagesShown = 0;
    std::uint64_t consents = 0;
    std::uint64_t cancellations = 0;

    IdentityProviderCounts();

    bool operator==(const IdentityProviderCounts&) const = default;
};

/// A sign-in provider with pages that a person can click, for a local back end.
///
/// | request | answer |
/// |---|---|
/// | `GET /auth/authorize?…` | a page that asks the user, with the buttons "continue" and "cancel" |
/// | `POST /auth/authorize` | a page that posts the answer to the application's relay by itself |
///
/// It takes `response_type=code id_token`, `response_mode=form_post` and the scopes "name" and "email", and demands
/// state and nonce. Only the first consent of a user comes with the user record. Who sits in front of the browser is
/// `setUser`'s to say: there are no passwords. Thread-safe; what it is attached to keeps its state alive.
class TOVREL_EXPORT IdentityProvider {
public:
    static constexpr const char* authorizePath = "/auth/authorize";

    static std::shared_ptr<IdentityProvider> make(const IdentityProviderOptions& options);

    ~IdentityProvider();
    IdentityProvider(const IdentityProvider&) = delete;
    IdentityProvider& operator=(const IdentityProvider&) = delete;

    /// Adds its routes to the back end, for each of these hosts.
    void attach(LocalBackEnd& backEnd, const std::vector<std::string>& hosts);

    /// Who sits in front of the browser from now on.
    void setUser(IdentityUser user);

    /// Takes all consents back, so that each user's next one is the first again.
    void forgetConsents();

    /// Gets the next answer to a consent wrong; several mistakes are made in turn.
    void makeMistake(IdentityProviderMistake mistake);

    /// Answers the next consent with this error code.
    void refuseNextConsent(std::string code);

    IdentityProviderCounts counts() const;

private:
    explicit IdentityProvider(const IdentityProviderOptions& options);

    std::shared_ptr<IdentityProviderState> state_;
};

} // namespace tovrel::testing
