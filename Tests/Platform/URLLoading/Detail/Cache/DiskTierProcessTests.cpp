#include <Platform/URLLoading/Detail/Cache/DiskFixture.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskTraffic.hpp>

#include <chrono>
#include <csignal>
#include <fstream>
#include <poll.h>
#include <sqlite3.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tovrel::tests {
namespace {

constexpr std::chrono::seconds deadline{60};

const std::string url = "https://api.example/of-the-peer";

/// Another process at the same folder, killed with this object unless it has ended.
class Peer {
public:
    Peer(const std::string& role, const std::filesystem::path& folder, std::uint32_t number = 0) {
        const std::string path = folder.string();
        const std::string text = std::to_string(number);
        int ends[2];
        if (::pipe(ends) != 0) {
            throw std::runtime_error("no pipe");
        }
        process_ = ::fork();
        if (process_ == 0) {
            ::dup2(ends[1], STDOUT_FILENO);
            ::close(ends[0]);
            ::close(ends[1]);
            ::execl(DISK_PEER, DISK_PEER, role.c_str(), path.c_str(), text.c_str(), static_cast<char*>(nullptr));
            ::_exit(127);
        }
        ::close(ends[1]);
        output_ = ends[0];
    }

    ~Peer() {
        kill();
        ::close(output_);
    }

    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    /// Whether it says that it is ready, in time.
    [[nodiscard]] bool isReady() const {
        pollfd state{output_, POLLIN, 0};
        char byte = 0;
        return ::poll(&state, 1, static_cast<int>(std::chrono::milliseconds(deadline).count())) == 1 &&
               ::read(output_, &byte, 1) == 1;
    }

    void kill() {
        if (process_ > 0) {
            ::kill(process_, SIGKILL);
            ::waitpid(process_, nullptr, 0);
            process_ = -1;
        }
    }

