#pragma once

#include <Platform/Coding/Date.hpp>
#include <Platform/Concurrency/Async.hpp>
#include <Platform/Concurrency/Clock.hpp>
#include <TovrelWebServices/SignIn/AppleIDCredential.hpp>
#include <TovrelWebServices/SignIn/AuthorizationRequest.hpp>
#include <TovrelWebServices/SignIn/Web/BrowserOpener.hpp>
#include <TovrelWebServices/SignIn/Web/Private/CallbackAnswer.hpp>
#include <TovrelWebServices/SignIn/Web/WebAuthorizationConfiguration.hpp>
#include <TovrelWebServices/Transport/WebRequestExecutor.hpp>

#include <functional>
#include <memory>

namespace tovrel::detail {

/// What every attempt of a provider works with.
struct WebAuthorizationTools {
    WebAuthorizationConfiguration configuration;
    std::shared_ptr<WebRequestExecutor> executor;
    std::shared_ptr<BrowserOpener> browser;
    std::shared_ptr<Clock> clock;
    std::function<Date()> now;

    WebAuthorizationTools(WebAuthorizationConfiguration toolConfiguration,
                          std::shared_ptr<WebRequestExecutor> toolExecutor, std::shared_ptr<BrowserOpener> toolBrowser,
                          std::shared_ptr<Clock> toolClock, std::function<Date()> toolNow);
};

/// One sign-in from the browser's start to a checked credential, within the time limit. However it ends, its port and
/// connections are closed.
///
/// @throws AuthorizationError; CancellationError; what the browser's opener or the executor throws.
Async<AppleIDCredential> attemptWebAuthorization(std::shared_ptr<const WebAuthorizationTools> tools,
                                                 AuthorizationRequest request);

} // namespace tovrel::detail
