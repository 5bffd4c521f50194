#include <QZFrameworkCoreLogic/Dependency.hpp>
#include <QZFrameworkCoreLogic/Services.hpp>
#include <TovrelContracts/ServiceProvider.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace tovrel::tests {

namespace {

class Greeter {
public:
    virtual ~Greeter() = default;
    [[nodiscard]] virtual std::string greeting() const = 0;
};

class Counter : public Service {
public:
    int count = 0;
};

/// Its interface lies at another address than its first base.
class PoliteGreeter final : public Counter, public Greeter {
public:
    [[nodiscard]] std::string greeting() const override { return "Good morning"; }
};

class GreeterProvider final : public ServiceProvider {
public:
    void register_(ServiceContainer& services) override {
        services.register_<Greeter>(std::make_shared<PoliteGreeter>());
    }
};

std::optional<ServiceContainerError> errorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const ServiceContainerError& error) {
        return error;
    }
    return std::nullopt;
}

} // namespace

TEST(Services, GivesEveryCallerTheInstanceThatWasRegistered) {
    Services services;
    const auto greeter = std::make_shared<PoliteGreeter>();
    services.register_<Greeter>(greeter);
    EXPECT_EQ(services.safeGet<Greeter>(), greeter);
    EXPECT_EQ(services.safeGet<Greeter>(), services.safeGet<Greeter>());
    EXPECT_EQ(services.safeGet<Greeter>()->greeting(), "Good morning");
}

TEST(Services, KeepsOneInstanceForEachInterface) {
    Services services;
    const auto greeter = std::make_shared<PoliteGreeter>();
    const auto counter = std::make_shared<Counter>();
    services.register_<Greeter>(greeter);
    services.register_<Counter>(counter);
    EXPECT_EQ(services.safeGet<Greeter>(), greeter);
    EXPECT_EQ(services.safeGet<Counter>(), counter);
}

TEST(Services, FindsAServiceUnderItsInterfaceOnly) {
    Services services;
    services.register_<Greeter>(std::make_shared<PoliteGreeter>());
    EXPECT_EQ(errorOf([&] { (void)services.safeGet<PoliteGreeter>(); }),
              ServiceContainerError::notRegistered(typeid(PoliteGreeter)));
    EXPECT_EQ(errorOf([&] { (void)services.safeGet<Counter>(); }),
              ServiceContainerError::notRegistered(typeid(Counter)));
}

TEST(Services, RefusesASecondServiceAndKeepsTheFirst) {
    Services services;
    const auto first = std::make_shared<PoliteGreeter>();
    services.register_<Greeter>(first);
    EXPECT_EQ(errorOf([&] { services.register_<Greeter>(std::make_shared<PoliteGreeter>()); }),
              ServiceContainerError::alreadyRegistered(typeid(Greeter)));
    EXPECT_EQ(errorOf([&] { services.register_<Greeter>(first); }),
              ServiceContainerError::alreadyRegistered(typeid(Greeter)));
    EXPECT_EQ(services.safeGet<Greeter>(), first);
}

TEST(Services, PassesTheFailureOfARegistrationToTheCallerOfAProvider) {
    Services services;
    GreeterProvider provider;
    provider.register_(services);
    EXPECT_EQ(errorOf([&] { provider.register_(services); }),
              ServiceContainerError::alreadyRegistered(typeid(Greeter)));
}

TEST(Services, MakesRoomForAnotherService) {
    Services services;
    const auto first = std::make_shared<PoliteGreeter>();
    services.register_<Greeter>(first);
    EXPECT_TRUE(services.remove<Greeter>());
    EXPECT_FALSE(services.remove<Greeter>());
    EXPECT_EQ(first.use_count(), 1);
    services.register_<Greeter>(std::make_shared<PoliteGreeter>());
    EXPECT_NE(services.safeGet<Greeter>(), first);
}

TEST(Services, AreIndependentOfEachOther) {
    Services services;
    services.register_<Greeter>(std::make_shared<PoliteGreeter>());
    EXPECT_TRUE(errorOf([] { (void)Services().safeGet<Greeter>(); }));
}

TEST(Services, HasOneContainerForTheProcess) {
    EXPECT_EQ(&Services::default_(), &Services::default_());
}

TEST(Services, LetsOneOfManyThreadsRegister) {
    Services services;
    std::atomic<int> registered{0};
    std::atomic<int> refused{0};
    {
        std::vector<std::jthread> threads;
        for (int index = 0; index < 8; ++index) {
            threads.emplace_back([&] {
                try {
                    services.register_<Greeter>(std::make_shared<PoliteGreeter>());
                    ++registered;
                } catch (const ServiceContainerError&) {
                    ++refused;
                }
                EXPECT_EQ(services.safeGet<Greeter>()->greeting(), "Good morning");
            });
        }
    }
    EXPECT_EQ(registered, 1);
    EXPECT_EQ(refused, 7);
}

TEST(ServicesDeathTest, StopsTheProcessForANullService) {
    Services services;
    EXPECT_EXIT(services.register_<Greeter>(std::shared_ptr<PoliteGreeter>()), ::testing::KilledBySignal(SIGABRT),
                "A service to be registered is null.");
}

TEST(Dependency, HoldsWhatIsRegisteredWhenItIsMade) {
    Services services;
    const auto greeter = std::make_shared<PoliteGreeter>();
    services.register_<Greeter>(greeter);
    const Dependency<Greeter> dependency(services);
    services.remove<Greeter>();
    EXPECT_EQ(dependency.get(), greeter);
    EXPECT_EQ(dependency->greeting(), "Good morning");
    EXPECT_EQ((*dependency).greeting(), "Good morning");
}

TEST(Dependency, LooksInTheContainerOfTheProcessByDefault) {
    const auto greeter = std::make_shared<PoliteGreeter>();
    Services::default_().register_<Greeter>(greeter);
    EXPECT_EQ(Dependency<Greeter>().get(), greeter);
    Services::default_().remove<Greeter>();
}

TEST(DependencyDeathTest, StopsTheProcessWithTheTextOfTheError) {
    const Services services;
    EXPECT_EXIT(Dependency<Counter>{services}, ::testing::KilledBySignal(SIGABRT),
                "Fatal error: The service .*Counter is not registered.");
}

} // namespace tovrel::tests
