#include "HostScreens.hpp"
#include "Observer.hpp"
#include "ScriptedSignInService.hpp"

#include <TovrelTesting/FakeTovrelAccountsWebService.hpp>
#include <TovrelTesting/FakeWebRequestExecutor.hpp>
#include <TovrelWebServices/AccountScreens/CurrentAppearance.hpp>
#include <TovrelWebServices/AccountScreens/ScreenLanguage.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountSignInViewModel.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <QtTest/QSignalSpy>
#include <stdexcept>
#include <string>
#include <Support/EventLoop.hpp>
#include <thread>
#include <vector>

namespace tovrel::tests {

namespace {

using testing::FakeTovrelAccountsWebService;
using testing::FakeWebRequestExecutor;
using Model = TovrelUserAccountSignInViewModel;
using ViewState = Model::ViewState;
using SignIn = TovrelUserAccountConfiguration::SignIn;
using ButtonConfig = TovrelAppleSignInButtonConfig;
using Calls = std::vector<std::string>;

TovrelAppleSignInError cancelled() {
    return TovrelAppleSignInError::authorizeApple(std::make_exception_ptr(std::runtime_error("cancelled")));
}

class SignInViewModelTest : public ScreensTest {
protected:
    void SetUp() override { ScreenLanguage::choose("en"); }
    void TearDown() override {
        ScreensTest::TearDown();
        ScreenLanguage::choose(std::nullopt);
        CurrentAppearance::choose(std::nullopt);
    }

    std::shared_ptr<Model> make(bool userHasSignedUp) {
        return Model::make(accounts_, userHasSignedUp, config_, observer_);
    }

    const ButtonConfig& configOf(const TovrelSignInButtonRepresentable& view) {
        return *view.button->appleButton()->config();
    }

