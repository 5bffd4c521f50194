#include <Platform/URLLoading/SessionFixture.hpp>

#include <atomic>
#include <random>

namespace tovrel::testing {
namespace {

using URLSessionStress = SessionOverBothVersions;
TOVREL_OVER_BOTH_VERSIONS(URLSessionStress);

TEST_P(URLSessionStress, CompletesEveryRequestOnceHoweverCancellationRaces) {
    backEnd->on("GET", "/a", [](const ReceivedRequest&) { return ScriptedResponse::redirect("/hello"); });
    backEnd->on("GET", "/body", [](const ReceivedRequest&) { return ScriptedResponse::generated(50'000); });
    std::mt19937 random(11);
    std::atomic<int> loaded = 0;
    std::atomic<int> cancelled = 0;
    constexpr int rounds = 30;
    constexpr int requestsPerRound = 12;
    for (int round = 0; round < rounds; ++round) {
        std::vector<Loading> loadings;
        for (int i = 0; i < requestsPerRound; ++i) {
            loadings.push_back(begin(requestFor(i % 3 == 0 ? "/a" : i % 3 == 1 ? "/body" : "/hello")));
        }
        // From at once to long after: somewhere in between the two meet.
        const auto moment = std::chrono::steady_clock::now() + std::chrono::microseconds(random() % 6000);
        while (std::chrono::steady_clock::now() < moment) {
            std::this_thread::yield();
        }
        for (Loading& loading : loadings) {
            loading.cancel();
        }
        if (round % 5 == 4) {
            restart(configuration());
        }
        for (Loading& loading : loadings) {
            const Loaded result = loading.value();
            if (result.error) {
                EXPECT_EQ(*result.error, URLError::cancelled());
                ++cancelled;
            } else {
                EXPECT_EQ(result.status, 200);
                ++loaded;
            }
        }
    }
    EXPECT_EQ(loaded + cancelled, rounds * requestsPerRound);
    EXPECT_GT(cancelled, 0);
}

TEST_P(URLSessionStress, ServesManyThreadsAtOnce) {
    constexpr int threadCount = 4;
    constexpr int requestsPerThread = 25;
    std::atomic<int> loaded = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([this, &loaded] {
            for (int n = 0; n < requestsPerThread; ++n) {
                loaded += load("/hello").body == "Hello" ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(loaded, threadCount * requestsPerThread);
}

TEST_P(URLSessionStress, CarriesAThousandRequestsAtOnce) {
    std::vector<Loading> loadings;
    for (int i = 0; i < 1000; ++i) {
        loadings.push_back(begin(requestFor("/hello")));
    }
    for (Loading& loading : loadings) {
        EXPECT_EQ(loading.value().body, "Hello");
    }
}

} // namespace
} // namespace tovrel::testing
