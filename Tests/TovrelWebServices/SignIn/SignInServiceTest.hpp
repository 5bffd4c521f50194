#pragma once

#include <TovrelTesting/FakeTovrelAccountsWebService.hpp>
#include <TovrelTesting/FakeWebRequestExecutor.hpp>
#include <TovrelTesting/InMemoryTovrelAccountsStorage.hpp>
#include <TovrelTesting/SignIn/ScriptedAuthorizationProvider.hpp>
#include <TovrelWebServices/SignIn/DefaultTovrelAppleSignInService.hpp>

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <Support/Await.hpp>
#include <Support/MainThread.hpp>
#include <Support/Registration.hpp>
#include <utility>
#include <vector>

namespace tovrel::tests {

/// Whether the condition comes true within the deadline.
inline bool comesTrue(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::yield();
    }
    return true;
}

/// What the completion of one request was called with, and where.
class Completions {
public:
    TovrelAppleSignInService::Completion next() {
        return [this](TovrelAppleSignInResult result) {
            EXPECT_TRUE(MainThread::get().isCurrent());
            const std::scoped_lock lock(mutex_);
            results_.push_back(std::move(result));
        };
    }

    [[nodiscard]] std::size_t count() const {
        const std::scoped_lock lock(mutex_);
        return results_.size();
    }

    /// The one result, once it is there.
    [[nodiscard]] TovrelAppleSignInResult result() const {
        EXPECT_TRUE(comesTrue([this] { return count() != 0; }));
        EXPECT_TRUE(allTasksEnd());
        const std::scoped_lock lock(mutex_);
        EXPECT_EQ(results_.size(), 1U);
        return results_.at(0);
    }

    [[nodiscard]] TovrelAppleSignInError error() const { return std::get<TovrelAppleSignInError>(result()); }

private:
    mutable std::mutex mutex_;
    std::vector<TovrelAppleSignInResult> results_;
};

/// A credential as a user's first authorization gives it.
inline AppleIDCredential janesCredential() {
    return AppleIDCredential("jane", Data("header.payload.signature"), PersonNameComponents("Jane", "Doe"),
                             "jane@example.org");
}

/// The error of this type that `failure` is; absent for any other.
template <class E>
std::optional<E> unwrapped(const std::exception_ptr& failure) {
    if (!failure) {
        return std::nullopt;
    }
    try {
        std::rethrow_exception(failure);
    } catch (const E& error) {
        return error;
    } catch (...) {
        return std::nullopt;
    }
}

/// The sign-in service with an accounts service and a user that the test commands.
class SignInServiceTest : public AsyncTest {
protected:
    using Kind = TovrelAppleSignInError::Kind;

    SignInServiceTest() { MainThread::get(); }

    void request(Completions& completions, std::shared_ptr<DefaultTovrelAppleSignInService> service = nullptr) {
        MainThread::get().run([&, target = service ? std::move(service) : service_] {
            target->requestAuthorization(completions.next());
        });
    }

    /// Requests, and waits until the provider has been asked.
    void requestAndHold(Completions& completions) {
        provider_->hold();
        const std::size_t before = provider_->requestCount();
        request(completions);
        ASSERT_TRUE(comesTrue([&] { return provider_->requestCount() == before + 1; }));
    }

    TovrelAppleSignInError errorAfter(AuthorizationCredential credential) {
        Completions completions;
        provider_->answer(std::move(credential));
        request(completions);
        return completions.error();
    }

    std::shared_ptr<testing::FakeTovrelAccountsWebService> accounts_ =
        testing::FakeTovrelAccountsWebService::make(testing::FakeWebRequestExecutor::make());
    Registration<TovrelAccountsWebService> registration_{accounts_};
    std::shared_ptr<testing::InMemoryTovrelAccountsStorage> storage_ = testing::InMemoryTovrelAccountsStorage::make();
    std::shared_ptr<testing::ScriptedAuthorizationProvider> provider_ = testing::ScriptedAuthorizationProvider::make();
    std::shared_ptr<DefaultTovrelAppleSignInService> service_ =
        DefaultTovrelAppleSignInService::make(storage_, provider_);
};

} // namespace tovrel::tests
