#include <Platform/URLLoading/Detail/Cache/DiskFixture.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskTraffic.hpp>

#include <fstream>
#include <random>
#include <sqlite3.h>

namespace tovrel::tests {
namespace {

const std::string url = "https://api.example/items";

class DiskTierDamage : public DiskTest {
protected:
    void fill() const {
        DiskTraffic traffic(tier(), 1);
        for (std::uint32_t number = 0; number < DiskTraffic::urls; ++number) {
            traffic.store(number, number % 4 == 0 ? 100000 : number * 100);
        }
    }

    void overwrite(std::uint64_t position, const std::string& bytes) const {
        std::fstream stream(file(), std::ios::in | std::ios::out | std::ios::binary);
        stream.seekp(static_cast<std::streamoff>(position));
        stream << bytes;
        ASSERT_TRUE(stream.good());
    }

    /// Whether the tier keeps what it is given, at the latest after its rest.
    void expectToWork(const std::shared_ptr<DiskTier>& cache) {
        store(*cache, url, "", "head", "body");
        EXPECT_EQ(loadBody(cache, url), "body");
    }

    static void query(const std::filesystem::path& path, const char* text) {
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, text, nullptr, nullptr, nullptr), SQLITE_OK) << text;
        sqlite3_close(database);
    }
};

TEST_F(DiskTierDamage, OfTheHeaderLeadsToANewFileAtOnce) {
    fill();
    overwrite(0, bytesOf(100));
    const auto cache = tier();
    EXPECT_TRUE(cache->find(DiskTraffic::url(1)).empty());
    expectToWork(cache);
}

TEST_F(DiskTierDamage, OfAFileThatIsNoDatabaseLeadsToANewOne) {
    std::filesystem::create_directories(folder());
    std::ofstream(file()) << bytesOf(50000);
    expectToWork(tier());
}

TEST_F(DiskTierDamage, OfAnEmptyFileIsNone) {
    std::filesystem::create_directories(folder());
    std::ofstream(file()).flush();
    expectToWork(tier());
}

TEST_F(DiskTierDamage, OfAFileOfAnotherVersionLeadsToANewOne) {
    fill();
    query(file(), "PRAGMA user_version = 99");
    const auto cache = tier();
    EXPECT_TRUE(cache->find(DiskTraffic::url(1)).empty());
    expectToWork(cache);
}

TEST_F(DiskTierDamage, OfTheSchemaLeadsToANewFile) {
    fill();
    query(file(), "DROP TABLE parts");
    const auto cache = tier();
    for (std::uint32_t number = 0; number < DiskTraffic::urls; ++number) {
        EXPECT_FALSE(loadBody(cache, DiskTraffic::url(number)).has_value());
    }
    expectToWork(cache);
}

TEST_F(DiskTierDamage, OfAForeignDatabaseLeadsToANewOne) {
    std::filesystem::create_directories(folder());
    query(file(), "CREATE TABLE notes(text); INSERT INTO notes VALUES('x')");
    expectToWork(tier());
}

TEST_F(DiskTierDamage, OfABodyIsNoticedAndRemovesTheResponse) {
    {
        const auto cache = tier();
        store(cache, url, "", "head", std::string(30000, 'q'));
        store(cache, "other", "", "head", "other");
    }
    std::ifstream stream(file(), std::ios::binary);
    const std::string content(std::istreambuf_iterator<char>(stream), {});
    const std::size_t position = content.find(std::string(3000, 'q'));
    ASSERT_NE(position, std::string::npos);
    overwrite(position + 1000, "x");

    const auto cache = tier();
    const auto entries = cache->find(url);
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(cache->body(entries[0]), std::nullopt);
    EXPECT_TRUE(cache->find(url).empty());
    EXPECT_EQ(loadBody(cache, "other"), "other");
}

TEST_F(DiskTierDamage, OfAHeadIsNoticedAndRemovesTheResponse) {
    {
        const auto cache = tier();
        store(cache, url, "", "a head to be found", "body");
    }
    query(file(), "UPDATE responses SET head = 'another head'");
    const auto cache = tier();
    EXPECT_TRUE(cache->find(url).empty());
    EXPECT_FALSE(cache->mayContain(url));
    expectToWork(cache);
}

TEST_F(DiskTierDamage, OfTheOrderOfUseLeadsToANewFile) {
    fill();
    query(file(), "UPDATE responses SET last_use = 9223372036854775807 WHERE id = (SELECT max(id) FROM responses)");
    const auto cache = tier();
    expectToWork(cache);
}

TEST_F(DiskTierDamage, ByTruncationNeverGivesWrongBytes) {
    fill();
    const std::uint64_t size = std::filesystem::file_size(file());
    const std::filesystem::path whole = parent_ / "whole";
    std::filesystem::copy_file(file(), whole);
    for (std::uint64_t rest = 10; rest < size; rest += size / 37) {
        std::filesystem::remove_all(folder());
        std::filesystem::create_directories(folder());
        std::filesystem::copy_file(whole, file());
        std::filesystem::resize_file(file(), rest);
        const auto cache = tier();
        DiskTraffic traffic(cache, 2);
        EXPECT_TRUE(traffic.checkAll()) << rest;
        advance(11);
        expectToWork(cache);
    }
}

