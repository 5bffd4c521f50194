#include <Platform/URLLoading/Detail/Cache/DiskFixture.hpp>

#include <algorithm>
#include <sys/stat.h>

namespace tovrel::tests {
namespace {

class DiskTierStorage : public DiskTest {};
class DiskTierRemoval : public DiskTest {};
class DiskTierEviction : public DiskTest {};
class DiskTierIndex : public DiskTest {};

const std::string url = "https://api.example/items?page=1";

TEST_F(DiskTierStorage, GivesBackWhatWasStored) {
    const auto cache = tier();
    store(cache, url, "v", "head", "body");
    const auto entries = cache->find(url);
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].variant, "v");
    EXPECT_EQ(entries[0].head, "head");
    EXPECT_EQ(entries[0].bodySize, 4U);
    EXPECT_EQ(cache->body(entries[0]), Data("body"));
}

TEST_F(DiskTierStorage, KeepsBodiesOfEverySize) {
    const auto cache = tier();
    const std::size_t sizes[] = {0, 1, 4096, 65535, 65536, 65537, 131072, 131073, 1000000};
    for (const std::size_t size : sizes) {
        const std::string body = bytesOf(size, static_cast<std::uint32_t>(size));
        store(cache, "https://h/" + std::to_string(size), "", "head", body);
    }
    for (const std::size_t size : sizes) {
        const auto body = loadBody(cache, "https://h/" + std::to_string(size));
        EXPECT_TRUE(body == bytesOf(size, static_cast<std::uint32_t>(size))) << size;
    }
}

TEST_F(DiskTierStorage, TakesAnyBytesForUrlVariantAndHead) {
    const auto cache = tier();
    const std::string name("a\0b'\"\n\xff", 7);
    store(cache, name, name, name, name);
    store(cache, "a", "", "", "");
    const auto entries = cache->find(name);
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].variant, name);
    EXPECT_EQ(entries[0].head, name);
    EXPECT_EQ(cache->body(entries[0]), Data(name));
    EXPECT_EQ(load(cache, "a"), std::pair(std::string(), std::string()));
}

TEST_F(DiskTierStorage, KeepsOneResponseForEachVariant) {
    const auto cache = tier();
    store(cache, url, "en", "1", "one");
    store(cache, url, "de", "2", "two");
    store(cache, url, "en", "3", "three");
    auto entries = cache->find(url);
    std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.head < b.head; });
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].variant, "de");
    EXPECT_EQ(entries[1].variant, "en");
    EXPECT_EQ(cache->body(entries[0]), Data("two"));
    EXPECT_EQ(cache->body(entries[1]), Data("three"));
}

TEST_F(DiskTierStorage, GivesNoBodyForAResponseThatWasReplaced) {
    const auto cache = tier();
    store(cache, url, "", "1", "one");
    const auto old = cache->find(url);
    store(cache, url, "", "2", "two");
    ASSERT_EQ(old.size(), 1U);
    EXPECT_EQ(cache->body(old[0]), std::nullopt);
    EXPECT_EQ(loadBody(cache, url), "two");
}

TEST_F(DiskTierStorage, ReplacesAHeadAndKeepsTheBody) {
    const auto cache = tier();
    store(cache, url, "v", "old", "body");
    const auto before = cache->find(url);
    cache->replaceHead(url, "v", "new");
    cache->replaceHead(url, "w", "of nothing");
    EXPECT_EQ(load(cache, url), std::pair(std::string("new"), std::string("body")));
    ASSERT_EQ(before.size(), 1U);
    EXPECT_EQ(cache->body(before[0]), Data("body"));
}

TEST_F(DiskTierStorage, OutlivesItsOwnerWithoutAFlush) {
    store(tier(), url, "v", "head", bytesOf(200000));
    const auto next = tier();
    EXPECT_TRUE(next->mayContain(url));
    EXPECT_TRUE(loadBody(next, url) == bytesOf(200000));
}

TEST_F(DiskTierStorage, StoresNothingOfAWriterThatIsDropped) {
    const auto cache = tier();
    const std::uint64_t empty = cache->usage();
    {
        const auto writer = cache->write(url);
        writer->append(bytesOf(500000));
        cache->flush();
        EXPECT_GT(cache->usage(), empty);
        EXPECT_TRUE(cache->find(url).empty());
    }
    EXPECT_EQ(cache->usage(), empty);
    EXPECT_TRUE(cache->find(url).empty());
}

