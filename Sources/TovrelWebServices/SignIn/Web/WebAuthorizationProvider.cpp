#include <Platform/Concurrency/Cancellation.hpp>
#include <Platform/Concurrency/Task.hpp>
#include <Platform/Concurrency/TaskPool.hpp>
#include <Platform/System/FatalError.hpp>
#include <QZFrameworkCoreLogic/StringURLEncoding.hpp>
#include <TovrelWebServices/SignIn/Web/Private/WebAuthorizationAttempt.hpp>
#include <TovrelWebServices/SignIn/Web/SystemBrowserOpener.hpp>
#include <TovrelWebServices/SignIn/Web/WebAuthorizationProvider.hpp>

#include <optional>
#include <utility>

namespace tovrel {

namespace {

void require(bool condition, const char* what) {
    if (!condition) {
        fatalError(what);
    }
}

bool isSecure(const URL& url) {
    return url.scheme() == "https" && !url.host().value_or("").empty() && !url.fragment();
}

void check(const WebAuthorizationConfiguration& configuration) {
    require(isSecure(configuration.authorizeURL) && isSecure(configuration.relayCallbackURL) &&
                isSecure(configuration.relayExchangeURL),
            "the addresses of the web authorization have to be https, without a fragment");
    require(urlEncodeQueryParameter(configuration.clientIdentifier).has_value(),
            "the client identifier of the web authorization is not UTF-8");
    require(configuration.timeLimit > std::chrono::seconds(0), "the web authorization needs time");
}

Async<TovrelAppleCredentialState> ready(TovrelAppleCredentialState state) {
    co_return state;
}

} // namespace

WebAuthorizationProvider::WebAuthorizationProvider(std::shared_ptr<const detail::WebAuthorizationTools> tools)
    : tools_(std::move(tools)) {}

WebAuthorizationProvider::~WebAuthorizationProvider() = default;

std::shared_ptr<WebAuthorizationProvider> WebAuthorizationProvider::make(WebAuthorizationConfiguration configuration,
                                                                         std::shared_ptr<WebRequestExecutor> executor) {
    return make(std::move(configuration), std::move(executor), SystemBrowserOpener::make(), Clock::system(),
                &Date::now);
}

std::shared_ptr<WebAuthorizationProvider> WebAuthorizationProvider::make(WebAuthorizationConfiguration configuration,
                                                                         std::shared_ptr<WebRequestExecutor> executor,
                                                                         std::shared_ptr<BrowserOpener> browser,
                                                                         std::shared_ptr<Clock> clock,
                                                                         CurrentTime now) {
    check(configuration);
    auto tools = std::make_shared<const detail::WebAuthorizationTools>(
        std::move(configuration), std::move(executor), std::move(browser), std::move(clock), std::move(now));
    return std::shared_ptr<WebAuthorizationProvider>(new WebAuthorizationProvider(std::move(tools)));
}

Async<AuthorizationCredential>
WebAuthorizationProvider::authorize(AuthorizationRequest request,
                                    std::shared_ptr<AuthorizationPresentation> /*presentation*/) {
    return authorizeInPlaceOfOlder(shared_from_this(), std::move(request));
}

Async<AuthorizationCredential> WebAuthorizationProvider::authorizeInPlaceOfOlder(Self self,
                                                                                 AuthorizationRequest request) {
    const std::uint64_t number = self->supersedeAttempt();
    auto credential = std::make_shared<std::optional<AppleIDCredential>>();
    const bool isCancelled = co_await isTaskCancelled();
    Async<AppleIDCredential> attempt = detail::attemptWebAuthorization(self->tools_, std::move(request));
    const std::shared_ptr<Task> task =
        Task::spawn(TaskPool::compute(), detail::keepResult(std::move(attempt), credential), isCancelled);
    self->registerAttempt(number, task);
    co_await Task::join(task);
    self->forgetCredentialState((*credential)->user);
    co_return AuthorizationCredential::appleID(std::move(**credential));
}

std::uint64_t WebAuthorizationProvider::supersedeAttempt() {
    std::shared_ptr<Task> older;
    std::uint64_t number = 0;
    {
        const std::scoped_lock lock(mutex_);
        older = attempt_.lock();
        number = ++lastAttempt_;
    }
    if (older) {
        older->cancel();
    }
    return number;
}

void WebAuthorizationProvider::registerAttempt(std::uint64_t number, const std::shared_ptr<Task>& attempt) {
    {
        const std::scoped_lock lock(mutex_);
        if (number == lastAttempt_) {
            attempt_ = attempt;
            return;
        }
    }
    // A newer one has begun since, and has not seen this.
    attempt->cancel();
}

Async<TovrelAppleCredentialState> WebAuthorizationProvider::credentialState(std::string user) {
    const std::scoped_lock lock(mutex_);
    const auto found = states_.find(user);
    return ready(found == states_.end() ? TovrelAppleCredentialState::authorized : found->second);
}

void WebAuthorizationProvider::noteCredentialState(std::string user, TovrelAppleCredentialState state) {
    const std::scoped_lock lock(mutex_);
    states_.insert_or_assign(std::move(user), state);
}

void WebAuthorizationProvider::forgetCredentialState(const std::string& user) {
    const std::scoped_lock lock(mutex_);
    states_.erase(user);
}

} // namespace tovrel
