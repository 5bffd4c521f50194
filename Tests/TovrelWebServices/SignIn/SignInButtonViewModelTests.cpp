#include <TovrelWebServices/SignIn/SignInServiceTest.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInButtonViewModel.hpp>

#include <gtest/gtest.h>

namespace tovrel::tests {

namespace {

using ViewModel = TovrelAppleSignInButtonViewModel;

/// A service whose answers the test gives. As the real one it forgets a completion when the next comes.
class ManualSignIn final : public TovrelAppleSignInService {
public:
    using TovrelAppleSignInService::requestAuthorization;

    Async<std::optional<TovrelAppleCredentialState>> getCredentialState(TovrelAccountsClient /*client*/) override {
        co_return std::nullopt;
    }
    void requestAuthorization(Completion completion) override {
        ++requestCount;
        completion_ = std::move(completion);
    }
    void answer(TovrelAppleSignInResult result) { std::exchange(completion_, nullptr)(std::move(result)); }

    int requestCount = 0;

private:
    Completion completion_;
};

} // namespace

class SignInButtonViewModel : public ::testing::Test {
protected:
    using Steps = std::vector<std::string>;

    void observe(ViewModel& model) {
        initiated_ = model.authorizationRequestInitiated().publisher().subscribe(
            [this](std::monostate) { steps_.push_back("initiated " + std::to_string(signIn_->requestCount)); });
        result_ = model.authorizationRequestResult().publisher().subscribe([this](const Outcome<void>& result) {
            steps_.emplace_back(result.hasValue() ? "success" : "failure");
            error_ = result.error();
        });
    }

    std::shared_ptr<ManualSignIn> signIn_ = std::make_shared<ManualSignIn>();
    Registration<TovrelAppleSignInService> registration_{signIn_};
    std::shared_ptr<ViewModel> model_ = ViewModel::make();
    Steps steps_;
    std::exception_ptr error_;
    Subscription initiated_;
    Subscription result_;
};

TEST_F(SignInButtonViewModel, TellsOfATapBeforeItRequests) {
    observe(*model_);
    model_->tap();
    EXPECT_EQ(steps_, Steps{"initiated 0"});
    EXPECT_EQ(signIn_->requestCount, 1);
}

TEST_F(SignInButtonViewModel, TellsOfASuccessWithoutTheToken) {
    observe(*model_);
    model_->tap();
    signIn_->answer(testing::FakeTovrelAccountsWebService::exampleToken());
    EXPECT_EQ(steps_, (Steps{"initiated 0", "success"}));
}

TEST_F(SignInButtonViewModel, TellsOfAFailureWithItsError) {
    observe(*model_);
    model_->tap();
    const auto cancelled = std::make_exception_ptr(AuthorizationError::cancelled());
    signIn_->answer(TovrelAppleSignInError::authorizeApple(cancelled));
    EXPECT_EQ(steps_, (Steps{"initiated 0", "failure"}));
    const auto error = unwrapped<TovrelAppleSignInError>(error_);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind(), TovrelAppleSignInError::Kind::authorizeApple);
    EXPECT_EQ(error->underlying(), cancelled);
}

TEST_F(SignInButtonViewModel, StartsAgainWithATapInTheMiddleAndTellsOneResult) {
    observe(*model_);
    model_->tap();
    model_->tap();
    signIn_->answer(testing::FakeTovrelAccountsWebService::exampleToken());
    EXPECT_EQ(steps_, (Steps{"initiated 0", "initiated 1", "success"}));
}

TEST_F(SignInButtonViewModel, TellsNothingOnceItIsGone) {
    observe(*model_);
    model_->tap();
    model_.reset();
    signIn_->answer(testing::FakeTovrelAccountsWebService::exampleToken());
    EXPECT_EQ(steps_, Steps{"initiated 0"});
}

TEST_F(SignInButtonViewModel, IsNotKeptByAnAuthorization) {
    model_->tap();
    const std::weak_ptr<ViewModel> weak = model_;
    model_.reset();
    EXPECT_TRUE(weak.expired());
}

TEST_F(SignInButtonViewModel, RequestsThoughASubscriberLetsGoOfIt) {
    initiated_ =
        model_->authorizationRequestInitiated().publisher().subscribe([this](std::monostate) { model_.reset(); });
    model_->tap();
    EXPECT_EQ(signIn_->requestCount, 1);
    signIn_->answer(testing::FakeTovrelAccountsWebService::exampleToken());
}

TEST_F(SignInButtonViewModel, SendsIntoTheSubjectsThatItIsGiven) {
    const auto other = ViewModel::make();
    observe(*other);
    model_->setAuthorizationRequestInitiated(other->authorizationRequestInitiated());
    model_->setAuthorizationRequestResult(other->authorizationRequestResult());
    model_->tap();
    signIn_->answer(testing::FakeTovrelAccountsWebService::exampleToken());
    EXPECT_EQ(steps_, (Steps{"initiated 0", "success"}));
}

TEST_F(SignInButtonViewModel, MayGetAnotherSubjectWhileItSends) {
    observe(*model_);
    const Subscription swapping = model_->authorizationRequestResult().publisher().subscribe(
        [this](const Outcome<void>&) { model_->setAuthorizationRequestResult(AuthorizationResultSubject()); });
    model_->tap();
    signIn_->answer(testing::FakeTovrelAccountsWebService::exampleToken());
    model_->tap();
    signIn_->answer(testing::FakeTovrelAccountsWebService::exampleToken());
    EXPECT_EQ(steps_, (Steps{"initiated 0", "success", "initiated 1"}));
}

TEST(SignInButtonViewModelDeathTest, NeedsASignInService) {
    EXPECT_DEATH(ViewModel::make(), ServiceContainerError::notRegistered(typeid(TovrelAppleSignInService)).what());
}

} // namespace tovrel::tests
