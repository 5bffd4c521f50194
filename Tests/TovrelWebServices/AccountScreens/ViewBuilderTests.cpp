#include "HostScreens.hpp"
#include "Observer.hpp"
#include "ScriptedSignInService.hpp"

#include <TovrelTesting/FakeTovrelAccountsWebService.hpp>
#include <TovrelTesting/FakeWebRequestExecutor.hpp>
#include <TovrelWebServices/AccountScreens/Private/AccountViews.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountView.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountViewBuilder.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtTest/QSignalSpy>
#include <string>
#include <Support/EventLoop.hpp>
#include <utility>
#include <vector>

namespace tovrel::tests {

namespace {

using testing::FakeTovrelAccountsCall;
using testing::FakeTovrelAccountsWebService;
using testing::FakeWebRequestExecutor;
using Builder = TovrelUserAccountViewBuilder;
using Configuration = TovrelUserAccountConfiguration;
using LoadingType = Configuration::LoadingType;
using Kind = TovrelUserAccountView::LoadingState::Kind;
using Operation = FakeTovrelAccountsCall::Operation;

/// A view whose item has this name.
AnyView named(std::string name) {
    return AnyView([name = std::move(name)](QQmlEngine&, QQuickItem&) {
        auto* item = new QQuickItem();
        item->setObjectName(QString::fromStdString(name));
        return item;
    });
}

/// Draws names, and remembers what it was to draw.
class NamedViews final : public AccountViews {
public:
    mutable std::vector<std::shared_ptr<TovrelUserAccountSignInViewModel>> signInModels;
    mutable std::vector<std::shared_ptr<TovrelUserAccountManageViewModel>> manageModels;
    mutable std::vector<TovrelUserAccountLoadingView> loadingViews;
    mutable std::vector<AnyView> hosted;
    std::shared_ptr<ViewController> controller = std::make_shared<HostViewController>();

    AnyView loading(const TovrelUserAccountLoadingView& view) const override {
        loadingViews.push_back(view);
        return named("loading");
    }
    AnyView signIn(const TovrelUserAccountSignInView& view) const override {
        signInModels.push_back(view.viewModel);
        return named("signIn");
    }
    AnyView manage(const TovrelUserAccountManageView& view) const override {
        manageModels.push_back(view.viewModel);
        return named("manage");
    }
    AnyView account(std::shared_ptr<TovrelUserAccountView> /*view*/) const override { return named("account"); }
    std::shared_ptr<ViewController> hosting(AnyView view) const override {
        hosted.push_back(std::move(view));
        return controller;
    }
};

class ViewBuilderTest : public ScreensTest {
protected:
    ViewBuilderTest() : previous_(AccountViews::use(views_)) {}
    ~ViewBuilderTest() override { AccountViews::use(previous_); }

    void TearDown() override {
        accounts_->release();
        ScreensTest::TearDown();
    }

    std::shared_ptr<TovrelUserAccountView> accountView() {
        return getInEventLoop(
            builder_.userAccountView(LoadingType::default_(), signInConfig_, manageConfig_, observer_));
    }

    std::string nameOf(const AnyView& view) {
        QQuickItem parent;
        const QQuickItem* item = view.make(engine_, parent);
        return item == nullptr ? "" : item->objectName().toStdString();
    }

