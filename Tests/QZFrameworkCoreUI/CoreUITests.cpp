#include <QZFrameworkCoreLogic/Services.hpp>
#include <QZFrameworkCoreUI/DebugWindowManager.hpp>
#include <QZFrameworkCoreUI/ViewController.hpp>
#include <QZFrameworkCoreUI/Window.hpp>
#include <TovrelContracts/Application.hpp>

#include <gtest/gtest.h>

namespace tovrel::tests {

namespace {

class Screen final : public ViewController {
public:
    std::shared_ptr<Screen> presented;

    [[nodiscard]] std::shared_ptr<ViewController> presentedViewController() const override { return presented; }
};

class MainWindow final : public Window {
public:
    std::shared_ptr<Screen> root = std::make_shared<Screen>();

    [[nodiscard]] std::shared_ptr<ViewController> rootViewController() const override { return root; }
    [[nodiscard]] bool isKeyWindow() const override { return true; }
};

class Host final : public Application {
public:
    std::shared_ptr<MainWindow> mainWindow = std::make_shared<MainWindow>();

    [[nodiscard]] std::shared_ptr<Window> window() const override { return mainWindow; }
};

} // namespace

TEST(ViewController, IsTheTopPresentedOneWhileItPresentsNone) {
    const auto screen = std::make_shared<Screen>();
    EXPECT_EQ(screen->topPresentedViewController(), screen);
}

TEST(ViewController, FindsTheEndOfTheChainOfPresentedOnes) {
    const auto back = std::make_shared<Screen>();
    back->presented = std::make_shared<Screen>();
    back->presented->presented = std::make_shared<Screen>();
    EXPECT_EQ(back->topPresentedViewController(), back->presented->presented);
}

TEST(Application, LeadsFromTheContainerToTheScreenInFront) {
    Services services;
    const auto host = std::make_shared<Host>();
    host->mainWindow->root->presented = std::make_shared<Screen>();
    services.register_<Application>(host);
    const std::shared_ptr<Window> window = services.safeGet<Application>()->window();
    EXPECT_TRUE(window->isKeyWindow());
    EXPECT_EQ(window->rootViewController()->topPresentedViewController(), host->mainWindow->root->presented);
}

TEST(DebugWindowManager, KeepsItsItemsInOrder) {
    DebugWindowManager manager;
    int chosen = 0;
    manager.addItem(DebugWindowManager::Item("Reset", [&chosen] { ++chosen; }));
    manager.addItem(DebugWindowManager::Item("Crash", [] {}));
    ASSERT_EQ(manager.items().size(), 2U);
    EXPECT_EQ(manager.items()[0].title, "Reset");
    EXPECT_EQ(manager.items()[1].title, "Crash");
    manager.items()[0].action();
    EXPECT_EQ(chosen, 1);
}

TEST(DebugWindowManager, HasNoItemForTheAccountsHoweverOftenItIsAdded) {
    DebugWindowManager manager;
    for (int count = 0; count < 3; ++count) {
        manager.addTovrelAccountsItem();
    }
    EXPECT_TRUE(manager.items().empty());
}

} // namespace tovrel::tests
