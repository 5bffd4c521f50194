#include "HostScreens.hpp"
#include "Observer.hpp"

#include <TovrelTesting/FakeTovrelAccountsWebService.hpp>
#include <TovrelTesting/FakeWebRequestExecutor.hpp>
#include <TovrelWebServices/AccountScreens/ScreenLanguage.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountManageViewModel.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <QtCore/QVariantMap>
#include <QtTest/QSignalSpy>
#include <string>
#include <Support/EventLoop.hpp>
#include <unordered_set>
#include <vector>

namespace tovrel::tests {

namespace {

using testing::FakeTovrelAccountsCall;
using testing::FakeTovrelAccountsWebService;
using testing::FakeWebRequestExecutor;
using Operation = FakeTovrelAccountsCall::Operation;
using Model = TovrelUserAccountManageViewModel;
using Section = Model::Section;
using Item = Model::Item;
using Calls = std::vector<std::string>;

const std::string connectionMessage =
    "Looks like there’s an issue with your internet connection. Please try again later.";
const std::string generalMessage = "Looks like there’s an issue with the service. Please try again later.";

class ManageViewModelTest : public ScreensTest {
protected:
    void SetUp() override { ScreenLanguage::choose("en"); }
    void TearDown() override {
        accounts_->release();
        ScreensTest::TearDown();
        ScreenLanguage::choose(std::nullopt);
    }

    std::shared_ptr<Model> make() { return Model::make(accounts_, observer_); }

    /// Presses a button of the model's alert, 0 for yes and 1 for cancel.
    static void press(Model& model, int index) { model.pressAlertButton(model.alertId(), index); }

    static void confirmLogout(Model& model) {
        model.onLogoutRowTap();
        press(model, 0);
    }

    static void confirmDeletion(Model& model) {
        model.onDeleteAccountRowTap();
        press(model, 0);
    }

    bool waitForCall(Operation operation, std::size_t count = 1) {
        return processEventsUntil([this, operation, count] { return accounts_->callCount(operation) == count; });
    }

    std::shared_ptr<FakeTovrelAccountsWebService> accounts_ =
        FakeTovrelAccountsWebService::make(FakeWebRequestExecutor::make());
    std::shared_ptr<Observer> observer_ = std::make_shared<Observer>();
};

} // namespace

TEST_F(ManageViewModelTest, BeginsIdleAndWithConsent) {
    const auto model = make();
    EXPECT_TRUE(model->userConsentedToEmailUsage());
    EXPECT_FALSE(model->isLoading());
    EXPECT_FALSE(model->shouldDismiss());
    EXPECT_FALSE(model->currentAlert().has_value());
    EXPECT_EQ(model->tovrelAccountsWebService(), accounts_);
    EXPECT_EQ(model->observer(), observer_);
}

TEST_F(ManageViewModelTest, ListsConsentAndActions) {
    const auto model = make();
    EXPECT_EQ(model->sections(), (std::vector{Section::consent({Item(0, "Use Email for Marketing Purposes")}),
                                              Section::manageAccount({Item(0, "Logout"), Item(1, "Delete Account")})}));
    EXPECT_EQ(model->sections()[0].title(), "Consent");
    EXPECT_EQ(model->sections()[1].title(), "Manage Account");
    EXPECT_EQ(model->sortedSections(), model->sections());
}

TEST_F(ManageViewModelTest, SortsConsentFirst) {
    const Section consent = Section::consent({Item(0, "a")});
    const Section manage = Section::manageAccount({Item(0, "b")});
    const Section secondConsent = Section::consent({Item(0, "c")});
    EXPECT_EQ(Model::sorted({manage, consent, secondConsent}), (std::vector{consent, secondConsent, manage}));
}

TEST_F(ManageViewModelTest, SortsRowsByIndexAndKeepsEqualOnesInOrder) {
    const Section section =
        Section::manageAccount({Item(1, "delete"), Item(0, "first"), Item(-1, "minus"), Item(0, "second")});
    EXPECT_EQ(Model::sortedItems(section),
              (std::vector{Item(-1, "minus"), Item(0, "first"), Item(0, "second"), Item(1, "delete")}));
}

TEST_F(ManageViewModelTest, ComparesAndHashesSectionsByKindAndRows) {
    const Section consent = Section::consent({Item(0, "a")});
    EXPECT_NE(consent, Section::manageAccount({Item(0, "a")}));
    EXPECT_NE(consent, Section::consent({Item(1, "a")}));
    EXPECT_NE(consent, Section::consent({Item(0, "b")}));
    const std::unordered_set<Section> sections{consent, Section::consent({Item(0, "a")}), Section::manageAccount({})};
    EXPECT_EQ(sections.size(), 2U);
    const std::unordered_set<Item> items{Item(0, "a"), Item(0, "a"), Item(1, "a")};
    EXPECT_EQ(items.size(), 2U);
}

TEST_F(ManageViewModelTest, KeepsTheRowsInTheLanguageOfItsBeginning) {
    const auto model = make();
    const QSignalSpy changes(model.get(), &Model::textsChanged);
    ScreenLanguage::choose("de");
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(model->sections()[1].items()[0].title, "Logout");
    EXPECT_EQ(model->sections()[1].title(), "Konto verwalten");
    EXPECT_EQ(make()->sections()[1].items()[0].title, "Abmelden");
}

TEST_F(ManageViewModelTest, DescribesItsSectionsForTheScreen) {
    const QVariantList sections = make()->sectionList();
    ASSERT_EQ(sections.size(), 2);
    EXPECT_EQ(sections[0].toMap()["kind"].toString(), "consent");
    EXPECT_EQ(sections[1].toMap()["kind"].toString(), "manageAccount");
    EXPECT_EQ(sections[1].toMap()["title"].toString(), "Manage Account");
    const QVariantList rows = sections[1].toMap()["items"].toList();
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[1].toMap()["index"].toInt(), 1);
    EXPECT_EQ(rows[1].toMap()["title"].toString(), "Delete Account");
}

