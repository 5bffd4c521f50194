#include <TovrelWebServices/AccountScreens/ScreenLanguage.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountAlertManageable.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsError.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <QtCore/QThread>
#include <stdexcept>
#include <Support/EventLoop.hpp>
#include <utility>
#include <vector>

namespace tovrel::tests {

namespace {

using Alerts = TovrelUserAccountAlert;
using Style = Alert::Button::Style;

/// Owns an alert, and remembers every one that it was given.
class Manager final : public TovrelUserAccountAlertManageable {
public:
    const std::optional<TovrelUserAccountAlert>& currentAlert() const override { return current_; }

    void setCurrentAlert(std::optional<TovrelUserAccountAlert> alert) override {
        EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
        current_ = std::move(alert);
        if (current_) {
            seen.push_back(*current_);
        }
    }

    std::vector<TovrelUserAccountAlert> seen;

private:
    std::optional<TovrelUserAccountAlert> current_;
};

Async<void> succeed() {
    co_return;
}

Async<void> fail(std::exception_ptr error) {
    std::rethrow_exception(std::move(error));
    co_return;
}

template <class E>
TovrelUserAccountAlertManageable::Operation failingWith(E error) {
    return [failure = std::make_exception_ptr(std::move(error))] { return fail(failure); };
}

class AlertTest : public ScreensTest {
protected:
    void SetUp() override { ScreenLanguage::choose("en"); }
    void TearDown() override {
        ScreensTest::TearDown();
        ScreenLanguage::choose(std::nullopt);
    }

    /// The message of the alert after the operation.
    std::string messageAfter(TovrelUserAccountAlertManageable::Operation operation) {
        const std::size_t before = manager_->seen.size();
        EXPECT_FALSE(getInEventLoop(manager_->performOperation(std::move(operation))).hasValue());
        EXPECT_TRUE(processEventsUntil([&] { return manager_->seen.size() > before; }));
        return manager_->seen.size() > before ? manager_->seen.back().alert.message : "";
    }

