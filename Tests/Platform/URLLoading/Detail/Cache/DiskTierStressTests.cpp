#include <Platform/URLLoading/Detail/Cache/DiskFixture.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskTraffic.hpp>

#include <thread>

namespace tovrel::tests {
namespace {

class DiskTierStress : public DiskTest {
protected:
    static constexpr std::uint64_t small_ = std::uint64_t{3} << 20U;

    /// Whether every thread has met right bytes only.
    static bool run(const std::vector<std::shared_ptr<DiskTier>>& tiers) {
        std::atomic<bool> isRight{true};
        std::vector<std::thread> threads;
        for (std::uint32_t seed = 0; seed < tiers.size(); ++seed) {
            threads.emplace_back([&isRight, seed, tier = tiers[seed]] {
                DiskTraffic traffic(tier, seed);
                for (int step = 0; step < 300; ++step) {
                    if (!traffic.step()) {
                        isRight = false;
                    }
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        return isRight;
    }
};

TEST_F(DiskTierStress, OfManyThreadsGivesRightBytes) {
    const auto cache = tier(small_);
    EXPECT_TRUE(run({cache, cache, cache, cache}));
    EXPECT_LE(cache->usage(), small_);
    DiskTraffic traffic(cache, 99);
    EXPECT_TRUE(traffic.checkAll());
    EXPECT_GT(traffic.found(), 0);
}

TEST_F(DiskTierStress, OfManyTiersOfOneFolderGivesRightBytes) {
    EXPECT_TRUE(run({tier(small_), tier(small_), tier(small_), tier(small_)}));
    const auto cache = tier(small_);
    EXPECT_LE(cache->usage(), small_);
    DiskTraffic traffic(cache, 99);
    EXPECT_TRUE(traffic.checkAll());
    EXPECT_GT(traffic.found(), 0);
}

TEST_F(DiskTierStress, OfOpeningAndClosingGivesRightBytes) {
    std::atomic<bool> isRight{true};
    std::vector<std::thread> threads;
    for (std::uint32_t seed = 0; seed < 3; ++seed) {
        threads.emplace_back([this, seed, &isRight] {
            for (int round = 0; round < 15; ++round) {
                DiskTraffic traffic(tier(small_), seed);
                for (int step = 0; step < 10; ++step) {
                    if (!traffic.step()) {
                        isRight = false;
                    }
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_TRUE(isRight);
}

TEST_F(DiskTierStress, OfRemovalsLeavesNothingBehindThatCameTooLate) {
    const auto cache = tier(small_);
    std::atomic<bool> mustStop{false};
    std::thread storing([&] {
        while (!mustStop) {
            if (const auto writer = cache->write("u")) {
                writer->append(bytesOf(70000));
                writer->commit("", "head");
            }
        }
    });
    for (int round = 0; round < 200; ++round) {
        const auto writer = cache->write("u2");
        cache->remove("u2");
        cache->remove("u");
        writer->commit("", "head");
        EXPECT_TRUE(cache->find("u2").empty());
    }
    mustStop = true;
    storing.join();
    cache->remove("u");
    EXPECT_TRUE(cache->find("u").empty());
}

} // namespace
} // namespace tovrel::tests
