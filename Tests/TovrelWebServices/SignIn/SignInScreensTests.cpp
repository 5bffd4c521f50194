#include <QZFrameworkCoreUI/ViewController.hpp>
#include <QZFrameworkCoreUI/Window.hpp>
#include <TovrelContracts/Application.hpp>
#include <TovrelWebServices/SignIn/SignInServiceTest.hpp>
#include <TovrelWebServices/SignIn/TovrelAccountTopPresentedScreenHelper.hpp>

#include <gtest/gtest.h>

namespace tovrel::tests {

namespace {

class Screen final : public ViewController {
public:
    std::shared_ptr<Screen> presented;

    [[nodiscard]] std::shared_ptr<ViewController> presentedViewController() const override { return presented; }
};

class TestWindow final : public Window {
public:
    explicit TestWindow(bool isKey) : isKey_(isKey) {}

    std::shared_ptr<Screen> root;

    [[nodiscard]] std::shared_ptr<ViewController> rootViewController() const override { return root; }
    [[nodiscard]] bool isKeyWindow() const override { return isKey_; }

private:
    bool isKey_;
};

class Host final : public Application {
public:
    std::shared_ptr<TestWindow> main;
    std::vector<std::shared_ptr<Window>> others;

    [[nodiscard]] std::shared_ptr<Window> window() const override { return main; }
    [[nodiscard]] std::vector<std::shared_ptr<Window>> windows() const override {
        return others.empty() ? Application::windows() : others;
    }
};

constexpr const char* noWindow = "Failed to obtain required Window for AuthenticationServices\\.";

} // namespace

class SignInScreens : public SignInServiceTest {
protected:
    std::shared_ptr<Host> host_ = std::make_shared<Host>();
    Registration<Application> application_{host_};
};

using SignInScreensDeathTest = SignInScreens;

TEST_F(SignInScreens, AnchorTheSheetAtTheFirstWindowWithTheFocus) {
    const auto key = std::make_shared<TestWindow>(true);
    host_->others = {std::make_shared<TestWindow>(false), key, std::make_shared<TestWindow>(true)};
    EXPECT_EQ(service_->presentationAnchor(), key);
}

TEST_F(SignInScreens, AnchorTheSheetAtTheMainWindowOfASimpleApplication) {
    host_->main = std::make_shared<TestWindow>(true);
    EXPECT_EQ(service_->presentationAnchor(), host_->main);
}

TEST_F(SignInScreens, AreAskedForTheirWindowOnTheMainActor) {
    host_->main = std::make_shared<TestWindow>(true);
    provider_->presentSheet();
    provider_->answer(janesCredential());
    Completions completions;
    request(completions);
    static_cast<void>(completions.result());
    EXPECT_EQ(provider_->anchors(), std::vector<std::shared_ptr<Window>>{host_->main});
}

TEST_F(SignInScreens, NeedNoWindowForAProviderThatDoesNotAskForOne) {
    provider_->answer(janesCredential());
    Completions completions;
    request(completions);
    EXPECT_TRUE(std::holds_alternative<TovrelAccountsToken>(completions.result()));
}

TEST_F(SignInScreensDeathTest, StopTheProcessWithoutAWindow) {
    EXPECT_DEATH(static_cast<void>(service_->presentationAnchor()), noWindow);
}

TEST_F(SignInScreensDeathTest, StopTheProcessWithoutAWindowWithTheFocus) {
    host_->main = std::make_shared<TestWindow>(false);
    EXPECT_DEATH(static_cast<void>(service_->presentationAnchor()), noWindow);
}

TEST_F(SignInScreensDeathTest, StopTheProcessWithoutAnApplication) {
    Services::default_().remove<Application>();
    EXPECT_DEATH(static_cast<void>(service_->presentationAnchor()), noWindow);
}

TEST_F(SignInScreens, HaveTheLastPresentedOneOnTop) {
    host_->main = std::make_shared<TestWindow>(false);
    host_->main->root = std::make_shared<Screen>();
    EXPECT_EQ(TovrelAccountTopPresentedScreenHelper::viewController(), host_->main->root);
    host_->main->root->presented = std::make_shared<Screen>();
    EXPECT_EQ(TovrelAccountTopPresentedScreenHelper::viewController(), host_->main->root->presented);
}

TEST_F(SignInScreens, HaveNoneOnTopWithoutAScreenAWindowOrAnApplication) {
    host_->main = std::make_shared<TestWindow>(true);
    EXPECT_EQ(TovrelAccountTopPresentedScreenHelper::viewController(), nullptr);
    host_->main.reset();
    EXPECT_EQ(TovrelAccountTopPresentedScreenHelper::viewController(), nullptr);
    Services::default_().remove<Application>();
    EXPECT_EQ(TovrelAccountTopPresentedScreenHelper::viewController(), nullptr);
}

} // namespace tovrel::tests
