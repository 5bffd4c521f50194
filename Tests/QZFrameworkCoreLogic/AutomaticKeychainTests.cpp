#include <QZFrameworkCoreLogic/KeyringTest.hpp>

#include <gmock/gmock.h>

#include <fstream>

namespace tovrel::tests {

using ::testing::IsEmpty;
using ::testing::Not;

namespace {

namespace fs = std::filesystem;

class AutomaticKeychain : public KeyringTest {
protected:
    AutomaticKeychain() : KeyringTest(Backend::automatic) {}

    /// The keychain of one backend, whichever the automatic one chooses.
    [[nodiscard]] Keychain only(Backend backend) const {
        KeychainConfiguration configuration = configuration_;
        configuration.backend = backend;
        return Keychain(configuration);
    }

    [[nodiscard]] std::vector<std::string> sealedFiles() const {
        std::vector<std::string> names;
        for (const fs::directory_entry& file : fs::directory_iterator(configuration_.directory)) {
            if (file.path().extension() == ".sealed") {
                names.push_back(file.path().filename());
            }
        }
        return names;
    }
};

} // namespace

TEST_F(AutomaticKeychain, UsesTheKeyringWhereThereIsOne) {
    session_.startKeyring();
    getInTime(keychain().setString("key", "value", afterFirstUnlock));
    EXPECT_EQ(getInTime(only(Backend::secretService).string("key")), "value");
    EXPECT_FALSE(fs::exists(configuration_.directory));
}

TEST_F(AutomaticKeychain, UsesTheSealedStoreWhereNoServiceAnswers) {
    getInTime(keychain().setString("key", "value", afterFirstUnlock));
    EXPECT_EQ(getInTime(keychain().string("key")), "value");
    EXPECT_EQ(getInTime(only(Backend::sealedStore).string("key")), "value");
    EXPECT_EQ(keychainErrorOf(only(Backend::secretService).string("key")), Kind::unavailable);
}

TEST_F(AutomaticKeychain, UsesTheSealedStoreWhereThereIsNoBus) {
    session_.killBus();
    getInTime(keychain().setString("key", "value", afterFirstUnlock));
    EXPECT_EQ(getInTime(only(Backend::sealedStore).string("key")), "value");
}

TEST_F(AutomaticKeychain, DoesNotFallBackWhenTheKeyringIsLocked) {
    session_.startKeyring();
    session_.lockKeyring();
    EXPECT_EQ(keychainErrorOf(keychain().string("key")), Kind::locked);
    EXPECT_EQ(keychainErrorOf(keychain().setString("key", "value", afterFirstUnlock)), Kind::locked);
    EXPECT_FALSE(fs::exists(configuration_.directory));
}

TEST_F(AutomaticKeychain, DoesNotFallBackWhenTheKeyringIsFrozenOrGone) {
    session_.startKeyring();
    configuration_.deadline = std::chrono::milliseconds(500);
    const Keychain keychain = this->keychain();
    session_.freezeKeyring();
    EXPECT_EQ(keychainErrorOf(keychain.string("key")), Kind::unavailable);
    session_.thawKeyring();
    EXPECT_EQ(getInTime(keychain.string("key")), std::nullopt);
    session_.killKeyring();
    EXPECT_EQ(keychainErrorOf(keychain.setString("key", "value", afterFirstUnlock)), Kind::unavailable);
    EXPECT_FALSE(fs::exists(configuration_.directory));
}

TEST_F(AutomaticKeychain, MovesEntriesWhenAServiceAppears) {
    const Keychain keychain = this->keychain();
    getInTime(keychain.setString("one", "1", afterFirstUnlock));
    getInTime(keychain.setString("two", "2", whenUnlocked));
    EXPECT_EQ(getInTime(keychain.string("one")), "1");
    session_.startKeyring();
    EXPECT_TRUE(becomes(keychain, "one", "1"));
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!sealedFiles().empty() && std::chrono::steady_clock::now() < end) {
        EXPECT_EQ(getInTime(keychain.string("one")), "1");
    }
    EXPECT_THAT(sealedFiles(), IsEmpty());
    EXPECT_EQ(getInTime(only(Backend::secretService).string("one")), "1");
    EXPECT_EQ(getInTime(only(Backend::secretService).string("two")), "2");
    EXPECT_EQ(getInTime(keychain.string("two")), "2");
}

TEST_F(AutomaticKeychain, MovesEntriesOfEarlierProcesses) {
    getInTime(only(Backend::sealedStore).setString("key", "value", afterFirstUnlock));
    session_.startKeyring();
    EXPECT_EQ(getInTime(keychain().string("key")), "value");
    EXPECT_THAT(sealedFiles(), IsEmpty());
}