TEST_F(ManageViewModelTest, AsksBeforeItLogsOut) {
    const auto model = make();
    model->onLogoutRowTap();
    EXPECT_EQ(model->alertTitle(), "User Logout");
    EXPECT_FALSE(model->isLoading());
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_TRUE(accounts_->calls().empty());
}

TEST_F(ManageViewModelTest, CallsNothingWhenTheUserCancels) {
    const auto model = make();
    model->onLogoutRowTap();
    press(*model, 1);
    EXPECT_FALSE(model->currentAlert().has_value());
    model->onDeleteAccountRowTap();
    press(*model, 1);
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_TRUE(accounts_->calls().empty());
    EXPECT_TRUE(observer_->calls.empty());
}

TEST_F(ManageViewModelTest, LogsOutAndCloses) {
    const auto model = make();
    accounts_->hold();
    model->onLogoutRowTap();
    press(*model, 0);
    EXPECT_FALSE(model->currentAlert().has_value());
    EXPECT_FALSE(model->isLoading());
    ASSERT_TRUE(waitForCall(Operation::logout));
    EXPECT_TRUE(model->isLoading());
    EXPECT_TRUE(observer_->calls.empty());
    accounts_->release();
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_FALSE(model->isLoading());
    EXPECT_TRUE(model->shouldDismiss());
    EXPECT_EQ(observer_->calls, (Calls{"logout", "ask"}));
    ASSERT_EQ(accounts_->calls().size(), 1U);
    EXPECT_EQ(accounts_->calls()[0].reason, TovrelAccountsLogoutReason::userInitiated());
}

TEST_F(ManageViewModelTest, StopsLoadingBeforeItAsksHowToClose) {
    const auto model = make();
    std::vector<bool> loadingWhenAsked;
    observer_->onCall = [&](const std::string& call) {
        if (call == "ask") {
            loadingWhenAsked.push_back(model->isLoading());
        }
    };
    confirmLogout(*model);
    ASSERT_TRUE(processEventsUntil([this] { return !observer_->calls.empty() && observer_->calls.back() == "ask"; }));
    EXPECT_EQ(loadingWhenAsked, std::vector<bool>{false});
}

TEST_F(ManageViewModelTest, DeletesTheAccountAndCloses) {
    const auto model = make();
    model->onDeleteAccountRowTap();
    EXPECT_EQ(model->alertTitle(), "Delete Account");
    press(*model, 0);
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(accounts_->callCount(Operation::deleteAccount), 1U);
    EXPECT_EQ(observer_->calls, (Calls{"delete", "ask"}));
    EXPECT_TRUE(model->shouldDismiss());
}

TEST_F(ManageViewModelTest, ClosesItselfWithoutAnObserver) {
    observer_.reset();
    const auto model = make();
    confirmDeletion(*model);
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_TRUE(model->shouldDismiss());
}

TEST_F(ManageViewModelTest, LeavesClosingToTheHostThatWantsIt) {
    const auto application = std::make_shared<HostApplication>();
    const Registration<Application> registered(application);
    observer_->dismissesItself = false;
    const auto model = make();
    confirmLogout(*model);
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(observer_->calls, (Calls{"logout", "ask", "dismiss"}));
    EXPECT_EQ(observer_->topViewController, application->screen);
    EXPECT_FALSE(model->shouldDismiss());
}

TEST_F(ManageViewModelTest, ShowsAMissingConnection) {
    accounts_->answerLogout([](TovrelAccountsLogoutReason) { throw WebServiceError::notConnectedToInternet(); });
    const auto model = make();
    confirmLogout(*model);
    ASSERT_TRUE(processEventsUntil([&] { return model->currentAlert().has_value(); }));
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(model->alertMessage().toStdString(), connectionMessage);
    EXPECT_FALSE(model->isLoading());
    EXPECT_FALSE(model->shouldDismiss());
    EXPECT_TRUE(observer_->calls.empty());
}