    std::shared_ptr<Manager> manager_ = std::make_shared<Manager>();
};

const std::string connectionMessage =
    "Looks like there’s an issue with your internet connection. Please try again later.";
const std::string generalMessage = "Looks like there’s an issue with the service. Please try again later.";

void expectProblem(const Alerts& alert, const std::string& message) {
    EXPECT_EQ(alert.alert.title, "Something Went Wrong");
    EXPECT_EQ(alert.alert.message, message);
    EXPECT_EQ(alert.alert.primaryButton.label, "Okay");
    EXPECT_EQ(alert.alert.primaryButton.style, Style::cancel);
    EXPECT_EQ(alert.alert.primaryButton.action, nullptr);
    EXPECT_FALSE(alert.alert.secondaryButton.has_value());
}

void expectCancelButton(const Alerts& alert) {
    ASSERT_TRUE(alert.alert.secondaryButton.has_value());
    EXPECT_EQ(alert.alert.secondaryButton->label, "Cancel");
    EXPECT_EQ(alert.alert.secondaryButton->style, Style::cancel);
    EXPECT_EQ(alert.alert.secondaryButton->action, nullptr);
}

} // namespace

TEST_F(AlertTest, TellsOfProblemsWithOneButton) {
    expectProblem(Alerts::connectionError(), connectionMessage);
    expectProblem(Alerts::generalServiceError(), generalMessage);
    expectProblem(Alerts::appleSignInError(),
                  "Looks like there’s an issue trying to sign you in. Please try again later.");
}

TEST_F(AlertTest, AsksBeforeLoggingOut) {
    int calls = 0;
    const Alerts alert = Alerts::logout([&] { ++calls; });
    EXPECT_EQ(alert.alert.title, "User Logout");
    EXPECT_EQ(alert.alert.message, "Are you sure you want to log out? You’ll be signed out of your account.");
    EXPECT_EQ(alert.alert.primaryButton.label, "Logout");
    EXPECT_EQ(alert.alert.primaryButton.style, Style::default_);
    expectCancelButton(alert);
    EXPECT_EQ(calls, 0);
    alert.alert.primaryButton.action();
    EXPECT_EQ(calls, 1);
}

TEST_F(AlertTest, AsksBeforeDeletingTheAccount) {
    int calls = 0;
    const Alerts alert = Alerts::deleteAccount([&] { ++calls; });
    EXPECT_EQ(alert.alert.title, "Delete Account");
    EXPECT_EQ(alert.alert.message,
              "Are you sure you want to delete your account? This action is permanent and cannot be undone.");
    EXPECT_EQ(alert.alert.primaryButton.label, "Delete");
    EXPECT_EQ(alert.alert.primaryButton.style, Style::destructive);
    expectCancelButton(alert);
    alert.alert.primaryButton.action();
    EXPECT_EQ(calls, 1);
}

TEST_F(AlertTest, HasAnIdentityOfItsOwnThatCopiesShare) {
    const Alerts first = Alerts::connectionError();
    const Alerts copy = first;
    EXPECT_EQ(first.id, copy.id);
    EXPECT_NE(first.id, Alerts::connectionError().id);
}

TEST_F(AlertTest, ShowsTheLanguageOfItsMoment) {
    const Alerts before = Alerts::connectionError();
    ScreenLanguage::choose("de");
    EXPECT_EQ(before.alert.title, "Something Went Wrong");
    EXPECT_EQ(Alerts::connectionError().alert.title, "Da ist etwas schiefgelaufen");
}

TEST_F(AlertTest, IsOfTheConnectionOnlyWithoutOne) {
    EXPECT_EQ(messageAfter(failingWith(WebServiceError::notConnectedToInternet())), connectionMessage);
    EXPECT_EQ(messageAfter(failingWith(WebServiceError::timedOut())), generalMessage);
    EXPECT_EQ(messageAfter(failingWith(WebServiceError::unexpectedServerStatusCode(503))), generalMessage);
    EXPECT_EQ(messageAfter(failingWith(WebServiceError::unauthorized())), generalMessage);
}

TEST_F(AlertTest, IsOfTheServiceForErrorsOfAnyOtherType) {
    EXPECT_EQ(messageAfter(failingWith(std::runtime_error("no"))), generalMessage);
    EXPECT_EQ(messageAfter(failingWith(7)), generalMessage);
}

TEST_F(AlertTest, IsOfTheServiceForAnOperationThatFailsToStart) {
    EXPECT_EQ(messageAfter([]() -> Async<void> { throw std::runtime_error("no"); }), generalMessage);
}

TEST_F(AlertTest, StaysAsItWasAfterASuccess) {
    const Alerts alert = Alerts::appleSignInError();
    manager_->setCurrentAlert(alert);
    EXPECT_TRUE(getInEventLoop(manager_->performOperation(&succeed)).hasValue());
    ASSERT_TRUE(processEventsUntilIdle());
    ASSERT_TRUE(manager_->currentAlert().has_value());
    EXPECT_EQ(manager_->currentAlert()->id, alert.id);
}

TEST_F(AlertTest, IsANewOneForEachFailure) {
    EXPECT_EQ(messageAfter(failingWith(WebServiceError::timedOut())),
              messageAfter(failingWith(WebServiceError::timedOut())));
    ASSERT_EQ(manager_->seen.size(), 2U);
    EXPECT_NE(manager_->seen[0].id, manager_->seen[1].id);
}

TEST_F(AlertTest, ComesWithTheVeryErrorFromAnyExecutor) {
    auto outcome = getInEventLoop(
        hop(TaskPool::compute(), manager_->performOperation(failingWith(WebServiceError::notConnectedToInternet()))));
    try {
        outcome.value();
        FAIL() << "it succeeded";
    } catch (const WebServiceError& error) {
        EXPECT_EQ(error, WebServiceError::notConnectedToInternet());
    }
    EXPECT_TRUE(processEventsUntil([&] { return manager_->currentAlert().has_value(); }));
}

} // namespace tovrel::tests
