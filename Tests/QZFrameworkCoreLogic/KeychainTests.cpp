#include <Platform/Concurrency/TaskGroup.hpp>
#include <QZFrameworkCoreLogic/Keychain.hpp>

#include <gtest/gtest.h>

#include <string>
#include <Support/Await.hpp>
#include <Support/KeychainErrors.hpp>
#include <Support/TemporaryDirectory.hpp>
#include <thread>
#include <vector>

namespace tovrel::tests {

namespace {

using Backend = KeychainConfiguration::Backend;
constexpr KeychainAccessibility accessibility = KeychainAccessibility::afterFirstUnlock;

/// The backends that need nothing but this process.
class KeychainTest : public AsyncTest, public ::testing::WithParamInterface<Backend> {
protected:
    KeychainTest() {
        configuration_.serviceName = "keychain-tests";
        configuration_.directory = directory_.path() / "keychain";
        configuration_.backend = GetParam();
    }

    TemporaryDirectory directory_;
    KeychainConfiguration configuration_;
};

Async<std::optional<Data>> readWhenCancelled(Keychain keychain) {
    co_return co_await keychain.data("key");
}

} // namespace

TEST_P(KeychainTest, HoldsNothingAtFirst) {
    const Keychain keychain(configuration_);
    EXPECT_EQ(getInTime(keychain.data("key")), std::nullopt);
    EXPECT_EQ(getInTime(keychain.string("key")), std::nullopt);
    EXPECT_FALSE(getInTime(keychain.remove("key")));
}

TEST_P(KeychainTest, GivesBackWhatItWasGiven) {
    const Keychain keychain(configuration_);
    getInTime(keychain.setData("key", Data("value"), accessibility));
    getInTime(keychain.setString("text", "täxt", KeychainAccessibility::whenUnlocked));
    EXPECT_EQ(getInTime(keychain.data("key")), Data("value"));
    EXPECT_EQ(getInTime(keychain.string("text")), "täxt");
}

TEST_P(KeychainTest, KeepsEveryByte) {
    std::string bytes;
    for (int round = 0; round < 256; ++round) {
        for (int byte = 0; byte < 256; ++byte) {
            bytes.push_back(static_cast<char>(byte));
        }
    }
    const Keychain keychain(configuration_);
    getInTime(keychain.setData("key", Data(bytes), accessibility));
    EXPECT_EQ(getInTime(keychain.data("key")), Data(bytes));
}

TEST_P(KeychainTest, TellsAnEmptyEntryFromNone) {
    const Keychain keychain(configuration_);
    getInTime(keychain.setData("key", Data(), accessibility));
    EXPECT_EQ(getInTime(keychain.data("key")), Data());
    EXPECT_TRUE(getInTime(keychain.remove("key")));
    EXPECT_EQ(getInTime(keychain.data("key")), std::nullopt);
}

TEST_P(KeychainTest, ReplacesAnEntry) {
    const Keychain keychain(configuration_);
    getInTime(keychain.setString("key", "first", accessibility));
    getInTime(keychain.setString("key", "second", KeychainAccessibility::whenUnlocked));
    EXPECT_EQ(getInTime(keychain.string("key")), "second");
}

TEST_P(KeychainTest, TakesAnyTextForAKey) {
    const Keychain keychain(configuration_);
    const std::vector<std::string> keys{"", "a/b", "../a", "a b(c: d.e).Token", std::string(5000, 'k'), "\xff\n"};
    for (const std::string& key : keys) {
        getInTime(keychain.setString(key, "value of " + std::to_string(key.size()), accessibility));
    }
    for (const std::string& key : keys) {
        EXPECT_EQ(getInTime(keychain.string(key)), "value of " + std::to_string(key.size()));
    }
}

TEST_P(KeychainTest, RemovesOneEntryAndLeavesTheOthers) {
    const Keychain keychain(configuration_);
    getInTime(keychain.setString("key", "value", accessibility));
    getInTime(keychain.setString("key.Apple", "other", accessibility));
    EXPECT_TRUE(getInTime(keychain.remove("key")));
    EXPECT_EQ(getInTime(keychain.string("key")), std::nullopt);
    EXPECT_EQ(getInTime(keychain.string("key.Apple")), "other");
}

TEST_P(KeychainTest, ShowsChangesInEveryOtherKeychainAtOnce) {
    const Keychain writer(configuration_);
    const Keychain reader(configuration_);
    for (int round = 0; round < 20; ++round) {
        getInTime(writer.setString("key", std::to_string(round), accessibility));
        EXPECT_EQ(getInTime(reader.string("key")), std::to_string(round));
    }
    getInTime(writer.remove("key"));
    EXPECT_EQ(getInTime(reader.string("key")), std::nullopt);
}

TEST_P(KeychainTest, KeepsServicesApart) {
    const Keychain keychain(configuration_);
    getInTime(keychain.setString("key", "value", accessibility));
    KeychainConfiguration other = configuration_;
    other.serviceName = "another-service";
    other.directory = directory_.path() / "other";
    EXPECT_EQ(getInTime(Keychain(other).string("key")), std::nullopt);
}

TEST_P(KeychainTest, CallsBytesThatAreNoTextCorrupt) {
    const Keychain keychain(configuration_);
    getInTime(keychain.setData("key", Data("\xc3\x28"), accessibility));
    EXPECT_EQ(keychainErrorOf(keychain.string("key")), KeychainError::Kind::corrupt);
}

TEST_P(KeychainTest, AnswersInACancelledTask) {
    const Keychain keychain(configuration_);
    getInTime(keychain.setString("key", "value", accessibility));
    auto result = std::make_shared<std::optional<std::optional<Data>>>();
    auto task = Task::spawn(TaskPool::compute(), detail::keepResult(readWhenCancelled(keychain), result), true);
    getInTime(Task::join(task));
    EXPECT_EQ(*result, std::optional(Data("value")));
}

TEST_P(KeychainTest, ServesManyTasksAtOnce) {
    const Keychain keychain(configuration_);
    TaskGroup group;
    for (int index = 0; index < 64; ++index) {
        group.add(keychain.setString("key" + std::to_string(index % 4), std::to_string(index), accessibility));
        group.add(keychain.data("key" + std::to_string(index % 4)));
        group.add(keychain.remove("key" + std::to_string(index % 2)));
    }
    getInTime(group.waitForAll());
    EXPECT_NE(getInTime(keychain.data("key3")), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Backends, KeychainTest, ::testing::Values(Backend::memory, Backend::sealedStore),
                         [](const auto& instance) {
                             return instance.param == Backend::memory ? "Memory" : "SealedStore";
                         });

TEST(KeychainInMemory, IsAStoreOfItsOwn) {
    const Keychain one = Keychain::inMemory();
    const Keychain copy = one;
    getInTime(one.setString("key", "value", accessibility));
    EXPECT_EQ(getInTime(copy.string("key")), "value");
    EXPECT_EQ(getInTime(Keychain::inMemory().string("key")), std::nullopt);
}

TEST(KeychainConfigurationDeathTest, StopsAtAServiceNameThatIsNoFileName) {
    for (const char* name : {"", ".", "..", "a/b"}) {
        KeychainConfiguration configuration;
        configuration.serviceName = name;
        configuration.backend = Backend::memory;
        EXPECT_DEATH(Keychain{configuration}, "plain file name") << name;
    }
}

TEST(KeychainConfiguration, IsNamedAfterTheExecutable) {
    EXPECT_EQ(KeychainConfiguration().serviceName, "keychain_tests");
}

TEST(KeychainError, IsEqualByKindAndSaysWhatFailed) {
    EXPECT_EQ(KeychainError::locked("reading"), KeychainError::locked());
    EXPECT_FALSE(KeychainError::locked() == KeychainError::unavailable());
    EXPECT_STREQ(KeychainError::denied("reading").what(), "access to the keychain is denied (reading)");
    EXPECT_STREQ(KeychainError::corrupt().what(), "the keychain's entry is corrupt");
}

} // namespace tovrel::tests