TEST_F(AutomaticKeychain, MovesEntriesAsSoonAsTheKeyringIsUnlocked) {
    getInTime(only(Backend::sealedStore).setString("key", "value", afterFirstUnlock));
    session_.startKeyring();
    session_.lockKeyring();
    const Keychain keychain = this->keychain();
    EXPECT_EQ(keychainErrorOf(keychain.string("key")), Kind::locked);
    EXPECT_THAT(sealedFiles(), Not(IsEmpty()));
    session_.unlockKeyring();
    EXPECT_EQ(getInTime(keychain.string("key")), "value");
    EXPECT_THAT(sealedFiles(), IsEmpty());
}

TEST_F(AutomaticKeychain, PrefersTheNewerOfTwoEntries) {
    session_.startKeyring();
    getInTime(only(Backend::secretService).setString("old", "keyring", afterFirstUnlock));
    getInTime(only(Backend::secretService).setString("new", "keyring", afterFirstUnlock));
    getInTime(only(Backend::sealedStore).setString("old", "sealed", afterFirstUnlock));
    const std::vector<std::string> older = sealedFiles();
    ASSERT_EQ(older.size(), 1U);
    getInTime(only(Backend::sealedStore).setString("new", "sealed", afterFirstUnlock));
    for (const std::string& name : sealedFiles()) {
        const bool isOlder = name == older.front();
        fs::last_write_time(configuration_.directory / name,
                            fs::file_time_type::clock::now() + std::chrono::seconds(isOlder ? -100 : 100));
    }
    EXPECT_EQ(getInTime(keychain().string("old")), "keyring");
    EXPECT_EQ(getInTime(keychain().string("new")), "sealed");
    EXPECT_THAT(sealedFiles(), IsEmpty());
}

TEST_F(AutomaticKeychain, LeavesADamagedEntryAndMovesTheOthers) {
    getInTime(only(Backend::sealedStore).setString("damaged", "value", afterFirstUnlock));
    std::ofstream(configuration_.directory / sealedFiles().front(), std::ios::app) << "x";
    getInTime(only(Backend::sealedStore).setString("key", "value", afterFirstUnlock));
    session_.startKeyring();
    EXPECT_EQ(getInTime(keychain().string("key")), "value");
    EXPECT_EQ(getInTime(keychain().string("damaged")), std::nullopt);
    EXPECT_EQ(sealedFiles().size(), 1U);
}

TEST_F(AutomaticKeychain, DoesNotBringBackWhatWasRemovedBeforeItCouldMove) {
    getInTime(only(Backend::sealedStore).setString("key", "value", afterFirstUnlock));
    session_.startKeyring();
    const Keychain keychain = this->keychain();
    EXPECT_TRUE(getInTime(keychain.remove("key")));
    EXPECT_EQ(getInTime(keychain.string("key")), std::nullopt);
    EXPECT_THAT(sealedFiles(), IsEmpty());
    EXPECT_EQ(inAnotherProcess({"get", "key"}), "(absent)");
}

TEST_F(AutomaticKeychain, SharesItsEntriesWithOtherProcesses) {
    const Keychain keychain = this->keychain();
    getInTime(keychain.setString("key", "ours", afterFirstUnlock));
    EXPECT_EQ(inAnotherProcess({"get", "key"}), "ours");
    EXPECT_EQ(inAnotherProcess({"put", "key", "theirs"}), "");
    EXPECT_EQ(getInTime(keychain.string("key")), "theirs");
    EXPECT_EQ(inAnotherProcess({"drop", "key"}), "1");
    EXPECT_EQ(getInTime(keychain.string("key")), std::nullopt);
}

TEST_F(AutomaticKeychain, FollowsEntriesThatAnotherProcessHasMoved) {
    const Keychain keychain = this->keychain();
    getInTime(keychain.setString("key", "value", afterFirstUnlock));
    EXPECT_EQ(getInTime(keychain.string("key")), "value");
    session_.startKeyring();
    EXPECT_EQ(inAnotherProcess({"get", "key"}), "value");
    EXPECT_THAT(sealedFiles(), IsEmpty());
    EXPECT_EQ(getInTime(keychain.string("key")), "value");
}

TEST(ActivatedKeyring, IsStartedByTheBusAndLockedNotEmpty) {
    PrivateSession session(PrivateSession::Activation::keyring);
    KeychainConfiguration configuration;
    configuration.serviceName = "keychain-tests";
    configuration.directory = session.home() / "keychain";
    const Keychain keychain(configuration);
    session.startKeyring();
    getInTime(keychain.setString("key", "value", KeychainAccessibility::whenUnlocked));
    session.killKeyring();
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (keychainErrorOf(keychain.data("key")) != KeychainError::Kind::locked &&
           std::chrono::steady_clock::now() < end) {
    }
    EXPECT_EQ(keychainErrorOf(keychain.data("key")), KeychainError::Kind::locked);
    EXPECT_EQ(keychainErrorOf(keychain.data("unknown")), KeychainError::Kind::locked);
}

} // namespace tovrel::tests
