#pragma once

#include <Platform/URLLoading/SessionFixture.hpp>
#include <Platform/URLLoading/URLCache.hpp>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <Support/Await.hpp>
#include <thread>
#include <utility>
#include <vector>

namespace tovrel::testing {

/// Wall-clock time that stands still until a test moves it. Thread-safe.
class ManualDate {
public:
    Date now() const { return Date(seconds_.load()); }
    void advance(double seconds) { seconds_ = seconds_.load() + seconds; }

private:
    /// 2026-11-21T12:00:00Z
    std::atomic<double> seconds_{817041600};
};

/// A session with a cache whose time the test moves.
class CacheFixture : public SessionFixture {
protected:
    using Source = HTTPURLResponse::Source;
    using Policy = URLRequestCachePolicy;

    static constexpr std::uint64_t mebibyte = 1U << 20U;

    void SetUp() override {
        SessionFixture::SetUp();
        start();
        useCache(5 * mebibyte, 50 * mebibyte);
    }

    void TearDown() override {
        cache.reset();
        SessionFixture::TearDown();
    }

    /// A new session with such a cache in the back end's directory.
    void useCache(std::uint64_t memory, std::uint64_t disk) {
        cache = URLCache::make(memory, disk, backEnd->cacheDirectory(), clock());
        useSession();
    }

    /// Lets go of the cache, as the end of a process does.
    void endProcess() {
        // Sees all that was stored, which the last owner of a store may else still be writing on another thread.
        diskUsage();
        session.reset();
        cache.reset();
    }

    /// A new session, as a new process has it: nothing is in memory.
    void restartProcess(std::uint64_t memory = 5 * mebibyte, std::uint64_t disk = 50 * mebibyte) {
        endProcess();
        useCache(memory, disk);
    }

    void useSession() {
        URLSessionConfiguration changed = configuration();
        changed.urlCache = cache;
        restart(changed);
    }

    std::function<Date()> clock() const {
        return [date = date] { return date->now(); };
    }

    /// Answers with a body that counts the requests, "1", "2" and so on.
    void serve(const std::string& path, HeaderList headers, int status = 200) {
        backEnd->on("GET", path, [headers = std::move(headers), status, count = 0](const ReceivedRequest&) mutable {
            ScriptedResponse response = ScriptedResponse::text(std::to_string(++count), status);
            response.headers.insert(response.headers.end(), headers.begin(), headers.end());
            return response;
        });
    }

    /// As `serve`, but answers 304 to whoever knows the tag. Every answer carries the headers.
    void serveTagged(const std::string& path, const std::string& tag, const HeaderList& headers) {
        backEnd->on("GET", path, [headers, tag, count = 0](const ReceivedRequest& request) mutable {
            ++count;
            ScriptedResponse response = request.header("if-none-match") == tag
                                            ? ScriptedResponse(304)
                                            : ScriptedResponse::text(std::to_string(count));
            response.headers.emplace_back("ETag", tag);
            response.headers.insert(response.headers.end(), headers.begin(), headers.end());
            return response;
        });
    }

    static URLRequest plain(const std::string& target, Policy policy = Policy::useProtocolCachePolicy) {
        URLRequest request = requestFor(target);
        request.headers.remove("Authorization");
        request.cachePolicy = policy;
        return request;
    }

    static URLRequest plain(const std::string& target, std::string_view name, std::string_view value) {
        URLRequest request = plain(target);
        request.headers.set(name, value);
        return request;
    }

    std::string body(URLRequest request) const {
        const Loaded result = load(std::move(request));
        return result.error ? std::string(result.error->what()) : result.body;
    }
    std::string body(const std::string& target) const { return body(plain(target)); }

    std::size_t requestsTo(std::string_view path) const {
        const auto requests = backEnd->requests();
        return static_cast<std::size_t>(std::count_if(requests.begin(), requests.end(),
                                                      [path](const auto& request) { return request.path() == path; }));
    }

    std::uint64_t diskUsage() const { return tests::getInTime(cache->currentDiskUsage()); }

    /// Whether the condition holds before the deadline; what happens on other threads need not have happened yet.
    static bool becomesTrue(const std::function<bool()>& condition) {
        const auto end = std::chrono::steady_clock::now() + deadline;
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end) {
                return false;
            }
            std::this_thread::yield();
        }
        return true;
    }

    std::shared_ptr<ManualDate> date = std::make_shared<ManualDate>();
    std::shared_ptr<URLCache> cache;
};

} // namespace tovrel::testing