TEST_F(ManageViewModelTest, ShowsAnyOtherFailureAsOneOfTheService) {
    accounts_->answerDeleteAccount([] { throw WebServiceError::internalServerError(); });
    const auto model = make();
    confirmDeletion(*model);
    ASSERT_TRUE(processEventsUntil([&] { return model->currentAlert().has_value(); }));
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(model->alertMessage().toStdString(), generalMessage);
    EXPECT_FALSE(model->isLoading());
    EXPECT_FALSE(model->shouldDismiss());
    EXPECT_TRUE(observer_->calls.empty());
}

TEST_F(ManageViewModelTest, PassesTheFailureOfAnOperationOn) {
    accounts_->answerLogout([](TovrelAccountsLogoutReason) { throw WebServiceError::timedOut(); });
    const auto model = make();
    EXPECT_THROW(getInEventLoop(model->onLogoutButtonTap()), WebServiceError);
    EXPECT_FALSE(model->currentAlert().has_value());
    EXPECT_TRUE(observer_->calls.empty());
}

TEST_F(ManageViewModelTest, TellsTheObserverOnTheMainThreadWhereverItsOperationsRun) {
    const auto model = make();
    getInEventLoop(hop(TaskPool::compute(), model->onLogoutButtonTap()));
    getInEventLoop(hop(TaskPool::compute(), model->onDeleteAccountButtonTap()));
    EXPECT_EQ(observer_->calls, (Calls{"logout", "delete"}));
    EXPECT_FALSE(model->shouldDismiss());
}

TEST_F(ManageViewModelTest, RunsTwoQuickConfirmationsBoth) {
    accounts_->hold();
    const auto model = make();
    model->onLogoutRowTap();
    const auto confirm = model->currentAlert()->alert.primaryButton.action;
    confirm();
    confirm();
    ASSERT_TRUE(waitForCall(Operation::logout, 2));
    EXPECT_TRUE(model->isLoading());
    accounts_->release();
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_FALSE(model->isLoading());
    EXPECT_TRUE(model->shouldDismiss());
    EXPECT_EQ(observer_->calls.size(), 4U);
}

TEST_F(ManageViewModelTest, TakesASecondPressOfAnAlertThatHasClosedForNothing) {
    const auto model = make();
    model->onLogoutRowTap();
    const QString id = model->alertId();
    model->pressAlertButton(id, 0);
    model->pressAlertButton(id, 0);
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(accounts_->callCount(Operation::logout), 1U);
}

TEST_F(ManageViewModelTest, TakesAPressOfAnAlertThatWasReplacedForNothing) {
    const auto model = make();
    model->onLogoutRowTap();
    const QString logout = model->alertId();
    model->onDeleteAccountRowTap();
    const QString deletion = model->alertId();
    model->pressAlertButton(logout, 0);
    model->pressAlertButton(deletion, 2);
    EXPECT_TRUE(model->alertId().isEmpty());
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_TRUE(accounts_->calls().empty());
}

TEST_F(ManageViewModelTest, DoesNotKeepItselfThroughItsAlert) {
    auto model = make();
    model->onLogoutRowTap();
    const auto confirm = model->currentAlert()->alert.primaryButton.action;
    const std::weak_ptr<Model> weak = model;
    model.reset();
    EXPECT_TRUE(weak.expired());
    confirm();
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_TRUE(accounts_->calls().empty());
}

TEST_F(ManageViewModelTest, EndsItsOperationWhenTheScreenHasGone) {
    accounts_->hold();
    auto model = make();
    const std::weak_ptr<Model> weak = model;
    confirmDeletion(*model);
    ASSERT_TRUE(waitForCall(Operation::deleteAccount));
    model.reset();
    accounts_->release();
    ASSERT_TRUE(processEventsUntil([&] { return weak.expired(); }));
    EXPECT_EQ(observer_->calls, (Calls{"delete", "ask"}));
}

TEST_F(ManageViewModelTest, TakesAnObserverThatEndsInTheMiddle) {
    for (const std::string last : {"logout", "ask"}) {
        observer_ = std::make_shared<Observer>();
        observer_->dismissesItself = false;
        observer_->onCall = [&](const std::string& call) {
            if (call == last) {
                observer_.reset();
            }
        };
        const auto model = make();
        confirmLogout(*model);
        ASSERT_TRUE(processEventsUntilIdle());
        EXPECT_EQ(observer_, nullptr);
        EXPECT_FALSE(model->isLoading());
        EXPECT_EQ(model->shouldDismiss(), last == "logout") << last;
    }
}

TEST_F(ManageViewModelTest, TakesAnObserverThatEndsWhileTheServiceWorks) {
    accounts_->hold();
    const auto model = make();
    confirmLogout(*model);
    ASSERT_TRUE(waitForCall(Operation::logout));
    observer_.reset();
    accounts_->release();
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_TRUE(model->shouldDismiss());
}

TEST_F(ManageViewModelTest, TellsOfEachAppearance) {
    const auto model = make();
    model->onAppear();
    model->onDisappear();
    EXPECT_EQ(observer_->calls, (Calls{"appear manageAccount", "disappear manageAccount"}));
}

} // namespace tovrel::tests
