#include <TovrelWebServices/Tovrel Accounts/KeychainTovrelAccountsStorage.hpp>

#include <gmock/gmock.h>

#include <chrono>
#include <Support/Await.hpp>
#include <Support/PrivateSession.hpp>
#include <Support/SystemLogTest.hpp>

namespace tovrel::tests {

using ::testing::Each;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

namespace {

/// The accounts' storage in a user's session of the test's own.
class KeyringStorage : public SystemLogTest {
protected:
    KeyringStorage() {
        session_.startKeyring();
        configuration_.serviceName = "storage-tests";
        configuration_.directory = session_.home() / "keychain";
        configuration_.deadline = std::chrono::milliseconds(500);
        token_.accessToken = "canary-access";
        token_.refreshToken = "canary-refresh";
        token_.timestamp = 1732190000.123456789;
        token_.tokenType = "Bearer";
    }

    [[nodiscard]] std::shared_ptr<KeychainTovrelAccountsStorage> storage() const {
        return KeychainTovrelAccountsStorage::make(Keychain(configuration_));
    }

    void storeEverything() {
        getInTime(storage()->setToken(client_, token_));
        getInTime(storage()->setClientIdentifier(client_));
        getInTime(storage()->setUserProfile(client_, profile_));
        getInTime(storage()->setAppleUserProfile(client_, profile_));
        getInTime(storage()->setAppleSignInUser("canary-user", client_));
    }

    void removeEverything() {
        getInTime(storage()->removeToken(client_));
        getInTime(storage()->removeClientIdentifier(client_));
    }

    PrivateSession session_;
    KeychainConfiguration configuration_;
    TovrelAccountsClient client_{"canary-client",
                                 "canary-client-secret",
                                 TovrelAccountsRealm::tovrelstudios,
                                 TovrelAccountsEnvironment::production(),
                                 {}};
    TovrelAccountsToken token_;
    TovrelAccountsUserProfile profile_{"canary-first", "canary-last", "canary@mail.example"};
};

} // namespace

TEST_F(KeyringStorage, GivesBackEveryItem) {
    storeEverything();
    EXPECT_EQ(getInTime(storage()->token(client_)), token_);
    EXPECT_EQ(getInTime(storage()->clientIdentifier(client_)), "canary-client");
    EXPECT_EQ(getInTime(storage()->userProfile(client_)), profile_);
    EXPECT_EQ(getInTime(storage()->appleUserProfile(client_)), profile_);
    EXPECT_EQ(getInTime(storage()->appleSignInUser(client_)), "canary-user");
    removeEverything();
    EXPECT_EQ(getInTime(storage()->token(client_)), std::nullopt);
    EXPECT_EQ(getInTime(storage()->clientIdentifier(client_)), std::nullopt);
    EXPECT_EQ(getInTime(storage()->userProfile(client_)), profile_);
    EXPECT_THAT(written(), IsEmpty());
}

TEST_F(KeyringStorage, ReadsALockedKeyringAsNothingAndLosesNothing) {
    storeEverything();
    session_.lockKeyring();
    EXPECT_EQ(getInTime(storage()->token(client_)), std::nullopt);
    EXPECT_EQ(getInTime(storage()->userProfile(client_)), std::nullopt);
    EXPECT_EQ(getInTime(storage()->appleSignInUser(client_)), std::nullopt);
    session_.unlockKeyring();
    EXPECT_EQ(getInTime(storage()->token(client_)), token_);
    EXPECT_EQ(getInTime(storage()->userProfile(client_)), profile_);
}

TEST_F(KeyringStorage, ReportsRemovalsThatDidNotRemove) {
    storeEverything();
    session_.lockKeyring();
    removeEverything();
    const std::vector<std::string> messages = writtenMessages();
    ASSERT_THAT(messages, SizeIs(2));
    EXPECT_THAT(messages[0], HasSubstr("Could not remove TovrelAcccounts."));
    EXPECT_THAT(messages[0], HasSubstr("the keychain is locked"));
    session_.unlockKeyring();
    EXPECT_EQ(getInTime(storage()->token(client_)), token_);
}

TEST_F(KeyringStorage, TellsNoSecretWhateverFails) {
    storeEverything();
    const auto kept = storage();
    const auto provoke = [this] {
        storeEverything();
        static_cast<void>(getInTime(storage()->token(client_)));
        removeEverything();
    };
    session_.lockKeyring();
    provoke();
    session_.killKeyring();
    provoke();
    session_.killBus();
    provoke();
    const std::vector<std::string> messages = writtenMessages();
    EXPECT_THAT(messages, SizeIs(3 * 7));
    EXPECT_THAT(messages, Each(Not(HasSubstr("canary"))));
}

} // namespace tovrel::tests
