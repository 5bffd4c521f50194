#include <Platform/URLLoading/Detail/Cache/DiskFixture.hpp>

#include <fstream>
#include <sqlite3.h>

namespace tovrel::tests {
namespace {

const std::string url = "https://api.example/items";

/// Another connection that keeps everybody else from writing.
class Blockade {
public:
    explicit Blockade(const std::filesystem::path& file) {
        EXPECT_EQ(sqlite3_open(file.c_str(), &database_), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database_, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    }

    ~Blockade() { sqlite3_close(database_); }

    Blockade(const Blockade&) = delete;
    Blockade& operator=(const Blockade&) = delete;

private:
    sqlite3* database_ = nullptr;
};

class DiskTierFault : public DiskTest {};

TEST_F(DiskTierFault, OfALockDropsTheWriteAndNothingElse) {
    const auto cache = tier();
    store(cache, url, "", "head", "body");
    cache->flush();
    {
        const Blockade blockade(file());
        store(cache, "dropped", "", "head", "body");
        EXPECT_TRUE(cache->find("dropped").empty());
        EXPECT_EQ(loadBody(cache, url), "body");
        const auto writer = cache->write("dropped");
        ASSERT_NE(writer, nullptr);
        writer->append(bytesOf(200000));
        cache->flush();
        EXPECT_TRUE(writer->hasGivenUp());
    }
    EXPECT_TRUE(cache->find("dropped").empty());
    store(cache, "kept", "", "head", "body");
    EXPECT_EQ(loadBody(cache, "kept"), "body");
}

TEST_F(DiskTierFault, OfALockNeverBringsBackWhatWasRemoved) {
    const auto cache = tier();
    for (const char* name : {"all", "one", "kept"}) {
        store(cache, name, "1", "head", "body");
        store(cache, name, "2", "head", "body");
    }
    cache->flush();
    {
        const Blockade blockade(file());
        cache->remove("all");
        cache->remove("one", "1");
        EXPECT_EQ(cache->find("all").size(), 0U);
        EXPECT_EQ(cache->find("one").size(), 1U);
        EXPECT_EQ(cache->find("kept").size(), 2U);
    }
    store(cache, "all", "3", "head", "new");
    EXPECT_EQ(loadBody(cache, "all"), "new");
    EXPECT_EQ(cache->find("one").size(), 1U);
    EXPECT_EQ(cache->find("kept").size(), 2U);
    {
        const Blockade blockade(file());
        cache->removeAll();
        EXPECT_EQ(cache->find("kept").size(), 0U);
    }
    EXPECT_EQ(cache->find("kept").size(), 0U);
    EXPECT_FALSE(cache->mayContain("kept"));
}

TEST_F(DiskTierFault, OfAFileInPlaceOfTheFolderStoresNothing) {
    std::ofstream(folder()) << "a file";
    const auto cache = tier();
    store(cache, url, "", "head", "body");
    EXPECT_TRUE(cache->find(url).empty());
    EXPECT_EQ(cache->usage(), 0U);
    EXPECT_EQ(cache->write(url), nullptr);
    EXPECT_FALSE(cache->mayContain(url));
    EXPECT_EQ(std::filesystem::file_size(folder()), 6U);
}

TEST_F(DiskTierFault, ThatIsOverIsForgottenTenSecondsLater) {
    std::ofstream(folder()) << "a file";
    const auto cache = tier();
    cache->flush();
    EXPECT_TRUE(cache->find(url).empty());
    std::filesystem::remove(folder());
    advance(9);
    EXPECT_EQ(cache->write(url), nullptr);
    advance(2);
    store(cache, url, "", "head", "body");
    EXPECT_EQ(loadBody(cache, url), "body");
}

TEST_F(DiskTierFault, EndsWhenTheClockIsSetBack) {
    std::ofstream(folder()) << "a file";
    const auto cache = tier();
    EXPECT_TRUE(cache->find(url).empty());
    EXPECT_EQ(cache->write(url), nullptr);
    std::filesystem::remove(folder());
    advance(-1000);
    store(cache, url, "", "head", "body");
    EXPECT_EQ(loadBody(cache, url), "body");
}

TEST_F(DiskTierFault, NeverBringsBackWhatWasRemovedMeanwhile) {
    const std::filesystem::path elsewhere = parent_ / "elsewhere";
    const auto cache = tier();
    store(cache, url, "", "head", "body");
    store(cache, "kept", "", "head", "body");
    { tier()->flush(); }
    cache->flush();
    std::filesystem::rename(folder(), elsewhere);
    std::ofstream(folder()) << "a file";
    advance(2);
    EXPECT_TRUE(cache->find(url).empty());
    cache->remove(url);
    cache->flush();
    std::filesystem::remove(folder());
    std::filesystem::rename(elsewhere, folder());
    advance(11);
    EXPECT_TRUE(cache->find(url).empty());
    EXPECT_EQ(loadBody(cache, "kept"), "body");
}

TEST_F(DiskTierFault, OfADeletedFileIsNoticedASecondLater) {
    const auto cache = tier();
    store(cache, url, "", "head", "body");
    cache->flush();
    for (const char* suffix : {"", "-wal", "-shm"}) {
        std::filesystem::remove(file().string() + suffix);
    }
    store(cache, "lost", "", "head", "body");
    cache->flush();
    advance(2);
    EXPECT_TRUE(cache->find(url).empty());
    store(cache, url, "", "head", "new");
    EXPECT_EQ(loadBody(cache, url), "new");
    EXPECT_EQ(loadBody(tier(), url), "new");
}

TEST_F(DiskTierFault, OfADeletedFolderIsNoticedASecondLater) {
    const auto cache = tier();
    const auto writer = cache->write("large");
    writer->append(bytesOf(300000));
    store(cache, url, "", "head", "body");
    cache->flush();
    std::filesystem::remove_all(folder());
    advance(2);
    EXPECT_TRUE(cache->find(url).empty());
    writer->append(bytesOf(300000));
    writer->commit("", "head");
    EXPECT_TRUE(cache->find("large").empty());
    store(cache, url, "", "head", "new");
    cache->flush();
    EXPECT_EQ(loadBody(tier(), url), "new");
}

} // namespace
} // namespace tovrel::tests
