#pragma once

#include <TovrelWebServices/AccountScreens/TovrelUserAccountObservers.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <QtCore/QCoreApplication>
#include <QtCore/QThread>
#include <string>
#include <utility>
#include <vector>

namespace tovrel::tests {

/// Writes down what the screens tell their host.
class Observer final : public TovrelUserAccountViewObserver {
public:
    std::vector<std::string> calls;
    std::exception_ptr error;
    std::shared_ptr<ViewController> topViewController;
    bool dismissesItself = true;
    std::function<void(const std::string& call)> onCall;

    void userAccountViewDidDisappear(TovrelUserAccountViewState state) override { note("disappear " + name(state)); }
    void userAccountViewDidAppear(TovrelUserAccountViewState state) override { note("appear " + name(state)); }
    void dismissUserAccountView(std::shared_ptr<ViewController> top) override {
        topViewController = std::move(top);
        note("dismiss");
    }
    bool userAccountViewShouldDismissItself() override {
        note("ask");
        return dismissesItself;
    }
    void signInViewDidFinishAuthorization(Outcome<void> result) override {
        error = result.error();
        note(error ? "failed" : "finished");
    }
    void signInViewDidInitiateAuthorization() override { note("initiated"); }
    void manageAccountViewDidLogout() override { note("logout"); }
    void manageAccountViewDidDeleteAccount() override { note("delete"); }

private:
    static std::string name(TovrelUserAccountViewState state) {
        return state == TovrelUserAccountViewState::signIn ? "signIn" : "manageAccount";
    }

    void note(const std::string& call) {
        EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
        calls.push_back(call);
        if (onCall) {
            const auto react = onCall; // it may end this object
            react(call);
        }
    }
};

} // namespace tovrel::tests