TEST_F(DiskTierStorage, GivesUpABodyThatIsTooLarge) {
    const auto cache = tier();
    const std::uint64_t empty = cache->usage();
    EXPECT_EQ(cache->largestEntry(), capacity / 20);
    const auto writer = cache->write(url);
    writer->append(bytesOf(cache->largestEntry()));
    EXPECT_FALSE(writer->hasGivenUp());
    writer->append("x");
    EXPECT_TRUE(writer->hasGivenUp());
    writer->append("x");
    writer->commit("", "");
    EXPECT_TRUE(cache->find(url).empty());
    EXPECT_EQ(cache->usage(), empty);
}

TEST_F(DiskTierStorage, CountsTheHeadTowardsTheLargestEntry) {
    const auto cache = tier();
    const auto writer = cache->write(url);
    writer->append(bytesOf(cache->largestEntry()));
    writer->commit("", "x");
    EXPECT_TRUE(cache->find(url).empty());
}

TEST_F(DiskTierStorage, IsPrivateToTheUser) {
    const auto cache = tier();
    store(cache, url, "", "head", "body");
    cache->flush();
    struct stat status {};
    ASSERT_EQ(::stat(folder().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
    int files = 0;
    for (const auto& item : std::filesystem::directory_iterator(folder())) {
        ASSERT_EQ(::stat(item.path().c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777U, 0600U) << item.path();
        ++files;
    }
    EXPECT_GE(files, 3);
}

TEST_F(DiskTierStorage, TouchesNothingBeforeItIsUsed) {
    { const auto cache = tier(); }
    EXPECT_FALSE(std::filesystem::exists(folder()));
}

TEST_F(DiskTierStorage, StoresNothingWithoutCapacity) {
    const auto cache = tier(0);
    EXPECT_EQ(cache->write(url), nullptr);
    EXPECT_FALSE(cache->mayContain(url));
    EXPECT_EQ(cache->largestEntry(), 0U);
    cache->remove(url);
    cache->removeAll();
    EXPECT_EQ(cache->usage(), 0U);
    EXPECT_FALSE(std::filesystem::exists(folder()));
    cache->setCapacity(capacity);
    store(cache, url, "", "head", "body");
    EXPECT_EQ(loadBody(cache, url), "body");
}

TEST_F(DiskTierRemoval, ReachesWhatIsOnDiskWithoutCapacityToo) {
    store(tier(), url, "", "head", "body");
    tier(0)->remove(url);
    EXPECT_TRUE(tier()->find(url).empty());
}

TEST_F(DiskTierRemoval, RemovesEveryVariantOfAUrl) {
    const auto cache = tier();
    store(cache, url, "1", "", "a");
    store(cache, url, "2", "", "b");
    store(cache, url + "&x", "1", "", "c");
    cache->remove(url);
    EXPECT_TRUE(cache->find(url).empty());
    EXPECT_EQ(loadBody(cache, url + "&x"), "c");
}

TEST_F(DiskTierRemoval, RemovesOneVariant) {
    const auto cache = tier();
    store(cache, url, "1", "", "a");
    store(cache, url, "2", "", "b");
    cache->remove(url, "1");
    EXPECT_EQ(loadBody(cache, url), "b");
}

TEST_F(DiskTierRemoval, RemovesEverythingAndGivesTheSpaceBack) {
    const auto cache = tier();
    const std::uint64_t empty = cache->usage();
    for (int i = 0; i < 20; ++i) {
        store(cache, url + std::to_string(i), "", "", bytesOf(300000));
    }
    cache->flush();
    EXPECT_GT(cache->usage(), 6000000U);
    EXPECT_GT(std::filesystem::file_size(file()), 4000000U);
    cache->removeAll();
    EXPECT_EQ(cache->usage(), empty);
    EXPECT_LT(std::filesystem::file_size(file()), 100000U);
    EXPECT_FALSE(cache->mayContain(url + "0"));
    EXPECT_TRUE(cache->find(url + "0").empty());
}

TEST_F(DiskTierRemoval, KeepsOutAResponseWhoseUrlWasRemovedWhileItCame) {
    for (const std::size_t size : {std::size_t{100}, std::size_t{300000}}) {
        const auto cache = tier();
        const std::uint64_t empty = cache->usage();
        const auto writer = cache->write(url);
        const auto other = cache->write(url + "&x");
        writer->append(bytesOf(size));
        cache->flush();
        cache->remove(url);
        EXPECT_TRUE(writer->hasGivenUp());
        writer->append("more");
        writer->commit("", "head");
        EXPECT_TRUE(cache->find(url).empty());
        EXPECT_EQ(cache->usage(), empty);
        other->commit("", "head");
        EXPECT_EQ(cache->find(url + "&x").size(), 1U);
        cache->removeAll();
    }
}

TEST_F(DiskTierRemoval, KeepsOutWhatCameWhileEverythingWasRemoved) {
    const auto cache = tier();
    const auto writer = cache->write(url);
    writer->append(bytesOf(300000));
    cache->removeAll();
    writer->commit("", "head");
    EXPECT_TRUE(cache->find(url).empty());
}

TEST_F(DiskTierRemoval, LetsInWhatIsStartedAfterwards) {
    const auto cache = tier();
    cache->remove(url);
    store(cache, url, "", "head", "body");
    EXPECT_EQ(loadBody(cache, url), "body");
    cache->removeAll();
    store(cache, url, "", "head", bytesOf(300000));
    EXPECT_TRUE(loadBody(cache, url) == bytesOf(300000));
}

TEST_F(DiskTierEviction, StaysWithinItsCapacity) {
    constexpr std::uint64_t bytes = 2000000;
    const auto cache = tier(bytes);
    for (int i = 0; i < 300; ++i) {
        store(cache, url + std::to_string(i), "", "head", bytesOf(static_cast<std::size_t>(i) * 317 % 90000));
        EXPECT_LE(cache->usage(), bytes);
    }
    EXPECT_GT(cache->usage(), bytes * 8 / 10);
    EXPECT_LE(std::filesystem::file_size(file()), bytes + 100000);
    EXPECT_TRUE(loadBody(cache, url + "299") == bytesOf(299U * 317 % 90000));
    EXPECT_FALSE(cache->mayContain(url + "0"));
    EXPECT_TRUE(cache->find(url + "0").empty());
}

TEST_F(DiskTierEviction, CountsBodiesThatAreStillComing) {
    constexpr std::uint64_t bytes = 8000000;
    const auto cache = tier(bytes);
    std::vector<std::shared_ptr<DiskWriter>> writers;
    for (int i = 0; i < 40; ++i) {
        writers.push_back(cache->write(url + std::to_string(i)));
        writers.back()->append(bytesOf(390000));
        EXPECT_LE(cache->usage(), bytes);
    }
    EXPECT_TRUE(writers.back()->hasGivenUp());
    EXPECT_FALSE(writers.front()->hasGivenUp());
    writers.resize(1);
    writers.front()->commit("", "");
    EXPECT_TRUE(loadBody(cache, url + "0") == bytesOf(390000));
}

TEST_F(DiskTierEviction, BeginsWithTheLeastRecentlyUsed) {
    constexpr std::uint64_t bytes = 1000000;
    const auto cache = tier(bytes);
    for (const char* name : {"a", "b", "c", "d"}) {
        store(cache, name, "", "", bytesOf(45000));
    }
    cache->flush();
    cache->touch("b", "");
    cache->touch("a", "");
    for (int i = 0; cache->find("c").size() + cache->find("d").size() > 0 && i < 100; ++i) {
        store(cache, "x" + std::to_string(i), "", "", bytesOf(45000));
    }
    EXPECT_EQ(cache->find("a").size(), 1U);
    EXPECT_EQ(cache->find("b").size(), 1U);
    for (int i = 100; cache->find("b").size() == 1 && i < 200; ++i) {
        store(cache, "x" + std::to_string(i), "", "", bytesOf(5000));
    }
    EXPECT_EQ(cache->find("a").size(), 1U);
}

TEST_F(DiskTierEviction, RemembersUsesAcrossProcesses) {
    constexpr std::uint64_t bytes = 1000000;
    {
        const auto cache = tier(bytes);
        store(cache, "a", "", "", bytesOf(45000));
        store(cache, "b", "", "", bytesOf(45000));
        cache->flush();
        cache->touch("a", "");
    }
    const auto cache = tier(bytes);
    for (int i = 0; cache->find("b").size() == 1 && i < 100; ++i) {
        store(cache, "x" + std::to_string(i), "", "", bytesOf(20000));
    }
    EXPECT_EQ(cache->find("a").size(), 1U);
}

TEST_F(DiskTierEviction, FollowsAChangeOfTheCapacity) {
    const auto cache = tier();
    for (int i = 0; i < 20; ++i) {
        store(cache, url + std::to_string(i), "", "", bytesOf(300000));
    }
    cache->flush();
    cache->setCapacity(1000000);
    EXPECT_LE(cache->usage(), 1000000U);
    EXPECT_LE(std::filesystem::file_size(file()), 1000000U);
    EXPECT_EQ(cache->find(url + "19").size(), 1U);
    EXPECT_EQ(cache->find(url + "0").size(), 0U);
    EXPECT_EQ(cache->largestEntry(), 50000U);
    cache->setCapacity(0);
    EXPECT_EQ(cache->find(url + "19").size(), 0U);
    EXPECT_EQ(cache->write(url), nullptr);
    cache->setCapacity(capacity);
    store(cache, url, "", "", bytesOf(300000));
    EXPECT_TRUE(loadBody(cache, url) == bytesOf(300000));
}

TEST_F(DiskTierEviction, SurvivesACapacityThatHoldsNothing) {
    const auto cache = tier(1000);
    store(cache, url, "", "h", "b");
    EXPECT_TRUE(cache->find(url).empty());
}

TEST_F(DiskTierIndex, SaysMaybeUntilItKnows) {
    const auto cache = tier();
    EXPECT_TRUE(cache->mayContain(url));
    cache->flush();
    EXPECT_TRUE(cache->find(url).empty());
    EXPECT_FALSE(cache->mayContain(url));
    store(cache, url, "", "", "");
    EXPECT_TRUE(cache->mayContain(url));
    cache->flush();
    EXPECT_TRUE(cache->mayContain(url));
    cache->remove(url);
    EXPECT_FALSE(cache->mayContain(url));
}

TEST_F(DiskTierIndex, ForgetsAUrlWhoseLastVariantIsGone) {
    const auto cache = tier();
    store(cache, url, "v", "", "");
    cache->remove(url, "v");
    EXPECT_TRUE(cache->find(url).empty());
    EXPECT_FALSE(cache->mayContain(url));
}

TEST_F(DiskTierIndex, SeesWhatAnotherTierStoresASecondLater) {
    const auto mine = tier();
    const auto other = tier();
    EXPECT_TRUE(mine->find(url).empty());
    EXPECT_FALSE(mine->mayContain(url));
    store(other, url, "", "", "body");
    other->flush();
    EXPECT_FALSE(mine->mayContain(url));
    EXPECT_EQ(loadBody(mine, url), "body");
    advance(1.5);
    EXPECT_FALSE(mine->mayContain(url));
    mine->flush();
    mine->find("another");
    EXPECT_TRUE(mine->mayContain(url));
}

TEST_F(DiskTierIndex, FindsAFileThatAnotherProcessHasReplaced) {
    const auto mine = tier();
    store(mine, url, "", "", "old");
    mine->flush();
    for (const char* suffix : {"", "-wal", "-shm"}) {
        std::filesystem::remove(file().string() + suffix);
    }
    const auto other = tier();
    store(other, url, "", "", "new");
    other->flush();
    advance(1.5);
    EXPECT_EQ(loadBody(mine, url), "new");
}

TEST_F(DiskTierIndex, LooksEvenWhenTheClockWasSetBack) {
    const auto mine = tier();
    const auto other = tier();
    EXPECT_TRUE(mine->find(url).empty());
    store(other, url, "", "", "body");
    other->flush();
    advance(-500);
    mine->find("another");
    EXPECT_TRUE(mine->mayContain(url));
}

} // namespace
} // namespace tovrel::tests