    QQmlEngine engine_;
    std::shared_ptr<NamedViews> views_ = std::make_shared<NamedViews>();
    std::shared_ptr<const AccountViews> previous_;
    std::shared_ptr<FakeTovrelAccountsWebService> accounts_ =
        FakeTovrelAccountsWebService::make(FakeWebRequestExecutor::make());
    std::shared_ptr<Observer> observer_ = std::make_shared<Observer>();
    std::shared_ptr<Configuration::SignIn> signInConfig_ = Configuration::SignIn::make();
    std::shared_ptr<Configuration::ManageAccount> manageConfig_ = Configuration::ManageAccount::make();
    Builder builder_{TovrelUserAccountsType::appleSignIn, accounts_};
};

} // namespace

TEST_F(ViewBuilderTest, AsksForTheAppleAccount) {
    EXPECT_TRUE(getInEventLoop(builder_.isLoggedIn()));
    accounts_->answerIsLoggedIn([](TovrelAccountsType) { return false; });
    EXPECT_FALSE(getInEventLoop(builder_.isLoggedIn()));
    ASSERT_EQ(accounts_->calls().size(), 2U);
    EXPECT_EQ(accounts_->calls()[0].type, TovrelAccountsType::appleSignIn);
}

TEST_F(ViewBuilderTest, TakesAServiceThatCannotTellForNoLogin) {
    accounts_->answerIsLoggedIn([](TovrelAccountsType) -> bool { throw WebServiceError::timedOut(); });
    EXPECT_FALSE(getInEventLoop(builder_.isLoggedIn()));
}

TEST_F(ViewBuilderTest, MakesASignInScreenForTheUserAtHand) {
    for (const bool hasSignedUp : {true, false}) {
        accounts_->answerUserHasSignedUp([=](TovrelAccountsType) { return hasSignedUp; });
        // From the pool: the model can only be made on the main actor.
        const auto view = getInEventLoop(hop(TaskPool::compute(), builder_.signInView(signInConfig_, observer_)));
        using ViewState = TovrelUserAccountSignInViewModel::ViewState;
        EXPECT_EQ(view.viewModel->viewState(), hasSignedUp ? ViewState::signIn : ViewState::signUp);
        EXPECT_EQ(view.viewModel->config(), signInConfig_);
        EXPECT_EQ(view.viewModel->observer(), observer_);
        EXPECT_EQ(view.viewModel->tovrelAccountsWebService(), accounts_);
        EXPECT_EQ(nameOf(view.body()), "signIn");
    }
    EXPECT_EQ(accounts_->calls()[0].type, TovrelAccountsType::appleSignIn);
}

TEST_F(ViewBuilderTest, MakesAManageScreen) {
    const auto view = builder_.manageAccountView(manageConfig_, observer_);
    EXPECT_EQ(view.config, manageConfig_);
    EXPECT_EQ(view.viewModel->observer(), observer_);
    EXPECT_EQ(nameOf(view.body()), "manage");
    EXPECT_EQ(views_->manageModels.back(), view.viewModel);
    EXPECT_TRUE(accounts_->calls().empty());
}

TEST_F(ViewBuilderTest, TakesNoObserver) {
    EXPECT_EQ(builder_.manageAccountView(manageConfig_, {}).viewModel->observer(), nullptr);
    EXPECT_EQ(getInEventLoop(builder_.signInView(signInConfig_, {})).viewModel->observer(), nullptr);
}

TEST_F(ViewBuilderTest, PutsEachScreenIntoAScreenOfTheHosts) {
    EXPECT_EQ(getInEventLoop(builder_.signInViewController(signInConfig_, observer_)), views_->controller);
    EXPECT_EQ(builder_.manageAccountViewController(manageConfig_, observer_), views_->controller);
    EXPECT_EQ(getInEventLoop(
                  builder_.userAccountViewController(LoadingType::default_(), signInConfig_, manageConfig_, observer_)),
              views_->controller);
    ASSERT_EQ(views_->hosted.size(), 3U);
    EXPECT_EQ(nameOf(views_->hosted[0]), "signIn");
    EXPECT_EQ(nameOf(views_->hosted[1]), "manage");
    EXPECT_EQ(nameOf(views_->hosted[2]), "account");
}

TEST_F(ViewBuilderTest, ChoosesTheLoadingViewByItsType) {
    EXPECT_EQ(nameOf(loadingView(LoadingType::default_())), "loading");
    EXPECT_EQ(nameOf(loadingView(LoadingType::customised(Color::red(), Color::green()))), "loading");
    EXPECT_EQ(nameOf(loadingView(LoadingType::custom(named("mine")))), "mine");
    ASSERT_EQ(views_->loadingViews.size(), 2U);
    EXPECT_EQ(views_->loadingViews[0].backgroundColor, Color(ColorResource::accountUserSignInLoadingBackground()));
    EXPECT_EQ(views_->loadingViews[0].tintColor, Color::primary());
    EXPECT_EQ(views_->loadingViews[1].backgroundColor, Color::red());
    EXPECT_EQ(views_->loadingViews[1].tintColor, Color::green());
}

class AccountViewTest : public ViewBuilderTest {};

TEST_F(AccountViewTest, BeginsWithTheLoadingView) {
    const auto view = accountView();
    EXPECT_EQ(view->loadingState().kind(), Kind::loading);
    EXPECT_EQ(nameOf(view->content()), "loading");
    EXPECT_EQ(nameOf(view->body()), "account");
    EXPECT_TRUE(accounts_->calls().empty());
}

TEST_F(AccountViewTest, GoesStraightToTheManageScreenWhenLoggedIn) {
    const auto view = accountView();
    const QSignalSpy changes(view.get(), &TovrelUserAccountView::contentChanged);
    view->onAppear();
    EXPECT_EQ(view->loadingState().kind(), Kind::loading);
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(view->loadingState().kind(), Kind::finished);
    EXPECT_TRUE(view->loadingState().isLoggedIn());
    EXPECT_EQ(nameOf(view->content()), "manage");
    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(views_->signInModels.empty());
    ASSERT_EQ(views_->manageModels.size(), 1U);
    EXPECT_EQ(views_->manageModels[0]->observer(), observer_);
    EXPECT_EQ(accounts_->callCount(Operation::userHasSignedUp), 0U);
}

TEST_F(AccountViewTest, ShowsTheSignInScreenOnceItIsMade) {
    accounts_->answerIsLoggedIn([](TovrelAccountsType) { return false; });
    const auto view = accountView();
    std::vector<std::string> atFinished;
    QObject::connect(view.get(), &TovrelUserAccountView::loadingStateChanged, view.get(),
                     [&] { atFinished.push_back(nameOf(view->content())); });
    view->onAppear();
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(view->loadingState().kind(), Kind::finished);
    EXPECT_FALSE(view->loadingState().isLoggedIn());
    EXPECT_EQ(atFinished, std::vector<std::string>{"loading"});
    EXPECT_EQ(nameOf(view->content()), "signIn");
    ASSERT_EQ(views_->signInModels.size(), 1U);
    EXPECT_EQ(views_->signInModels[0]->observer(), observer_);
    EXPECT_EQ(views_->signInModels[0]->config(), signInConfig_);
    EXPECT_TRUE(views_->manageModels.empty());
}

TEST_F(AccountViewTest, KeepsTheLoadingViewWhenTheServiceCannotTell) {
    accounts_->answerIsLoggedIn([](TovrelAccountsType) -> bool { throw WebServiceError::notConnectedToInternet(); });
    const auto view = accountView();
    const QSignalSpy changes(view.get(), &TovrelUserAccountView::contentChanged);
    view->onAppear();
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(view->loadingState().kind(), Kind::failed);
    EXPECT_THROW(std::rethrow_exception(view->loadingState().error()), WebServiceError);
    EXPECT_EQ(nameOf(view->content()), "loading");
    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(accounts_->callCount(Operation::userHasSignedUp), 0U);
}

TEST_F(AccountViewTest, KeepsTheSignInScreenWhenALaterQueryFails) {
    accounts_->answerIsLoggedIn([](TovrelAccountsType) { return false; });
    const auto view = accountView();
    view->onAppear();
    ASSERT_TRUE(processEventsUntilIdle());
    accounts_->answerIsLoggedIn([](TovrelAccountsType) -> bool { throw WebServiceError::timedOut(); });
    view->onAppear();
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(view->loadingState().kind(), Kind::failed);
    EXPECT_EQ(nameOf(view->content()), "signIn");
}

TEST_F(AccountViewTest, AsksAnewAtEachAppearance) {
    const auto view = accountView();
    view->onAppear();
    ASSERT_TRUE(processEventsUntilIdle());
    accounts_->answerIsLoggedIn([](TovrelAccountsType) { return false; });
    view->onAppear();
    EXPECT_EQ(nameOf(view->content()), "manage");
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(nameOf(view->content()), "signIn");
    accounts_->answerIsLoggedIn([](TovrelAccountsType) { return true; });
    view->onAppear();
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(nameOf(view->content()), "manage");
    ASSERT_EQ(views_->manageModels.size(), 2U);
    EXPECT_NE(views_->manageModels[0], views_->manageModels[1]);
}

TEST_F(AccountViewTest, ShowsTheLoadingViewThatItIsGiven) {
    const auto view = getInEventLoop(
        builder_.userAccountView(LoadingType::custom(named("mine")), signInConfig_, manageConfig_, observer_));
    EXPECT_EQ(nameOf(view->content()), "mine");
}

TEST_F(AccountViewTest, EndsWithItsDecisionWhenItsWindowHasClosed) {
    accounts_->hold();
    auto view = accountView();
    const std::weak_ptr<TovrelUserAccountView> weak = view;
    view->onAppear();
    ASSERT_TRUE(processEventsUntil([this] { return accounts_->callCount(Operation::isLoggedIn) == 1; }));
    view.reset();
    observer_.reset();
    accounts_->release();
    ASSERT_TRUE(processEventsUntil([&] { return weak.expired(); }));
}

} // namespace tovrel::tests
