#pragma once

#include "LoopbackConnection.hpp"

#include <Platform/Concurrency/CancellationError.hpp>
#include <Platform/Concurrency/Start.hpp>
#include <Platform/URLLoading/URLComponents.hpp>
#include <Platform/URLLoading/URLError.hpp>
#include <TovrelTesting/LocalDeployment.hpp>
#include <TovrelTesting/ManualClock.hpp>
#include <TovrelTesting/SignIn/FakeBrowserOpener.hpp>
#include <TovrelWebServices/SignIn/Web/WebAuthorizationProvider.hpp>
#include <TovrelWebServices/Transport/TovrelURLSessionProvider.hpp>
#include <TovrelWebServices/Transport/URLSessionWebRequestExecutor.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <memory>
#include <string>
#include <Support/Await.hpp>
#include <Support/FormBrowser.hpp>
#include <vector>

namespace tovrel::tests {

/// A sign-in that runs.
class Attempt {
public:
    explicit Attempt(const std::shared_ptr<WebAuthorizationProvider>& provider)
        : task_(start<AuthorizationCredential>(
              provider->authorize(AuthorizationRequest({AuthorizationScope::fullName, AuthorizationScope::email}),
                                  nullptr),
              [ended = ended_](Outcome<AuthorizationCredential> outcome) { ended->set_value(std::move(outcome)); })) {}

    void cancel() const { task_.cancel(); }

    [[nodiscard]] bool isRunning() const {
        return future_.wait_for(std::chrono::seconds(0)) != std::future_status::ready;
    }

    /// What it ends with, or rethrows.
    AppleIDCredential credential() {
        if (future_.wait_for(deadline) != std::future_status::ready) {
            throw std::runtime_error("still signing in");
        }
        Outcome<AuthorizationCredential> outcome = future_.get();
        return *outcome.value().appleID();
    }

    /// The error that it ends with.
    AuthorizationError error() {
        try {
            static_cast<void>(credential());
        } catch (const AuthorizationError& error) {
            return error;
        }
        throw std::logic_error("signed in");
    }

private:
    std::shared_ptr<std::promise<Outcome<AuthorizationCredential>>> ended_ =
        std::make_shared<std::promise<Outcome<AuthorizationCredential>>>();
    std::future<Outcome<AuthorizationCredential>> future_ = ended_->get_future();
    TaskHandle task_;
};

/// The provider against a local deployment over TLS, with a browser that the test drives by hand.
class WebSignIn : public AsyncTest {
protected:
    static constexpr const char* application = "com.example.reader";

    void TearDown() override {
        AsyncTest::TearDown();
        for (const URL& page : opener->pages()) {
            EXPECT_TRUE(LoopbackConnection::isRefused(portOf(page))) << "a port is still open";
        }
    }

    std::unique_ptr<testing::LocalDeployment> makeDeployment() const {
        testing::AccountsServerOptions options;
        options.clients = {testing::AccountsServerClient("reader", "secret")};
        options.identityIssuers = {
            testing::TrustedIdentityIssuer("apple", testing::IdentityIssuer::make(), application)};
        options.clock = [now = now] { return Date::fromSecondsSince1970(*now); };
        return testing::LocalDeployment::start(options);
    }

    std::shared_ptr<WebAuthorizationProvider> makeProvider() const {
        return WebAuthorizationProvider::make(
            deployment->webAuthorizationConfiguration(),
            URLSessionWebRequestExecutor::make(TovrelURLSessionProvider::make(deployment->sessionConfiguration())),
            opener, clock, [now = now] { return Date::fromSecondsSince1970(*now); });
    }

    testing::IdentityProvider& identityProvider() { return deployment->identityProvider(); }

    /// The page that the provider has opened, the one of the latest attempt.
    URL openedPage(std::size_t count = 1) const {
        const std::vector<URL> pages = opener->waitForPages(count);
        return pages.size() == count ? pages.back() : throw std::runtime_error("the browser was not opened");
    }

    static std::string parameter(const URL& page, const std::string& name) {
        const std::vector<URLQueryItem> items = URLComponents(page).queryItems().value();
        for (const URLQueryItem& item : items) {
            if (item.name == name) {
                return item.value.value();
            }
        }
        throw std::runtime_error("no such parameter: " + name);
    }

    static std::string stateOf(const URL& page) { return parameter(page, "state"); }

    static std::uint16_t portOf(const URL& page) {
        const std::string state = stateOf(page);
        return static_cast<std::uint16_t>(std::stoi(state.substr(state.find('.') + 1)));
    }

    /// The page that posts the answer to the user's decision.
    Page decide(const URL& page, const std::string& decision = "continue") const {
        return browser.submit(browser.load(page.absoluteString()), {{"decision", decision}});
    }

    /// Goes all the way to the application's port.
    Page complete(const URL& page, const std::string& decision = "continue") const {
        return browser.follow(browser.submit(decide(page, decision)));
    }

    std::shared_ptr<std::atomic<double>> now = std::make_shared<std::atomic<double>>(1'700'000'000.0);
    std::unique_ptr<testing::LocalDeployment> deployment = makeDeployment();
    std::shared_ptr<testing::FakeBrowserOpener> opener = testing::FakeBrowserOpener::make();
    std::shared_ptr<testing::ManualClock> clock = testing::ManualClock::make();
    std::shared_ptr<WebAuthorizationProvider> provider = makeProvider();
    FormBrowser browser{
        deployment->backEnd(),
        {testing::LocalDeployment::accountsHosts().back(), testing::LocalDeployment::identityHosts().front()}};
};

} // namespace tovrel::tests