    std::shared_ptr<FakeTovrelAccountsWebService> accounts_ =
        FakeTovrelAccountsWebService::make(FakeWebRequestExecutor::make());
    std::shared_ptr<ScriptedSignInService> service_ = std::make_shared<ScriptedSignInService>();
    Registration<TovrelAppleSignInService> registration_{service_};
    std::shared_ptr<SignIn> config_ = SignIn::make();
    std::shared_ptr<Observer> observer_ = std::make_shared<Observer>();
};

} // namespace

TEST_F(SignInViewModelTest, BeginsIdleAndWithConsent) {
    const auto model = make(false);
    EXPECT_TRUE(model->userConsentedToEmailUsage());
    EXPECT_FALSE(model->isLoading());
    EXPECT_FALSE(model->shouldDismiss());
    EXPECT_FALSE(model->currentAlert().has_value());
    EXPECT_EQ(model->config(), config_);
    EXPECT_EQ(model->tovrelAccountsWebService(), accounts_);
    EXPECT_EQ(model->observer(), observer_);
}

TEST_F(SignInViewModelTest, GreetsANewUser) {
    const auto model = make(false);
    EXPECT_EQ(model->viewState(), ViewState::signUp);
    EXPECT_EQ(model->titleText(), "Create Your Account");
    EXPECT_EQ(model->descriptionText().toStdString(),
              "Create your account to unlock a seamless experience. Get personalized recommendations, exclusive "
              "offers, and faster checkouts—all in one place.");
    EXPECT_EQ(model->consentText(), "Send me emails with the latest offers and promotions.");
    EXPECT_EQ(configOf(model->buildSignInButton()).buttonType(), ButtonConfig::ButtonType::signUp);
}

TEST_F(SignInViewModelTest, GreetsAReturningUser) {
    const auto model = make(true);
    EXPECT_EQ(model->viewState(), ViewState::signIn);
    EXPECT_EQ(model->titleText(), "Sign in to Your Account");
    EXPECT_EQ(model->descriptionText(),
              "Sign in to access your account, manage preferences, and enjoy a personalized experience.");
    EXPECT_TRUE(model->consentText().isEmpty());
    EXPECT_EQ(configOf(model->buildSignInButton()).buttonType(), ButtonConfig::ButtonType::signIn);
}

TEST_F(SignInViewModelTest, ReadsItsTextsAnewInAnotherLanguage) {
    const auto model = make(true);
    const QSignalSpy changes(model.get(), &Model::textsChanged);
    ScreenLanguage::choose("fr");
    EXPECT_EQ(model->titleText(), "Connectez-vous à votre compte");
    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(model->consentText().isEmpty());
}

TEST_F(SignInViewModelTest, TakesOnlyTheStyleOfAConfiguredButton) {
    const auto button = ButtonConfig::make(ButtonConfig::Style::white, ButtonConfig::ButtonType::continue_, 3);
    config_->signInButtonType(TovrelSignInButtonType::apple(button));
    for (const bool userHasSignedUp : {true, false}) {
        const auto view = make(userHasSignedUp)->buildSignInButton();
        EXPECT_EQ(configOf(view).style(), ButtonConfig::Style::white);
        EXPECT_EQ(configOf(view).buttonType(),
                  userHasSignedUp ? ButtonConfig::ButtonType::signIn : ButtonConfig::ButtonType::signUp);
        EXPECT_EQ(configOf(view).cornerRadius(), 12);
        EXPECT_EQ(view.height, 50);
    }
    config_->signInButtonCornerRadius(20);
    EXPECT_EQ(configOf(make(true)->buildSignInButton()).cornerRadius(), 20);
}

TEST_F(SignInViewModelTest, LoadsWhileAnAuthorizationRuns) {
    const auto model = make(true);
    const auto view = model->buildSignInButton();
    view.button->appleButton()->tap();
    EXPECT_TRUE(model->isLoading());
    EXPECT_EQ(observer_->calls, Calls{"initiated"});
    EXPECT_EQ(service_->requests.size(), 1U);
}

TEST_F(SignInViewModelTest, TellsOfAFailureBeforeItShowsIt) {
    const auto model = make(true);
    const auto view = model->buildSignInButton();
    view.button->appleButton()->tap();
    service_->end(cancelled());
    EXPECT_EQ(observer_->calls, (Calls{"initiated", "failed"}));
    EXPECT_TRUE(model->isLoading());
    EXPECT_FALSE(model->currentAlert().has_value());

    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_FALSE(model->isLoading());
    ASSERT_TRUE(model->currentAlert().has_value());
    EXPECT_EQ(model->alertMessage().toStdString(),
              "Looks like there’s an issue trying to sign you in. Please try again later.");
    EXPECT_FALSE(model->shouldDismiss());
    EXPECT_THROW(std::rethrow_exception(observer_->error), TovrelAppleSignInError);
}

TEST_F(SignInViewModelTest, StopsLoadingBeforeTheAlertComes) {
    const auto model = make(true);
    const auto view = model->buildSignInButton();
    std::vector<bool> loadingAtAlert;
    QObject::connect(model.get(), &Model::currentAlertChanged, model.get(),
                     [&] { loadingAtAlert.push_back(model->isLoading()); });
    view.button->appleButton()->tap();
    service_->end(TovrelAppleSignInError::identityTokenNotFound());
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(loadingAtAlert, std::vector<bool>{false});
}

TEST_F(SignInViewModelTest, StopsLoadingBeforeItAsksHowToClose) {
    const auto model = make(true);
    const auto view = model->buildSignInButton();
    std::vector<bool> loadingWhenAsked;
    observer_->onCall = [&](const std::string& call) {
        if (call == "ask") {
            loadingWhenAsked.push_back(model->isLoading());
        }
    };
    view.button->appleButton()->tap();
    service_->end(FakeTovrelAccountsWebService::exampleToken());
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(loadingWhenAsked, std::vector<bool>{false});
}

TEST_F(SignInViewModelTest, ClosesItselfAfterASuccessWhenTheObserverWantsSo) {
    const auto model = make(true);
    const auto view = model->buildSignInButton();
    view.button->appleButton()->tap();
    service_->end(FakeTovrelAccountsWebService::exampleToken());
    EXPECT_EQ(observer_->calls, (Calls{"initiated", "finished"}));
    EXPECT_TRUE(model->isLoading());
    EXPECT_FALSE(model->shouldDismiss());
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(observer_->calls, (Calls{"initiated", "finished", "ask"}));
    EXPECT_FALSE(model->isLoading());
    EXPECT_TRUE(model->shouldDismiss());
    EXPECT_FALSE(model->currentAlert().has_value());
}

TEST_F(SignInViewModelTest, LeavesClosingToTheHostThatWantsIt) {
    const auto application = std::make_shared<HostApplication>();
    const Registration<Application> registered(application);
    const auto model = make(true);
    const auto view = model->buildSignInButton();
    observer_->dismissesItself = false;
    view.button->appleButton()->tap();
    service_->end(FakeTovrelAccountsWebService::exampleToken());
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(observer_->calls, (Calls{"initiated", "finished", "ask", "dismiss"}));
    EXPECT_EQ(observer_->topViewController, application->screen);
    EXPECT_FALSE(model->shouldDismiss());
}

TEST_F(SignInViewModelTest, GivesTheHostNoScreenWhereNoneCanBeFound) {
    const auto model = make(true);
    const auto view = model->buildSignInButton();
    observer_->dismissesItself = false;
    observer_->topViewController = std::make_shared<HostViewController>();
    view.button->appleButton()->tap();
    service_->end(FakeTovrelAccountsWebService::exampleToken());
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(observer_->calls.back(), "dismiss");
    EXPECT_EQ(observer_->topViewController, nullptr);
}

TEST_F(SignInViewModelTest, ClosesItselfWithoutAnObserver) {
    observer_.reset();
    const auto model = make(true);
    const auto view = model->buildSignInButton();
    view.button->appleButton()->tap();
    service_->end(FakeTovrelAccountsWebService::exampleToken());
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_TRUE(model->shouldDismiss());
}

TEST_F(SignInViewModelTest, DoesNotKeepItsObserver) {
    const auto model = make(true);
    const std::weak_ptr<Observer> weak = observer_;
    observer_.reset();
    EXPECT_TRUE(weak.expired());
    EXPECT_EQ(model->observer(), nullptr);
    model->onAppear();
    model->onDisappear();
}

TEST_F(SignInViewModelTest, TakesAnObserverThatEndsInTheMiddle) {
    for (const std::string last : {"initiated", "finished", "ask"}) {
        observer_ = std::make_shared<Observer>();
        observer_->dismissesItself = false;
        observer_->onCall = [&](const std::string& call) {
            if (call == last) {
                observer_.reset();
            }
        };
        const auto model = make(true);
        const auto view = model->buildSignInButton();
        view.button->appleButton()->tap();
        service_->end(FakeTovrelAccountsWebService::exampleToken());
        ASSERT_TRUE(processEventsUntilIdle());
        EXPECT_EQ(observer_, nullptr);
        EXPECT_FALSE(model->isLoading());
        EXPECT_EQ(model->shouldDismiss(), last != "ask") << last;
    }
}

TEST_F(SignInViewModelTest, ClosesOnItsButtonWithoutAskingTheObserver) {
    const auto model = make(true);
    observer_->dismissesItself = false;
    const QSignalSpy dismissals(model.get(), &Model::shouldDismissChanged);
    model->onCloseButtonTap();
    model->onCloseButtonTap();
    EXPECT_TRUE(model->shouldDismiss());
    EXPECT_EQ(dismissals.count(), 1);
    EXPECT_TRUE(observer_->calls.empty());
}

TEST_F(SignInViewModelTest, TellsOfEachAppearance) {
    const auto model = make(true);
    model->onAppear();
    model->onDisappear();
    model->onAppear();
    EXPECT_EQ(observer_->calls, (Calls{"appear signIn", "disappear signIn", "appear signIn"}));
}

TEST_F(SignInViewModelTest, OnlyRemembersTheConsent) {
    const auto model = make(false);
    const QSignalSpy changes(model.get(), &Model::userConsentedToEmailUsageChanged);
    model->setUserConsentedToEmailUsage(false);
    model->setUserConsentedToEmailUsage(false);
    EXPECT_FALSE(model->userConsentedToEmailUsage());
    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(accounts_->calls().empty());
    EXPECT_TRUE(make(false)->userConsentedToEmailUsage());
}

TEST_F(SignInViewModelTest, ListensToEveryButtonThatItHasMade) {
    const auto model = make(true);
    const auto first = model->buildSignInButton();
    const auto second = model->buildSignInButton();
    first.button->appleButton()->tap();
    second.button->appleButton()->tap();
    EXPECT_EQ(observer_->calls, (Calls{"initiated", "initiated"}));
}

TEST_F(SignInViewModelTest, IsNotKeptByItsSubscriptions) {
    auto model = make(true);
    const std::weak_ptr<Model> weak = model;
    const auto view = model->buildSignInButton();
    view.button->appleButton()->tap();
    model.reset();
    EXPECT_TRUE(weak.expired());
    service_->end(FakeTovrelAccountsWebService::exampleToken());
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(observer_->calls, Calls{"initiated"});
}

TEST_F(SignInViewModelTest, HearsNothingOfAButtonThatHasGone) {
    const auto model = make(true);
    {
        const auto view = model->buildSignInButton();
        view.button->appleButton()->tap();
    }
    service_->end(FakeTovrelAccountsWebService::exampleToken());
    ASSERT_TRUE(processEventsUntilIdle());
    EXPECT_EQ(observer_->calls, Calls{"initiated"});
}

TEST_F(SignInViewModelTest, EndsOnTheMainThreadWhoeverLetsGoOfItLast) {
    auto model = make(true);
    QThread* endedOn = nullptr;
    QObject::connect(model.get(), &QObject::destroyed, model.get(), [&] { endedOn = QThread::currentThread(); });
    std::jthread([last = std::move(model)]() mutable { last.reset(); }).join();
    ASSERT_TRUE(processEventsUntil([&] { return endedOn != nullptr; }));
    EXPECT_EQ(endedOn, QThread::currentThread());
}

TEST_F(SignInViewModelTest, ClosesAnAlertOnlyWhileItIsTheCurrentOne) {
    const auto model = make(true);
    model->setCurrentAlert(TovrelUserAccountAlert::connectionError());
    const QString first = model->alertId();
    EXPECT_FALSE(first.isEmpty());
    model->setCurrentAlert(TovrelUserAccountAlert::connectionError());
    const QString second = model->alertId();
    EXPECT_NE(first, second);
    model->closeAlert(first);
    EXPECT_EQ(model->alertId(), second);
    model->closeAlert(second);
    EXPECT_FALSE(model->currentAlert().has_value());
    EXPECT_TRUE(model->alertId().isEmpty());
    EXPECT_TRUE(model->alertButtons().isEmpty());
    model->closeAlert(QString());
}

TEST_F(SignInViewModelTest, DescribesItsAlertForTheScreen) {
    const auto model = make(true);
    const QSignalSpy changes(model.get(), &Model::currentAlertChanged);
    model->setCurrentAlert(TovrelUserAccountAlert::deleteAccount([] {}));
    EXPECT_EQ(model->alertTitle(), "Delete Account");
    const QVariantList buttons = model->alertButtons();
    ASSERT_EQ(buttons.size(), 2);
    EXPECT_EQ(buttons[0].toMap()["label"].toString(), "Delete");
    EXPECT_EQ(buttons[0].toMap()["style"].toString(), "destructive");
    EXPECT_EQ(buttons[1].toMap()["label"].toString(), "Cancel");
    EXPECT_EQ(buttons[1].toMap()["style"].toString(), "cancel");
    EXPECT_EQ(changes.count(), 1);
}

class SignInButtonTest : public SignInViewModelTest {
protected:
    static std::shared_ptr<TovrelSignInButton> button(ButtonConfig::Style style, ButtonConfig::ButtonType type,
                                                      std::optional<double> radius = std::nullopt) {
        return TovrelSignInButton::make(TovrelSignInButtonType::apple(ButtonConfig::make(style, type, radius)));
    }
};

TEST_F(SignInButtonTest, FollowsTheAppearanceInItsDefaultStyle) {
    CurrentAppearance::choose(UserInterfaceStyle::light);
    const auto apple = button(ButtonConfig::Style::default_, ButtonConfig::ButtonType::signUp, 9)->appleButton();
    const QSignalSpy changes(apple.get(), &TovrelAppleSignInButton::platformStyleChanged);
    EXPECT_TRUE(apple->isBlack());
    CurrentAppearance::choose(UserInterfaceStyle::dark);
    EXPECT_FALSE(apple->isBlack());
    EXPECT_EQ(apple->cornerRadius(), 9);
    EXPECT_EQ(apple->platformType(), AppleIDButtonType::signUp);
    CurrentAppearance::choose(UserInterfaceStyle::light);
    EXPECT_TRUE(apple->isBlack());
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(SignInButtonTest, KeepsAFixedStyleInEveryAppearance) {
    CurrentAppearance::choose(UserInterfaceStyle::light);
    const auto white = button(ButtonConfig::Style::white, ButtonConfig::ButtonType::default_)->appleButton();
    const auto black = button(ButtonConfig::Style::black, ButtonConfig::ButtonType::default_)->appleButton();
    for (const auto appearance : {UserInterfaceStyle::dark, UserInterfaceStyle::light}) {
        CurrentAppearance::choose(appearance);
        EXPECT_FALSE(white->isBlack());
        EXPECT_TRUE(black->isBlack());
    }
}

TEST_F(SignInButtonTest, SaysItsCaptionInTheLanguageOfTheMoment) {
    using ButtonType = ButtonConfig::ButtonType;
    const auto caption = [](ButtonType type) {
        return button(ButtonConfig::Style::default_, type)->appleButton()->caption();
    };
    EXPECT_EQ(caption(ButtonType::default_), "Sign in with Apple");
    EXPECT_EQ(caption(ButtonType::signIn), "Sign in with Apple");
    EXPECT_EQ(caption(ButtonType::signUp), "Sign up with Apple");
    EXPECT_EQ(caption(ButtonType::continue_), "Continue with Apple");

    const auto apple = button(ButtonConfig::Style::default_, ButtonType::signIn)->appleButton();
    const QSignalSpy changes(apple.get(), &TovrelAppleSignInButton::captionChanged);
    ScreenLanguage::choose("de");
    EXPECT_EQ(apple->caption(), "Mit Apple anmelden");
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(SignInButtonTest, HasThePlatformsCornersWithoutConfiguredOnes) {
    EXPECT_EQ(button(ButtonConfig::Style::black, ButtonConfig::ButtonType::signIn)->appleButton()->cornerRadius(), 6);
}

TEST_F(SignInButtonTest, SendsIntoTheSubjectsThatItIsGiven) {
    const auto wrapper = button(ButtonConfig::Style::black, ButtonConfig::ButtonType::signIn);
    const AuthorizationInitiatedSubject initiated;
    const AuthorizationResultSubject result;
    int started = 0;
    int ended = 0;
    const Subscription starts = initiated.publisher().subscribe([&](const std::monostate&) { ++started; });
    const Subscription ends = result.publisher().subscribe([&](const Outcome<void>&) { ++ended; });
    wrapper->setAuthorizationRequestInitiated(initiated);
    wrapper->setAuthorizationRequestResult(result);
    wrapper->appleButton()->tap();
    service_->end(cancelled());
    EXPECT_EQ(started, 1);
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(wrapper->button(), wrapper->appleButton());
}

TEST_F(SignInButtonTest, IsMadeOrTakenByItsRepresentable) {
    const auto existing = button(ButtonConfig::Style::black, ButtonConfig::ButtonType::signIn);
    EXPECT_EQ(TovrelSignInButtonRepresentable(existing).button, existing);
    EXPECT_FALSE(TovrelSignInButtonRepresentable(existing).height.has_value());
    const auto config = ButtonConfig::make(ButtonConfig::Style::white, ButtonConfig::ButtonType::signUp, std::nullopt);
    const TovrelSignInButtonRepresentable own(TovrelSignInButtonType::apple(config));
    EXPECT_EQ(own.button->appleButton()->config(), config);
}

} // namespace tovrel::tests
