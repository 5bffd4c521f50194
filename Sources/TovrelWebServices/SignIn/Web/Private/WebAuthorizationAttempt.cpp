#include <Platform/Concurrency/Cancellation.hpp>
#include <Platform/Concurrency/Task.hpp>
#include <TovrelWebServices/SignIn/AuthorizationError.hpp>
#include <TovrelWebServices/SignIn/Web/Private/AuthorizationSecrets.hpp>
#include <TovrelWebServices/SignIn/Web/Private/IdentityTokenCheck.hpp>
#include <TovrelWebServices/SignIn/Web/Private/LoopbackListener.hpp>
#include <TovrelWebServices/SignIn/Web/Private/RelayExchange.hpp>
#include <TovrelWebServices/SignIn/Web/Private/TimeLimit.hpp>
#include <TovrelWebServices/SignIn/Web/Private/UserRecord.hpp>
#include <TovrelWebServices/SignIn/Web/Private/WebAuthorizationAttempt.hpp>

#include <boost/asio/this_coro.hpp>

#include <optional>
#include <string_view>
#include <utility>

namespace tovrel::detail {

namespace asio = boost::asio;

namespace {

constexpr std::string_view cancelledByUser = "user_cancelled_authorize";

using Tools = std::shared_ptr<const WebAuthorizationTools>;

/// What the listener has to tell when nothing comes of the attempt, all of which is on one executor.
using OtherAttemptSeen = std::shared_ptr<bool>;

/// An answer that a browser brought, and what it has to match.
struct BroughtAnswer {
    CallbackAnswer answer;
    AuthorizationSecrets secrets;

    BroughtAnswer(CallbackAnswer broughtAnswer, AuthorizationSecrets attemptSecrets)
        : answer(std::move(broughtAnswer)), secrets(std::move(attemptSecrets)) {}
};

/// Opens the page; a failure ends the wait for an answer that cannot come.
Async<void> openPage(std::shared_ptr<BrowserOpener> browser, URL page, std::shared_ptr<Task> waiting,
                     std::shared_ptr<std::exception_ptr> failure) {
    try {
        co_await browser->open(std::move(page));
    } catch (...) {
        *failure = std::current_exception();
    }
    if (*failure) {
        waiting->cancel();
    }
}

Async<BroughtAnswer> askInBrowser(Tools tools, AuthorizationRequest request, OtherAttemptSeen otherAttemptSeen) {
    co_await checkCancellation();
    const Executor executor = co_await asio::this_coro::executor;
    const auto listener = LoopbackListener::open(executor, tools->clock);
    AuthorizationSecrets secrets(listener->port());
    URL page = authorizeURL(tools->configuration, request, secrets);

    auto answer = std::make_shared<std::optional<CallbackAnswer>>();
    const auto waiting = Task::spawn(executor, keepResult(LoopbackListener::receive(listener, secrets.state), answer));
    auto openingFailure = std::make_shared<std::exception_ptr>();
    const auto opening = Task::spawn(executor, openPage(tools->browser, std::move(page), waiting, openingFailure));

    std::exception_ptr failure;
    try {
        co_await Task::join(waiting);
    } catch (...) {
        failure = *openingFailure ? *openingFailure : std::current_exception();
    }
    *otherAttemptSeen = listener->hasRefusedOtherAttempt();
    // Not waited for: a browser may run for as long as it likes.
    opening->cancel();
    if (failure) {
        std::rethrow_exception(failure);
    }
    co_return BroughtAnswer(std::move(**answer), std::move(secrets));
}

std::string codeOf(const CallbackAnswer& answer) {
    switch (answer.kind) {
    case CallbackAnswer::Kind::code:
        return answer.value;
    case CallbackAnswer::Kind::error:
        if (answer.value == cancelledByUser) {
            throw AuthorizationError::cancelled();
        }
        throw AuthorizationError::providerRefused(answer.value);
    case CallbackAnswer::Kind::malformed:
        break;
    }
    throw AuthorizationError::invalidResponse();
}

AppleIDCredential credentialIn(const RelayedAnswer& answer, const WebAuthorizationTools& tools,
                               const AuthorizationSecrets& secrets) {
    const IdentityTokenExpectation expectation(tools.configuration.issuer, tools.configuration.clientIdentifier,
                                               secrets.nonce, tools.now());
    AppleIDCredential credential(checkedSubject(answer.identityToken, expectation));
    credential.identityToken = Data(answer.identityToken);
    if (answer.user) {
        UserRecord user = UserRecord::parse(*answer.user);
        credential.fullName = std::move(user.name);
        credential.email = std::move(user.email);
    }
    return credential;
}

Async<AppleIDCredential> authorizeWithoutLimit(Tools tools, AuthorizationRequest request,
                                               OtherAttemptSeen otherAttemptSeen) {
    const BroughtAnswer brought = co_await askInBrowser(tools, std::move(request), std::move(otherAttemptSeen));
    std::string code = codeOf(brought.answer);
    const RelayedAnswer answer = co_await fetchAnswer(tools->executor, tools->configuration.relayExchangeURL,
                                                      std::move(code), brought.secrets.codeVerifier);
    co_return credentialIn(answer, *tools, brought.secrets);
}

} // namespace

WebAuthorizationTools::WebAuthorizationTools(WebAuthorizationConfiguration toolConfiguration,
                                             std::shared_ptr<WebRequestExecutor> toolExecutor,
                                             std::shared_ptr<BrowserOpener> toolBrowser,
                                             std::shared_ptr<Clock> toolClock, std::function<Date()> toolNow)
    : configuration(std::move(toolConfiguration)),
      executor(std::move(toolExecutor)),
      browser(std::move(toolBrowser)),
      clock(std::move(toolClock)),
      now(std::move(toolNow)) {}

Async<AppleIDCredential> attemptWebAuthorization(Tools tools, AuthorizationRequest request) {
    auto otherAttemptSeen = std::make_shared<bool>(false);
    Async<AppleIDCredential> whole = authorizeWithoutLimit(tools, std::move(request), otherAttemptSeen);
    try {
        co_return co_await withinTimeLimit(tools->clock, tools->configuration.timeLimit, std::move(whole));
    } catch (const AuthorizationError& error) {
        if (error.kind() == AuthorizationError::Kind::timedOut && *otherAttemptSeen) {
            throw AuthorizationError::stateMismatch();
        }
        throw;
    }
}

} // namespace tovrel::detail