    /// Its exit status, or -1 if it does not end in time or by itself.
    int status() {
        const auto end = std::chrono::steady_clock::now() + deadline;
        int status = 0;
        while (::waitpid(process_, &status, WNOHANG) == 0) {
            if (std::chrono::steady_clock::now() > end) {
                kill();
                return -1;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        process_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t process_ = -1;
    int output_ = -1;
};

class DiskTierProcess : public DiskTest {
protected:
    /// What the database says of itself.
    [[nodiscard]] std::string integrity() const {
        std::string result;
        sqlite3* database = nullptr;
        if (sqlite3_open(file().c_str(), &database) == SQLITE_OK) {
            sqlite3_exec(
                database, "PRAGMA integrity_check",
                [](void* text, int, char** values, char**) {
                    *static_cast<std::string*>(text) += values[0];
                    return 0;
                },
                &result, nullptr);
        }
        sqlite3_close(database);
        return result;
    }
};

TEST_F(DiskTierProcess, FindsWhatAnotherHasStored) {
    EXPECT_EQ(Peer("leave", folder()).status(), 0);
    EXPECT_EQ(loadBody(tier(), url), "body");
}

TEST_F(DiskTierProcess, FindsWhatAnotherHasStoredWithItsLastBreath) {
    EXPECT_EQ(Peer("leave-static", folder()).status(), 0);
    EXPECT_EQ(loadBody(tier(), url), "body");
}

TEST_F(DiskTierProcess, EndsInPeaceAtADamagedFile) {
    std::filesystem::create_directories(folder());
    std::ofstream(file()) << bytesOf(50000);
    EXPECT_EQ(Peer("leave-static", folder()).status(), 0);
    EXPECT_EQ(loadBody(tier(), url), "body");
}

TEST_F(DiskTierProcess, SweepsWhatAKilledWriterHasLeft) {
    std::uint64_t empty = 0;
    {
        const auto cache = tier();
        store(cache, "before", "", "head", "body");
        empty = cache->usage();
    }
    Peer peer("stream", folder());
    ASSERT_TRUE(peer.isReady());
    {
        // While it lives, its body is its own.
        const auto cache = tier();
        EXPECT_GT(cache->usage(), empty + 700000);
        EXPECT_TRUE(cache->find(url).empty());
    }
    peer.kill();
    const auto cache = tier();
    EXPECT_EQ(cache->usage(), empty);
    EXPECT_EQ(loadBody(cache, "before"), "body");
    EXPECT_TRUE(cache->find(url).empty());
}

TEST_F(DiskTierProcess, SurvivesThatOthersAreKilledAtAnyTime) {
    for (std::uint32_t round = 0; round < 12; ++round) {
        Peer peer("run", folder(), round);
        ASSERT_TRUE(peer.isReady());
        // The moment of death is what this test is about, so it has to pass by itself.
        std::this_thread::sleep_for(std::chrono::milliseconds(7 * round));
        peer.kill();
        const auto cache = tier(std::uint64_t{4} << 20U);
        DiskTraffic traffic(cache, round);
        EXPECT_TRUE(traffic.checkAll());
        EXPECT_LE(cache->usage(), std::uint64_t{4} << 20U);
        store(cache, "mine", "", "head", "body");
        EXPECT_EQ(loadBody(cache, "mine"), "body");
    }
    EXPECT_EQ(integrity(), "ok");
}

TEST_F(DiskTierProcess, SharesItsFolderWithOthers) {
    {
        Peer first("work", folder(), 1);
        Peer second("work", folder(), 2);
        const auto cache = DiskTier::make(folder(), std::uint64_t{4} << 20U, [] { return Date::now(); });
        DiskTraffic traffic(cache, 3);
        for (int step = 0; step < 1500; ++step) {
            ASSERT_TRUE(traffic.step());
        }
        EXPECT_GT(traffic.found(), 50);
        EXPECT_EQ(first.status(), 0);
        EXPECT_EQ(second.status(), 0);
        EXPECT_LE(cache->usage(), std::uint64_t{4} << 20U);
    }
    EXPECT_EQ(integrity(), "ok");
    DiskTraffic traffic(tier(), 4);
    EXPECT_TRUE(traffic.checkAll());
    EXPECT_GT(traffic.found(), 5);
}

TEST_F(DiskTierProcess, SurvivesThatAnotherReplacesTheFile) {
    Peer first("run", folder(), 1);
    Peer second("run", folder(), 2);
    ASSERT_TRUE(first.isReady());
    ASSERT_TRUE(second.isReady());
    const auto cache = tier(std::uint64_t{4} << 20U);
    DiskTraffic traffic(cache, 3);
    for (int round = 0; round < 10; ++round) {
        for (int step = 0; step < 20; ++step) {
            ASSERT_TRUE(traffic.step());
        }
        // Removed as a user would who clears folders by hand.
        std::error_code error;
        std::filesystem::remove_all(folder(), error);
        advance(1.5);
    }
    first.kill();
    second.kill();
    advance(11);
    store(cache, "mine", "", "head", "body");
    EXPECT_EQ(loadBody(cache, "mine"), "body");
}

TEST_F(DiskTierProcess, DropsWhatFindsNoRoomAndGoesOnWhenThereIs) {
    for (const std::uint32_t bytes : {0U, 1U, 4096U, 20000U, 33000U, 60000U, 150000U, 400000U, 1000000U}) {
        std::filesystem::remove_all(folder());
        EXPECT_EQ(Peer("fill", folder(), bytes).status(), 0) << bytes;
        EXPECT_EQ(integrity(), "ok") << bytes;
    }
}

TEST_F(DiskTierProcess, SurvivesAFullFileSystem) {
    const std::filesystem::path mount = parent_ / "mount";
    std::filesystem::create_directories(mount);
    if (::mount("none", mount.c_str(), "tmpfs", 0, "size=1m") != 0) {
        GTEST_SKIP() << "no right to mount a file system";
    }
    {
        const auto cache = DiskTier::make(mount / "cache", capacity, [clock = clock_] { return Date(clock->load()); });
        DiskTraffic traffic(cache, 1);
        for (int step = 0; step < 600; ++step) {
            EXPECT_TRUE(traffic.step());
            advance(1);
        }
        EXPECT_GT(traffic.found(), 10);
        cache->remove(DiskTraffic::url(1));
        EXPECT_TRUE(cache->find(DiskTraffic::url(1)).empty());
        cache->removeAll();
        advance(11);
        store(cache, url, "", "head", "body");
        EXPECT_EQ(loadBody(cache, url), "body");
    }
    EXPECT_EQ(::umount(mount.c_str()), 0);
}

TEST_F(DiskTierProcess, StoresNothingInAFolderItMayNotWriteTo) {
    ::chmod(parent_.c_str(), 0755);
    std::filesystem::create_directories(folder());
    ::chmod(folder().c_str(), 0555);
    EXPECT_EQ(Peer("read", folder()).status(), 0);
    EXPECT_EQ(Peer("read", folder() / "below" / "it").status(), 0);
    ::chmod(folder().c_str(), 0755);
}

TEST_F(DiskTierProcess, StoresNothingInFilesItMayNotWriteTo) {
    { store(tier(), url, "", "head", "body"); }
    ::chmod(parent_.c_str(), 0755);
    for (const auto& item : std::filesystem::directory_iterator(folder())) {
        ::chmod(item.path().c_str(), 0444);
    }
    ::chmod(folder().c_str(), 0555);
    EXPECT_EQ(Peer("read", folder()).status(), 0);
    ::chmod(folder().c_str(), 0755);
}

} // namespace
} // namespace tovrel::tests
