#include <QZFrameworkCoreLogic/KeyringTest.hpp>

#include <gmock/gmock.h>

namespace tovrel::tests {

using ::testing::HasSubstr;
using ::testing::Not;

namespace {

class SecretServiceKeychain : public KeyringTest {
protected:
    SecretServiceKeychain() : KeyringTest(Backend::secretService) { session_.startKeyring(); }

    /// How long an operation takes.
    template <class T>
    static std::chrono::milliseconds timeOf(Async<T> operation) {
        const auto start = std::chrono::steady_clock::now();
        static_cast<void>(keychainErrorOf(std::move(operation)));
        return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
    }
};

} // namespace

TEST_F(SecretServiceKeychain, GivesBackWhatItWasGiven) {
    EXPECT_EQ(getInTime(keychain().data("key")), std::nullopt);
    EXPECT_FALSE(getInTime(keychain().remove("key")));
    getInTime(keychain().setString("key", "value", afterFirstUnlock));
    EXPECT_EQ(getInTime(keychain().string("key")), "value");
    getInTime(keychain().setString("key", "other", whenUnlocked));
    EXPECT_EQ(getInTime(keychain().string("key")), "other");
    EXPECT_TRUE(getInTime(keychain().remove("key")));
    EXPECT_EQ(getInTime(keychain().string("key")), std::nullopt);
}

TEST_F(SecretServiceKeychain, KeepsEveryByteOfLargeValues) {
    std::string bytes;
    for (int index = 0; index < 65536; ++index) {
        bytes.push_back(static_cast<char>(index * 7));
    }
    getInTime(keychain().setData("key", Data(bytes), afterFirstUnlock));
    getInTime(keychain().setData("empty", Data(), afterFirstUnlock));
    EXPECT_EQ(inAnotherProcess({"get", "key"}), "the keychain's entry is corrupt (reading text)");
    EXPECT_EQ(getInTime(keychain().data("key")), Data(bytes));
    EXPECT_EQ(getInTime(keychain().data("empty")), Data());
}

TEST_F(SecretServiceKeychain, TakesAnyTextForAKey) {
    const Keychain keychain = this->keychain();
    const std::vector<std::string> keys{
        "", "a/b", "a%2Fb", "a b(c: d.e).Token", std::string(5000, 'k'), "\xff\n", std::string("a\0b", 3), "a"};
    for (const std::string& key : keys) {
        getInTime(
            keychain.setString(key, "value of " + std::to_string(std::hash<std::string>()(key)), afterFirstUnlock));
    }
    for (const std::string& key : keys) {
        EXPECT_EQ(getInTime(keychain.string(key)), "value of " + std::to_string(std::hash<std::string>()(key)))
            << key.substr(0, 9);
    }
}

TEST_F(SecretServiceKeychain, KeepsServicesApart) {
    getInTime(keychain().setString("key", "value", afterFirstUnlock));
    KeychainConfiguration other = configuration_;
    other.serviceName = "another-service";
    EXPECT_EQ(getInTime(Keychain(other).string("key")), std::nullopt);
    EXPECT_FALSE(getInTime(Keychain(other).remove("key")));
    EXPECT_EQ(getInTime(keychain().string("key")), "value");
}

TEST_F(SecretServiceKeychain, ShowsChangesInEveryOtherKeychainAtOnce) {
    const Keychain writer = keychain();
    const Keychain reader = keychain();
    for (int round = 0; round < 20; ++round) {
        getInTime(writer.setString("key", std::to_string(round), afterFirstUnlock));
        EXPECT_EQ(getInTime(reader.string("key")), std::to_string(round));
    }
}

TEST_F(SecretServiceKeychain, NoticesWhatOtherProcessesDo) {
    const Keychain keychain = this->keychain();
    getInTime(keychain.setString("key", "ours", afterFirstUnlock));
    EXPECT_EQ(inAnotherProcess({"get", "key"}), "ours");
    EXPECT_EQ(inAnotherProcess({"put", "key", "theirs"}), "");
    EXPECT_TRUE(becomes(keychain, "key", "theirs"));
    EXPECT_EQ(inAnotherProcess({"drop", "key"}), "1");
    EXPECT_TRUE(becomes(keychain, "key", std::nullopt));
    EXPECT_EQ(inAnotherProcess({"put", "key", "again"}), "");
    EXPECT_TRUE(becomes(keychain, "key", "again"));
}

TEST_F(SecretServiceKeychain, LetsTwoProcessesWriteOneEntry) {
    const Keychain keychain = this->keychain();
    const auto one = otherProcess({"put", "key", "one", "40"});
    const auto two = otherProcess({"put", "key", "two", "40"});
    for (int round = 0; round < 40; ++round) {
        getInTime(keychain.setString("key", "three", afterFirstUnlock));
    }
    EXPECT_EQ(one->finish(), std::pair(std::string(), true));
    EXPECT_EQ(two->finish(), std::pair(std::string(), true));
    // One item is left, so that one removal is enough.
    EXPECT_TRUE(getInTime(keychain.remove("key")));
    EXPECT_EQ(inAnotherProcess({"get", "key"}), "(absent)");
}

TEST_F(SecretServiceKeychain, TellsALockedKeyringFromAnEmptyOne) {
    getInTime(keychain().setString("key", "value", afterFirstUnlock));
    session_.lockKeyring();
    const Keychain keychain = this->keychain();
    EXPECT_EQ(keychainErrorOf(keychain.data("key")), Kind::locked);
    EXPECT_EQ(keychainErrorOf(keychain.data("unknown")), Kind::locked);
    EXPECT_EQ(keychainErrorOf(keychain.setString("key", "other", afterFirstUnlock)), Kind::locked);
    EXPECT_EQ(keychainErrorOf(keychain.remove("key")), Kind::locked);
    EXPECT_EQ(keychainErrorOf(keychain.remove("unknown")), Kind::locked);
    session_.unlockKeyring();
    EXPECT_EQ(getInTime(keychain.string("key")), "value");
    EXPECT_EQ(getInTime(keychain.data("unknown")), std::nullopt);
}

TEST_F(SecretServiceKeychain, RemembersWhileLockedOnlyWhatMayBeRemembered) {
    const Keychain keychain = this->keychain();
    getInTime(keychain.setString("always", "value", afterFirstUnlock));
    getInTime(keychain.setString("unlocked", "value", whenUnlocked));
    session_.lockKeyring();
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (keychainErrorOf(keychain.string("unlocked")) != Kind::locked && std::chrono::steady_clock::now() < end) {
    }
    EXPECT_EQ(keychainErrorOf(keychain.string("unlocked")), Kind::locked);
    EXPECT_EQ(getInTime(keychain.string("always")), "value");
    EXPECT_EQ(keychainErrorOf(keychain.remove("always")), Kind::locked);
    // It was to go: it is not shown again before the keyring has been asked.
    EXPECT_EQ(keychainErrorOf(keychain.string("always")), Kind::locked);
}

TEST_F(SecretServiceKeychain, IsUnavailableWithoutADaemonAndGoesOnWithTheNext) {
    const Keychain keychain = this->keychain();
    getInTime(keychain.setString("key", "value", whenUnlocked));
    session_.killKeyring();
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (keychainErrorOf(keychain.data("key")) != Kind::unavailable && std::chrono::steady_clock::now() < end) {
    }
    EXPECT_EQ(keychainErrorOf(keychain.data("key")), Kind::unavailable);
    EXPECT_EQ(keychainErrorOf(keychain.setString("key", "v", whenUnlocked)), Kind::unavailable);
    EXPECT_EQ(keychainErrorOf(keychain.remove("key")), Kind::unavailable);
    session_.startKeyring();
    EXPECT_EQ(getInTime(keychain.string("key")), "value");
    getInTime(keychain.setString("key", "new", whenUnlocked));
    EXPECT_EQ(getInTime(keychain.string("key")), "new");
}

TEST_F(SecretServiceKeychain, IsNotDisturbedByADaemonThatWasReplacedBetweenTwoCalls) {
    const Keychain keychain = this->keychain();
    getInTime(keychain.setString("key", "value", whenUnlocked));
    session_.killKeyring();
    session_.startKeyring();
    getInTime(keychain.setString("key", "new", whenUnlocked));
    EXPECT_EQ(getInTime(keychain.string("key")), "new");
}

TEST_F(SecretServiceKeychain, FailsAtItsDeadlineWhenTheDaemonIsFrozen) {
    configuration_.deadline = std::chrono::milliseconds(500);
    const Keychain keychain = this->keychain();
    getInTime(keychain.setString("known", "value", afterFirstUnlock));
    session_.freezeKeyring();
    EXPECT_EQ(keychainErrorOf(keychain.data("key")), Kind::unavailable);
    EXPECT_LT(timeOf(keychain.setString("key", "v", afterFirstUnlock)), std::chrono::seconds(4));
    EXPECT_LT(timeOf(keychain.remove("key")), std::chrono::seconds(4));
    EXPECT_EQ(getInTime(keychain.string("known")), "value");
    // A first connection ends in time as well.
    KeychainConfiguration other = configuration_;
    other.serviceName = "another-service";
    EXPECT_LT(timeOf(Keychain(other).data("key")), std::chrono::seconds(4));
    EXPECT_EQ(keychainErrorOf(Keychain(other).data("key")), Kind::unavailable);
    session_.thawKeyring();
    EXPECT_NE(keychainErrorOf(keychain.remove("known")), Kind::corrupt);
    EXPECT_TRUE(becomes(keychain, "known", std::nullopt));
}

TEST_F(SecretServiceKeychain, FailsTogetherWhenManyWaitForAFrozenDaemon) {
    configuration_.deadline = std::chrono::milliseconds(500);
    const Keychain keychain = this->keychain();
    EXPECT_EQ(getInTime(keychain.data("key")), std::nullopt);
    session_.freezeKeyring();
    const auto start = std::chrono::steady_clock::now();
    std::vector<TaskHandle> handles;
    std::vector<std::future<bool>> failures;
    for (int index = 0; index < 8; ++index) {
        const auto failed = std::make_shared<std::promise<bool>>();
        failures.push_back(failed->get_future());
        handles.push_back(tovrel::start<std::optional<Data>>(
            keychain.data("key" + std::to_string(index)),
            [failed](Outcome<std::optional<Data>> outcome) { failed->set_value(!outcome.hasValue()); }));
    }
    for (std::future<bool>& failure : failures) {
        EXPECT_TRUE(failure.get());
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
    session_.thawKeyring();
}

TEST_F(SecretServiceKeychain, SurvivesTheEndOfItsBus) {
    const Keychain keychain = this->keychain();
    getInTime(keychain.setString("key", "value", whenUnlocked));
    getInTime(keychain.setString("always", "value", afterFirstUnlock));
    session_.killBus();
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (keychainErrorOf(keychain.data("key")) != Kind::unavailable && std::chrono::steady_clock::now() < end) {
    }
    EXPECT_EQ(keychainErrorOf(keychain.data("key")), Kind::unavailable);
    EXPECT_EQ(keychainErrorOf(keychain.setString("key", "v", whenUnlocked)), Kind::unavailable);
    EXPECT_EQ(getInTime(keychain.string("always")), "value");
}

TEST_F(SecretServiceKeychain, CallsAnItemOfAnotherWriterCorrupt) {
    const Keychain keychain = this->keychain();
    EXPECT_EQ(inAnotherProcess({"spoil", "key"}), "");
    EXPECT_EQ(keychainErrorOf(keychain.data("key")), Kind::corrupt);
    getInTime(keychain.setString("key", "value", afterFirstUnlock));
    EXPECT_EQ(inAnotherProcess({"get", "key"}), "value");
    EXPECT_EQ(inAnotherProcess({"spoil", "key"}), "");
    EXPECT_TRUE(getInTime(keychain.remove("key")));
}

TEST_F(SecretServiceKeychain, TellsNoSecretInItsErrors) {
    const std::string canary = "canary-secret";
    configuration_.deadline = std::chrono::milliseconds(500);
    const Keychain keychain = this->keychain();
    getInTime(keychain.setString("key", canary, whenUnlocked));
    std::vector<std::string> texts;
    const auto provoke = [&] {
        for (int action = 0; action < 3; ++action) {
            try {
                if (action == 0) {
                    static_cast<void>(getInTime(keychain.string("key")));
                } else if (action == 1) {
                    getInTime(keychain.setString("key", canary, whenUnlocked));
                } else {
                    getInTime(keychain.remove("key"));
                }
            } catch (const Error& error) {
                texts.emplace_back(error.what());
            }
        }
    };
    session_.lockKeyring();
    provoke();
    session_.freezeKeyring();
    provoke();
    session_.killKeyring();
    provoke();
    session_.killBus();
    provoke();
    EXPECT_GE(texts.size(), 9U);
    EXPECT_THAT(texts, ::testing::Each(Not(HasSubstr(canary))));
}

} // namespace tovrel::tests
