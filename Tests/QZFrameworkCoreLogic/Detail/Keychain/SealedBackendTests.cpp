#include <QZFrameworkCoreLogic/Detail/Keychain/RecordCoding.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/SealedBackend.hpp>

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <Support/TemporaryDirectory.hpp>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace tovrel::tests {

using detail::KeychainReading;
using detail::KeychainRecord;
using detail::SealedBackend;
using detail::sealedFileName;

namespace {

namespace fs = std::filesystem;

Clock::Instant soon() {
    return Clock::system()->now() + std::chrono::seconds(10);
}

KeychainRecord record(std::string_view value) {
    return KeychainRecord(Data(value), KeychainAccessibility::afterFirstUnlock);
}

std::string bytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void overwrite(const fs::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

/// Runs a function in a process of its own, which has this thread alone.
class ChildProcess {
public:
    explicit ChildProcess(const std::function<void()>& function) : process_(::fork()) {
        if (process_ == 0) {
            try {
                function();
            } catch (const std::exception&) {
                ::_exit(1);
            }
            ::_exit(0);
        }
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess() {
        if (process_ > 0) {
            ::kill(process_, SIGKILL);
            wait();
        }
    }

    void kill() const { ::kill(process_, SIGKILL); }

    /// Whether it ended well.
    bool wait() {
        int status = -1;
        ::waitpid(process_, &status, 0);
        process_ = -1;
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

private:
    pid_t process_;
};

class SealedBackendTest : public ::testing::Test {
protected:
    [[nodiscard]] std::optional<std::string> read(const std::string& key) {
        const KeychainReading reading = backend_.read(key, soon());
        return reading.record ? std::optional(reading.record->value.string()) : std::nullopt;
    }

    void write(const std::string& key, std::string_view value) { backend_.write(key, record(value), soon()); }

    [[nodiscard]] fs::path fileOf(const std::string& key) const { return folder_ / sealedFileName(key); }

    /// The kind of the error that an action ends with.
    template <class Action>
    static std::optional<KeychainError::Kind> errorOf(Action&& action) {
        try {
            std::forward<Action>(action)();
        } catch (const KeychainError& error) {
            return error.kind();
        }
        return std::nullopt;
    }

    [[nodiscard]] std::optional<KeychainError::Kind> errorOfReading(const std::string& key) {
        return errorOf([&] { static_cast<void>(read(key)); });
    }

    TemporaryDirectory directory_;
    fs::path folder_ = directory_.path() / "service" / "keychain";
    SealedBackend backend_{folder_};
};

} // namespace

TEST_F(SealedBackendTest, OutlivesItsProcess) {
    ChildProcess child([this] { write("key", "value"); });
    ASSERT_TRUE(child.wait());
    EXPECT_EQ(read("key"), "value");
    const KeychainReading reading = backend_.read("key", soon());
    EXPECT_EQ(reading.record->accessibility, KeychainAccessibility::afterFirstUnlock);
}

TEST_F(SealedBackendTest, WritesNoSecretInTheClear) {
    write("key", "a-secret-of-some-length");
    for (const fs::directory_entry& file : fs::directory_iterator(folder_)) {
        EXPECT_EQ(bytesOf(file.path()).find("secret-of"), std::string::npos) << file.path();
    }
}

TEST_F(SealedBackendTest, KeepsItsFilesToItsUser) {
    const mode_t previous = ::umask(0);
    write("key", "value");
    ::umask(previous);
    EXPECT_EQ(fs::status(folder_).permissions(), fs::perms::owner_all);
    for (const fs::directory_entry& file : fs::directory_iterator(folder_)) {
        EXPECT_EQ(file.status().permissions(), fs::perms::owner_read | fs::perms::owner_write) << file.path();
    }
}

TEST_F(SealedBackendTest, NarrowsPermissionsThatSomebodyWidened) {
    write("key", "value");
    fs::permissions(folder_, fs::perms::all);
    fs::permissions(folder_ / "key", fs::perms::all);
    fs::permissions(fileOf("key"), fs::perms::all);
    EXPECT_EQ(read("key"), "value");
    write("other", "value");
    EXPECT_EQ(fs::status(folder_).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(folder_ / "key").permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(fileOf("key")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(SealedBackendTest, RefusesFilesOfAnotherUser) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can give files away";
    }
    write("key", "value");
    ASSERT_EQ(::chown(fileOf("key").c_str(), 65534, 65534), 0);
    EXPECT_EQ(errorOfReading("key"), KeychainError::Kind::denied);
    ASSERT_EQ(::chown(folder_.c_str(), 65534, 65534), 0);
    EXPECT_EQ(errorOf([this] { write("key", "other"); }), KeychainError::Kind::denied);
}

TEST_F(SealedBackendTest, IsDeniedWhereItMayNotWrite) {
    const fs::path place = directory_.path() / "place";
    fs::create_directory(place);
    ChildProcess child([&] {
        // As root everything is allowed.
        fs::permissions(place, fs::perms::owner_read | fs::perms::owner_exec);
        fs::permissions(directory_.path(), fs::perms::all);
        if (::geteuid() == 0 && ::seteuid(65534) != 0) {
            throw std::runtime_error("no other user");
        }
        const auto error = errorOf([&] { SealedBackend(place / "keychain").write("key", record("value"), soon()); });
        if (error != KeychainError::Kind::denied) {
            throw std::runtime_error("not denied");
        }
    });
    EXPECT_TRUE(child.wait());
}

TEST_F(SealedBackendTest, FollowsNoLinks) {
    write("key", "value");
    fs::rename(fileOf("key"), directory_.path() / "elsewhere");
    fs::create_symlink(directory_.path() / "elsewhere", fileOf("key"));
    EXPECT_EQ(errorOfReading("key"), KeychainError::Kind::denied);
    write("key", "new");
    EXPECT_FALSE(fs::is_symlink(fileOf("key")));
    EXPECT_EQ(read("key"), "new");
}

TEST_F(SealedBackendTest, CallsAnEntryOfAnotherKeyCorrupt) {
    write("key", "value");
    overwrite(folder_ / "key", std::string(32, 'k'));
    EXPECT_EQ(errorOfReading("key"), KeychainError::Kind::corrupt);
}

TEST_F(SealedBackendTest, CallsAnEntryCorruptWhoseKeyIsGoneAndStartsAnew) {
    write("key", "value");
    write("other", "value");
    for (const std::string& damaged : {std::string(), std::string("short"), std::string(33, 'k')}) {
        overwrite(folder_ / "key", damaged);
        EXPECT_EQ(errorOfReading("key"), KeychainError::Kind::corrupt);
    }
    fs::remove(folder_ / "key");
    EXPECT_EQ(errorOfReading("key"), KeychainError::Kind::corrupt);
    write("key", "again");
    EXPECT_EQ(read("key"), "again");
    EXPECT_EQ(errorOfReading("other"), KeychainError::Kind::corrupt);
}

TEST_F(SealedBackendTest, NoticesEveryFlippedBit) {
    write("key", "value");
    const std::string bytes = bytesOf(fileOf("key"));
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        std::string flipped = bytes;
        flipped[index] = static_cast<char>(flipped[index] ^ 1);
        overwrite(fileOf("key"), flipped);
        EXPECT_EQ(errorOfReading("key"), KeychainError::Kind::corrupt) << index;
    }
    overwrite(fileOf("key"), bytes);
    EXPECT_EQ(read("key"), "value");
}

TEST_F(SealedBackendTest, NoticesEveryTruncation) {
    write("key", "value");
    const std::string bytes = bytesOf(fileOf("key"));
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        overwrite(fileOf("key"), bytes.substr(0, size));
        EXPECT_EQ(errorOfReading("key"), KeychainError::Kind::corrupt) << size;
    }
    overwrite(fileOf("key"), bytes + "x");
    EXPECT_EQ(errorOfReading("key"), KeychainError::Kind::corrupt);
}

TEST_F(SealedBackendTest, NoticesFilesThatChangedPlaces) {
    write("one", "1");
    write("two", "2");
    fs::rename(fileOf("one"), folder_ / "swap");
    fs::rename(fileOf("two"), fileOf("one"));
    fs::rename(folder_ / "swap", fileOf("two"));
    EXPECT_EQ(errorOfReading("one"), KeychainError::Kind::corrupt);
    EXPECT_EQ(errorOfReading("two"), KeychainError::Kind::corrupt);
}

TEST_F(SealedBackendTest, ReplacesAndRemovesWhatIsCorrupt) {
    for (const char* key : {"one", "two"}) {
        write(key, "value");
        overwrite(fileOf(key), "garbage");
    }
    write("one", "again");
    EXPECT_EQ(read("one"), "again");
    EXPECT_TRUE(backend_.remove("two", soon()));
    EXPECT_EQ(read("two"), std::nullopt);
}

TEST_F(SealedBackendTest, NoticesChangesOfOtherProcesses) {
    write("key", "value");
    const KeychainReading reading = backend_.read("key", soon());
    const KeychainReading absent = backend_.read("other", soon());
    EXPECT_TRUE(reading.witness->holds());
    EXPECT_TRUE(absent.witness->holds());
    ChildProcess child([this] {
        // The first new file could get the number of the old one.
        write("key", "other");
        write("key", "value");
        write("other", "value");
    });
    ASSERT_TRUE(child.wait());
    EXPECT_FALSE(reading.witness->holds());
    EXPECT_FALSE(absent.witness->holds());
}

TEST_F(SealedBackendTest, NoticesARemovalByHand) {
    write("key", "value");
    const KeychainReading reading = backend_.read("key", soon());
    fs::remove_all(folder_);
    EXPECT_FALSE(reading.witness->holds());
    EXPECT_EQ(read("key"), std::nullopt);
    EXPECT_FALSE(backend_.remove("key", soon()));
    write("key", "again");
    EXPECT_EQ(read("key"), "again");
}

TEST_F(SealedBackendTest, LetsProcessesWriteAtOnce) {
    constexpr int processes = 4;
    constexpr int rounds = 50;
    std::vector<std::unique_ptr<ChildProcess>> children;
    for (int process = 0; process < processes; ++process) {
        const std::string own(10000, static_cast<char>('a' + process));
        children.push_back(std::make_unique<ChildProcess>([&, own] {
            for (int round = 0; round < rounds; ++round) {
                write("shared", own);
                write("own" + own.substr(0, 1), std::to_string(round));
                const std::optional<std::string> seen = read("shared");
                if (!seen || seen->size() != own.size() || seen->find_first_not_of(seen->front()) != seen->npos) {
                    throw std::runtime_error("a torn entry");
                }
            }
        }));
    }
    for (const auto& child : children) {
        EXPECT_TRUE(child->wait());
    }
    for (int process = 0; process < processes; ++process) {
        EXPECT_EQ(read(std::string("own") + static_cast<char>('a' + process)), std::to_string(rounds - 1));
    }
}

TEST_F(SealedBackendTest, SurvivesBeingKilledWhileItWrites) {
    const std::string first(200000, '1');
    const std::string second(200000, '2');
    write("key", first);
    for (int round = 0; round < 40; ++round) {
        ChildProcess child([&] {
            for (int index = 0;; ++index) {
                write("key", index % 2 == 0 ? second : first);
            }
        });
        std::this_thread::sleep_for(std::chrono::microseconds(200 * round));
        child.kill();
        child.wait();
        const std::optional<std::string> seen = read("key");
        ASSERT_TRUE(seen == first || seen == second) << "round " << round;
    }
    write("key", "after");
    EXPECT_EQ(read("key"), "after");
    // The key, the lock and the entry: nothing half-written stays.
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 3);
}

TEST_F(SealedBackendTest, KeepsTheOldEntryWhenTheDiskIsFull) {
    const fs::path disk = directory_.path() / "disk";
    fs::create_directory(disk);
    if (::mount("none", disk.c_str(), "tmpfs", 0, "size=128k,mode=0700") != 0) {
        GTEST_SKIP() << "no right to mount a small disk";
    }
    SealedBackend backend(disk / "keychain");
    backend.write("key", record("value"), soon());
    const auto error = errorOf([&] { backend.write("key", record(std::string(256 * 1024, 'v')), soon()); });
    const KeychainReading reading = backend.read("key", soon());
    const auto files = std::distance(fs::directory_iterator(disk / "keychain"), fs::directory_iterator());
    ASSERT_EQ(::umount2(disk.c_str(), MNT_DETACH), 0);
    EXPECT_EQ(error, KeychainError::Kind::unavailable);
    EXPECT_EQ(reading.record->value, Data("value"));
    EXPECT_EQ(files, 3);
}

TEST_F(SealedBackendTest, WaitsForItsTurnOnlyUntilTheDeadline) {
    write("key", "value");
    const int lock = ::open((folder_ / "lock").c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(::flock(lock, LOCK_EX), 0);
    const auto deadline = Clock::system()->now() + std::chrono::milliseconds(20);
    EXPECT_EQ(errorOf([&] { backend_.write("key", record("other"), deadline); }), KeychainError::Kind::unavailable);
    EXPECT_EQ(errorOf([&] { backend_.remove("key", deadline); }), KeychainError::Kind::unavailable);
    ::close(lock);
    EXPECT_EQ(read("key"), "value");
}

TEST(RecordCoding, RefusesBytesThatAreNoRecord) {
    EXPECT_EQ(detail::decodeRecord(""), std::nullopt);
    EXPECT_EQ(detail::decodeRecord(std::string_view("\0value", 6)), std::nullopt);
    EXPECT_EQ(detail::decodeRecord("value"), std::nullopt);
    const Data encoded = detail::encodeRecord(KeychainRecord(Data("v"), KeychainAccessibility::whenUnlocked));
    const std::optional<KeychainRecord> decoded = detail::decodeRecord(encoded.view());
    EXPECT_EQ(decoded->value, Data("v"));
    EXPECT_EQ(decoded->accessibility, KeychainAccessibility::whenUnlocked);
}

} // namespace tovrel::tests