TEST_F(DiskTierDamage, AnywhereNeverGivesWrongBytes) {
    fill();
    const std::uint64_t size = std::filesystem::file_size(file());
    const std::filesystem::path whole = parent_ / "whole";
    std::filesystem::copy_file(file(), whole);
    std::mt19937 random(3);
    int found = 0;
    for (int round = 0; round < 60; ++round) {
        std::filesystem::remove_all(folder());
        std::filesystem::create_directories(folder());
        std::filesystem::copy_file(whole, file());
        for (int hits = 0; hits <= round; ++hits) {
            overwrite(random() % (size - 64), bytesOf(1 + random() % 64, static_cast<std::uint32_t>(random())));
        }
        const auto cache = tier();
        DiskTraffic traffic(cache, 4);
        EXPECT_TRUE(traffic.checkAll()) << round;
        for (int step = 0; step < 50; ++step) {
            EXPECT_TRUE(traffic.step()) << round;
        }
        found += traffic.found();
        for (int wait = 0; wait < 5 && loadBody(cache, url) != "body"; ++wait) {
            advance(11);
            cache->remove(url);
            if (const auto writer = cache->write(url)) {
                writer->append("body");
                writer->commit("", "head");
            }
        }
        EXPECT_EQ(loadBody(cache, url), "body") << round;
    }
    EXPECT_GT(found, 100);
}

TEST_F(DiskTierDamage, OfAnOpenFileLeadsToANewOne) {
    const auto cache = tier();
    DiskTraffic traffic(cache, 5);
    for (std::uint32_t number = 0; number < DiskTraffic::urls; ++number) {
        traffic.store(number, 100000);
    }
    cache->flush();
    overwrite(0, bytesOf(static_cast<std::size_t>(std::filesystem::file_size(file()))));
    std::filesystem::resize_file(file().string() + "-wal", 0);
    EXPECT_TRUE(traffic.checkAll());
    advance(11);
    EXPECT_TRUE(traffic.checkAll());
    expectToWork(cache);
}

TEST_F(DiskTierDamage, ByTruncationOfAnOpenFileLeadsToANewOne) {
    const auto cache = tier();
    DiskTraffic traffic(cache, 6);
    for (std::uint32_t number = 0; number < DiskTraffic::urls; ++number) {
        traffic.store(number, 100000);
    }
    cache->flush();
    std::filesystem::resize_file(file(), 5000);
    EXPECT_TRUE(traffic.checkAll());
    advance(11);
    EXPECT_TRUE(traffic.checkAll());
    expectToWork(cache);
}

TEST_F(DiskTierDamage, OfTheLogNeverGivesWrongBytes) {
    fill();
    // A log is left behind when its writer is killed; here a second owner keeps it from being written back.
    const std::filesystem::path copies = parent_ / "copies";
    std::filesystem::create_directories(copies);
    {
        const auto cache = tier();
        DiskTraffic traffic(cache, 7);
        for (std::uint32_t number = 0; number < 10; ++number) {
            traffic.store(number, 20000);
        }
        cache->flush();
        for (const char* suffix : {"", "-wal"}) {
            std::filesystem::copy_file(file().string() + suffix, copies / (std::string("file") + suffix));
        }
    }
    const std::uint64_t size = std::filesystem::file_size(copies / "file-wal");
    ASSERT_GT(size, 100000U);
    std::mt19937 random(8);
    for (int round = 0; round < 20; ++round) {
        std::filesystem::remove_all(folder());
        std::filesystem::create_directories(folder());
        for (const char* suffix : {"", "-wal"}) {
            std::filesystem::copy_file(copies / (std::string("file") + suffix), file().string() + suffix);
        }
        {
            std::fstream stream(file().string() + "-wal", std::ios::in | std::ios::out | std::ios::binary);
            stream.seekp(static_cast<std::streamoff>(random() % (size - 100)));
            stream << bytesOf(100, static_cast<std::uint32_t>(random()));
        }
        std::filesystem::resize_file(file().string() + "-wal", size - random() % size / 2);
        const auto cache = tier();
        DiskTraffic traffic(cache, 9);
        EXPECT_TRUE(traffic.checkAll()) << round;
        expectToWork(cache);
        advance(11);
    }
}

TEST_F(DiskTierDamage, LeadsToANewFileOnceInTenSecondsOnly) {
    const auto cache = tier();
    std::filesystem::create_directories(folder());
    std::ofstream(file()) << bytesOf(5000);
    expectToWork(cache);
    // Replaced by what is no database either, as if the device wrote nothing but noise.
    for (const char* suffix : {"", "-wal", "-shm"}) {
        std::filesystem::remove(file().string() + suffix);
    }
    std::ofstream(file()) << bytesOf(5000);
    advance(2);
    EXPECT_EQ(loadBody(cache, url), std::nullopt);
    EXPECT_EQ(cache->write(url), nullptr);
    EXPECT_FALSE(cache->mayContain(url));
    advance(10);
    EXPECT_NE(cache->write(url), nullptr);
    EXPECT_TRUE(cache->mayContain(url));
    expectToWork(cache);
}

} // namespace
} // namespace tovrel::tests
