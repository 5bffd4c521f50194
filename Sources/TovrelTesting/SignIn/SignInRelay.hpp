#pragma once

#include <Platform/Coding/Date.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelTesting/LocalBackEnd.hpp>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tovrel::testing {

class SignInRelayState;

/// How a relay is set up.
struct TOVREL_EXPORT SignInRelayOptions {
    /// How long an answer waits for the application.
    std::chrono::seconds grantLifetime = std::chrono::seconds(60);
    /// The relay's time. May be called from any thread.
    std::function<Date()> clock = &Date::now;

    SignInRelayOptions();
};

/// How often what happened at a relay.
struct TOVREL_EXPORT SignInRelayCounts {
    /// Answers of the identity provider that were sent on, errors included.
    std::uint64_t relayed = 0;
    /// Answers that were refused.
    std::uint64_t refusedAnswers = 0;
    std::uint64_t exchanges = 0;
    std::uint64_t refusedExchanges = 0;

    SignInRelayCounts();

    bool operator==(const SignInRelayCounts&) const = default;
};

/// The part of an accounts back end that carries an identity provider's answer to an application on a user's machine,
/// for a local back end.
///
/// | request | answer |
/// |---|---|
/// | `POST /sign-in/callback` | 303 to the application's port on 127.0.0.1, with a one-time code and the state |
/// | `POST /sign-in/exchange` | the identity token and the user record, for the code and its verifier |
///
/// Port and challenge (RFC 7636) are read from the state, whose form is "random.port.challenge". No token is ever in a
/// URL. Thread-safe; what it is attached to keeps its state alive.
class TOVREL_EXPORT SignInRelay {
public:
    static constexpr const char* callbackPath = "/sign-in/callback";
    static constexpr const char* exchangePath = "/sign-in/exchange";

    static std::shared_ptr<SignInRelay> make(const SignInRelayOptions& options = SignInRelayOptions());

    ~SignInRelay();
    SignInRelay(const SignInRelay&) = delete;
    SignInRelay& operator=(const SignInRelay&) = delete;

    /// Adds its routes to the back end, for each of these hosts.
    void attach(LocalBackEnd& backEnd, const std::vector<std::string>& hosts);

    SignInRelayCounts counts() const;

private:
    explicit SignInRelay(const SignInRelayOptions& options);

    std::shared_ptr<SignInRelayState> state_;
};

} // namespace tovrel::testing
