#pragma once

#include <Platform/Concurrency/Event.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelWebServices/SignIn/AuthorizationProvider.hpp>

#include <cstddef>
#include <deque>
#include <exception>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace tovrel::testing {

/// An authorization provider without a user: it answers by a script and remembers what it was asked. Thread-safe.
class TOVREL_EXPORT ScriptedAuthorizationProvider final
    : public AuthorizationProvider,
      public std::enable_shared_from_this<ScriptedAuthorizationProvider> {
public:
    static std::shared_ptr<ScriptedAuthorizationProvider> make();
    ~ScriptedAuthorizationProvider() override;

    /// Adds an answer for the next authorization that has none yet. An authorization without an answer stops the
    /// process.
    void answer(AuthorizationCredential credential);
    void answer(AppleIDCredential credential);
    void fail(std::exception_ptr error);

    template <class E>
    void fail(const E& error) {
        fail(std::make_exception_ptr(error));
    }

    /// Makes the authorizations that begin from now on wait before they answer, each with the answer that was next when
    /// it began. A cancellation ends the wait with `CancellationError`.
    void hold();
    /// Lets all waiting authorizations go on, and those to come.
    void release();

    /// Makes the authorizations that begin from now on ask for the window under their sheet, as a system's own do.
    void presentSheet();

    /// What is known of a user from now on; `notFound` until then.
    void setCredentialState(std::string user, TovrelAppleCredentialState state);

    /// What was asked, in order.
    [[nodiscard]] std::vector<AuthorizationRequest> requests() const;
    [[nodiscard]] std::size_t requestCount() const;
    /// How many authorizations a cancellation has ended.
    [[nodiscard]] std::size_t cancelledCount() const;
    /// The windows that were given, in order.
    [[nodiscard]] std::vector<std::shared_ptr<Window>> anchors() const;
    /// The users whose state was asked for, in order.
    [[nodiscard]] std::vector<std::string> credentialStateRequests() const;

    [[nodiscard]] Async<AuthorizationCredential>
    authorize(AuthorizationRequest request, std::shared_ptr<AuthorizationPresentation> presentation) override;
    [[nodiscard]] Async<TovrelAppleCredentialState> credentialState(std::string user) override;

private:
    using Answer = std::variant<AuthorizationCredential, std::exception_ptr>;
    using Self = std::shared_ptr<ScriptedAuthorizationProvider>;

    ScriptedAuthorizationProvider();

    static Async<AuthorizationCredential> answerOf(Self self, AuthorizationRequest request,
                                                   std::shared_ptr<AuthorizationPresentation> presentation);
    static Async<TovrelAppleCredentialState> stateOf(Self self, std::string user);
    void add(Answer answer);
    Answer begin(AuthorizationRequest request, std::shared_ptr<Event>& gate, bool& isSheet);

    mutable std::mutex mutex_;
    std::deque<Answer> answers_;
    std::shared_ptr<Event> gate_;
    bool isSheetPresented_ = false;
    std::map<std::string, TovrelAppleCredentialState> states_;
    std::vector<AuthorizationRequest> requests_;
    std::size_t cancelledCount_ = 0;
    std::vector<std::shared_ptr<Window>> anchors_;
    std::vector<std::string> credentialStateRequests_;
};

} // namespace tovrel::testing
