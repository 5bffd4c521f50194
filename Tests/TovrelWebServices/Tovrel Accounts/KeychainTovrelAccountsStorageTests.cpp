#include <TovrelWebServices/Tovrel Accounts/KeychainTovrelAccountsStorage.hpp>

#include <gmock/gmock.h>

#include <cstdio>
#include <fstream>
#include <Support/Await.hpp>
#include <Support/SystemLogTest.hpp>
#include <Support/TemporaryDirectory.hpp>

namespace tovrel::tests {

using ::testing::Each;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

namespace {

namespace fs = std::filesystem;

const std::string base = "TovrelAcccounts.tovrelstudios."
                         "TovrelAccountsEnvironment(environment: TovrelWebServices.TovrelEnvironment.production)";

TovrelAccountsClient clientOf(std::string identifier, TovrelAccountsRealm realm = TovrelAccountsRealm::tovrelstudios,
                              TovrelAccountsEnvironment environment = TovrelAccountsEnvironment::production()) {
    return TovrelAccountsClient(std::move(identifier), "client-secret", realm, environment, {"content"});
}

TovrelAccountsToken sampleToken() {
    TovrelAccountsToken token;
    token.accessToken = "canary-access";
    token.accessTokenExpiresIn = 300.25;
    token.refreshToken = "canary-refresh";
    token.refreshTokenExpiresIn = 1800.1;
    token.timestamp = 1732190000.123456789;
    token.idToken = "canary-id";
    token.tokenType = "Bearer";
    token.notBeforePolicy = -(std::int64_t{1} << 60);
    token.scope = "openid content";
    return token;
}

class KeychainTovrelAccountsStorageTest : public SystemLogTest {
protected:
    Keychain keychain_ = Keychain::inMemory();
    std::shared_ptr<KeychainTovrelAccountsStorage> storage_ = KeychainTovrelAccountsStorage::make(keychain_);
    TovrelAccountsClient client_ = clientOf("reader");
};

/// What a Python program prints that gets `arguments`; it is the independent reader and writer of property lists.
std::string python(const std::string& program, const std::vector<std::string>& arguments) {
    std::string command = "python3 -c '" + program + "'";
    for (const std::string& argument : arguments) {
        command += " '" + argument + "'";
    }
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(::popen(command.c_str(), "r"), ::pclose);
    std::string output;
    for (int character = std::fgetc(pipe.get()); character != EOF; character = std::fgetc(pipe.get())) {
        output.push_back(static_cast<char>(character));
    }
    return output;
}

} // namespace

TEST_F(KeychainTovrelAccountsStorageTest, HoldsNothingAtFirst) {
    EXPECT_EQ(getInTime(storage_->token(client_)), std::nullopt);
    EXPECT_EQ(getInTime(storage_->clientIdentifier(client_)), std::nullopt);
    EXPECT_EQ(getInTime(storage_->userProfile(client_)), std::nullopt);
    EXPECT_EQ(getInTime(storage_->appleUserProfile(client_)), std::nullopt);
    EXPECT_EQ(getInTime(storage_->appleSignInUser(client_)), std::nullopt);
    getInTime(storage_->removeToken(client_));
    getInTime(storage_->removeClientIdentifier(client_));
    EXPECT_THAT(written(), IsEmpty());
}

TEST_F(KeychainTovrelAccountsStorageTest, GivesBackEveryItem) {
    const TovrelAccountsUserProfile profile("Ada", std::nullopt, "ada@mail.example");
    const TovrelAccountsUserProfile appleProfile(std::nullopt, "Lovelace", std::nullopt);
    getInTime(storage_->setToken(client_, sampleToken()));
    getInTime(storage_->setClientIdentifier(client_));
    getInTime(storage_->setUserProfile(client_, profile));
    getInTime(storage_->setAppleUserProfile(client_, appleProfile));
    getInTime(storage_->setAppleSignInUser("001234.abc", client_));
    EXPECT_EQ(getInTime(storage_->token(client_)), sampleToken());
    EXPECT_EQ(getInTime(storage_->clientIdentifier(client_)), "reader");
    EXPECT_EQ(getInTime(storage_->userProfile(client_)), profile);
    EXPECT_EQ(getInTime(storage_->appleUserProfile(client_)), appleProfile);
    EXPECT_EQ(getInTime(storage_->appleSignInUser(client_)), "001234.abc");
}

TEST_F(KeychainTovrelAccountsStorageTest, KeepsATokenWithoutOptionalFields) {
    TovrelAccountsToken token = sampleToken();
    token.refreshToken.reset();
    token.idToken.reset();
    getInTime(storage_->setToken(client_, token));
    EXPECT_EQ(getInTime(storage_->token(client_)), token);
}

TEST_F(KeychainTovrelAccountsStorageTest, StoresUnderTheKeysThatOtherInstallationsUse) {
    getInTime(storage_->setToken(client_, sampleToken()));
    getInTime(storage_->setClientIdentifier(client_));
    getInTime(storage_->setUserProfile(client_, TovrelAccountsUserProfile("a", "b", "c")));
    getInTime(storage_->setAppleUserProfile(client_, TovrelAccountsUserProfile("d", "e", "f")));
    getInTime(storage_->setAppleSignInUser("user", client_));
    for (const char* suffix : {".Token", ".UserProfile", ".UserProfile.Apple"}) {
        const std::optional<Data> bytes = getInTime(keychain_.data(base + suffix));
        ASSERT_TRUE(bytes) << suffix;
        EXPECT_TRUE(bytes->view().starts_with("bplist00")) << suffix;
    }
    EXPECT_EQ(getInTime(keychain_.string(base + ".ClientIdentifier")), "reader");
    EXPECT_EQ(getInTime(keychain_.string(base + ".User.Apple")), "user");
}

TEST_F(KeychainTovrelAccountsStorageTest, KeepsRealmsAndStagesApart) {
    const std::vector<std::pair<TovrelAccountsClient, std::string>> clients{
        {clientOf("1", TovrelAccountsRealm::marrowquill), "marrowquill.TovrelAccountsEnvironment(environment: "
                                                          "TovrelWebServices.TovrelEnvironment.production)"},
        {clientOf("2", TovrelAccountsRealm::tovrelstudios, TovrelAccountsEnvironment::development()),
         "tovrelstudios.TovrelAccountsEnvironment(environment: TovrelWebServices.TovrelEnvironment.development)"},
        {clientOf("3", TovrelAccountsRealm::tovrelstudios, TovrelAccountsEnvironment::test()),
         "tovrelstudios.TovrelAccountsEnvironment(environment: TovrelWebServices.TovrelEnvironment.test)"}};
    for (const auto& [client, middle] : clients) {
        getInTime(storage_->setClientIdentifier(client));
    }
    for (const auto& [client, middle] : clients) {
        EXPECT_EQ(getInTime(keychain_.string("TovrelAcccounts." + middle + ".ClientIdentifier")), client.identifier);
    }
    EXPECT_EQ(getInTime(storage_->clientIdentifier(client_)), std::nullopt);
}

TEST_F(KeychainTovrelAccountsStorageTest, SharesTheEntriesOfARealmAndStageBetweenClients) {
    getInTime(storage_->setToken(client_, sampleToken()));
    getInTime(storage_->setClientIdentifier(client_));
    const auto other = KeychainTovrelAccountsStorage::make(keychain_);
    EXPECT_EQ(getInTime(other->token(clientOf("another"))), sampleToken());
    EXPECT_EQ(getInTime(other->clientIdentifier(clientOf("another"))), "reader");
}

TEST_F(KeychainTovrelAccountsStorageTest, ReadsAGarbledEntryAsNoneAndLeavesIt) {
    for (const char* suffix : {".Token", ".UserProfile", ".UserProfile.Apple"}) {
        getInTime(keychain_.setData(base + suffix, Data("bplist00garbled"), KeychainAccessibility::afterFirstUnlock));
    }
    getInTime(keychain_.setData(base + ".User.Apple", Data("\xc3\x28"), KeychainAccessibility::afterFirstUnlock));
    EXPECT_EQ(getInTime(storage_->token(client_)), std::nullopt);
    EXPECT_EQ(getInTime(storage_->userProfile(client_)), std::nullopt);
    EXPECT_EQ(getInTime(storage_->appleUserProfile(client_)), std::nullopt);
    EXPECT_EQ(getInTime(storage_->appleSignInUser(client_)), std::nullopt);
    EXPECT_EQ(getInTime(keychain_.data(base + ".Token")), Data("bplist00garbled"));
}

TEST_F(KeychainTovrelAccountsStorageTest, KeepsProfilesAndTheAppleUserWhenTheTokenGoes) {
    const TovrelAccountsUserProfile profile("Ada", "Lovelace", "ada@mail.example");
    getInTime(storage_->setToken(client_, sampleToken()));
    getInTime(storage_->setClientIdentifier(client_));
    getInTime(storage_->setUserProfile(client_, profile));
    getInTime(storage_->setAppleUserProfile(client_, profile));
    getInTime(storage_->setAppleSignInUser("user", client_));
    getInTime(storage_->removeToken(client_));
    getInTime(storage_->removeClientIdentifier(client_));
    EXPECT_EQ(getInTime(storage_->token(client_)), std::nullopt);
    EXPECT_EQ(getInTime(storage_->clientIdentifier(client_)), std::nullopt);
    EXPECT_EQ(getInTime(storage_->userProfile(client_)), profile);
    EXPECT_EQ(getInTime(storage_->appleUserProfile(client_)), profile);
    EXPECT_EQ(getInTime(storage_->appleSignInUser(client_)), "user");
}

TEST_F(KeychainTovrelAccountsStorageTest, LeavesTheEntryWhenATokenCannotBeEncoded) {
    getInTime(storage_->setToken(client_, sampleToken()));
    TovrelAccountsToken broken = sampleToken();
    broken.scope = "\xff";
    getInTime(storage_->setToken(client_, broken));
    EXPECT_EQ(getInTime(storage_->token(client_)), sampleToken());
    EXPECT_THAT(writtenMessages(), SizeIs(1));
}

TEST_F(KeychainTovrelAccountsStorageTest, WorksInCancelledTasks) {
    getInTime(storage_->setToken(client_, sampleToken()));
    auto result = std::make_shared<std::optional<std::optional<TovrelAccountsToken>>>();
    const auto reading = Task::spawn(TaskPool::compute(), detail::keepResult(storage_->token(client_), result), true);
    getInTime(Task::join(reading));
    EXPECT_EQ(*result, std::optional(sampleToken()));
    getInTime(Task::join(Task::spawn(TaskPool::compute(), storage_->removeToken(client_), true)));
    EXPECT_EQ(getInTime(storage_->token(client_)), std::nullopt);
}

TEST_F(KeychainTovrelAccountsStorageTest, WritesPropertyListsThatOthersRead) {
    const TemporaryDirectory directory;
    getInTime(storage_->setToken(client_, sampleToken()));
    std::ofstream(directory.path() / "token.plist", std::ios::binary)
        << getInTime(keychain_.data(base + ".Token"))->view();
    EXPECT_EQ(python("import plistlib, sys\n"
                     "token = plistlib.load(open(sys.argv[1], \"rb\"), fmt=plistlib.FMT_BINARY)\n"
                     "for key in sorted(token): print(key, repr(token[key]) if not isinstance(token[key], float) "
                     "else token[key].hex())",
                     {(directory.path() / "token.plist").string()}),
              python("import sys\n"
                     "for line in [\"access_token \" + repr(\"canary-access\"), \"expires_in \" + (300.25).hex(), "
                     "\"id_token \" + repr(\"canary-id\"), \"not-before-policy \" + repr(-2**60), "
                     "\"refresh_expires_in \" + (1800.1).hex(), \"refresh_token \" + repr(\"canary-refresh\"), "
                     "\"scope \" + repr(\"openid content\"), \"timestamp \" + (1732190000.123456789).hex(), "
                     "\"token_type \" + repr(\"Bearer\")]: print(line)",
                     {}));
}

TEST_F(KeychainTovrelAccountsStorageTest, ReadsPropertyListsThatOthersWrote) {
    const TemporaryDirectory directory;
    const fs::path path = directory.path() / "token.plist";
    python("import plistlib, sys\n"
           "plistlib.dump({\"access_token\": \"canary-access\", \"expires_in\": 300.25, \"id_token\": \"canary-id\", "
           "\"not-before-policy\": -2**60, \"refresh_expires_in\": 1800.1, \"refresh_token\": \"canary-refresh\", "
           "\"scope\": \"openid content\", \"timestamp\": 1732190000.123456789, \"token_type\": \"Bearer\"}, "
           "open(sys.argv[1], \"wb\"), fmt=plistlib.FMT_BINARY)",
           {path.string()});
    std::ifstream file(path, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    ASSERT_FALSE(bytes.empty());
    getInTime(keychain_.setData(base + ".Token", Data(bytes), KeychainAccessibility::afterFirstUnlock));
    EXPECT_EQ(getInTime(storage_->token(client_)), sampleToken());
}

/// A keychain that fails: the log and the errors are searched for what was to be stored.
class FailingStorageTest : public SystemLogTest {
protected:
    FailingStorageTest() {
        configuration_.serviceName = "storage-tests";
        configuration_.backend = KeychainConfiguration::Backend::sealedStore;
        configuration_.directory = directory_.path() / "keychain";
        configuration_.deadline = std::chrono::milliseconds(50);
    }

    TemporaryDirectory directory_;
    KeychainConfiguration configuration_;
    TovrelAccountsClient client_ = clientOf("canary-client");
};

TEST_F(FailingStorageTest, ReportsWhatItCouldNotStoreOrRemoveAndTellsNoSecret) {
    std::ofstream(directory_.path() / "keychain") << "a file where the directory should be";
    const auto storage = KeychainTovrelAccountsStorage::make(Keychain(configuration_));
    getInTime(storage->setToken(client_, sampleToken()));
    getInTime(storage->setClientIdentifier(client_));
    getInTime(storage->setUserProfile(client_, TovrelAccountsUserProfile("canary-a", "canary-b", "canary-c")));
    getInTime(storage->setAppleUserProfile(client_, TovrelAccountsUserProfile("canary-a", "canary-b", "canary-c")));
    getInTime(storage->setAppleSignInUser("canary-user", client_));
    getInTime(storage->removeToken(client_));
    getInTime(storage->removeClientIdentifier(client_));
    EXPECT_EQ(getInTime(storage->token(client_)), std::nullopt);
    const std::vector<std::string> messages = writtenMessages();
    ASSERT_THAT(messages, SizeIs(7));
    EXPECT_THAT(messages[0], HasSubstr("Could not store " + base + ".Token: access to the keychain is denied"));
    EXPECT_THAT(messages[5], HasSubstr("Could not remove " + base + ".Token: "));
    EXPECT_THAT(messages, Each(Not(HasSubstr("canary"))));
    EXPECT_THAT(messages, Each(Not(HasSubstr("client-secret"))));
}

} // namespace tovrel::tests
