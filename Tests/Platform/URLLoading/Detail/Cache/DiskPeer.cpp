// Another process that uses a folder of responses: disk_peer <role> <folder> <number>

#include <Platform/URLLoading/Detail/Cache/DiskTraffic.hpp>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <string>
#include <sys/resource.h>
#include <unistd.h>

namespace tovrel::tests {
namespace {

const std::string url = "https://api.example/of-the-peer";

std::shared_ptr<DiskTier> makeTier(const std::string& folder, std::uint64_t capacity = std::uint64_t{4} << 20U) {
    return DiskTier::make(folder, capacity, [] { return Date::now(); });
}

void tellReady() {
    std::puts("ready");
    std::fflush(stdout);
}

/// Half of a large body, and then nothing more.
int stream(const std::string& folder) {
    const auto tier = makeTier(folder, std::uint64_t{20} << 20U);
    const auto writer = tier->write(url);
    writer->append(bytesOf(800000));
    tier->flush();
    tellReady();
    for (;;) {
        ::pause();
    }
}

/// Calls without end.
int run(const std::string& folder, std::uint32_t seed) {
    const auto tier = makeTier(folder);
    DiskTraffic traffic(tier, seed);
    tier->flush();
    tellReady();
    while (traffic.step()) {
    }
    return 1;
}

/// So many calls.
int work(const std::string& folder, std::uint32_t seed) {
    const auto tier = makeTier(folder);
    DiskTraffic traffic(tier, seed);
    for (int step = 0; step < 1500; ++step) {
        if (!traffic.step()) {
            return 1;
        }
    }
    return traffic.checkAll() ? 0 : 1;
}

void storeOne(DiskTier& tier) {
    const auto writer = tier.write(url);
    writer->append("body");
    writer->commit("", "head");
}

/// Leaves at once.
int leave(const std::string& folder) {
    storeOne(*makeTier(folder));
    return 0;
}

/// Leaves while a static still owns the tier, which so outlives the threads of the pool.
int leaveStatic(const std::string& folder) {
    static std::shared_ptr<DiskTier> tier;
    tier = makeTier(folder);
    storeOne(*tier);
    return 0;
}

/// Files that must not grow beyond so many bytes, as on a full disk.
int fill(const std::string& folder, std::uint32_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = bytes;
    ::setrlimit(RLIMIT_FSIZE, &limit);
    double seconds = 0;
    const auto tier = DiskTier::make(folder, std::uint64_t{4} << 20U, [&seconds] { return Date(seconds); });
    DiskTraffic traffic(tier, bytes);
    for (int step = 0; step < 600; ++step) {
        if (!traffic.step()) {
            return 1;
        }
        seconds += 1;
    }
    // A removal holds, whatever there is no room for.
    tier->remove(DiskTraffic::url(1));
    if (!tier->find(DiskTraffic::url(1)).empty()) {
        return 2;
    }
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_FSIZE, &limit);
    seconds += 11;
    traffic.store(2, 150000);
    const int before = traffic.found();
    return traffic.check(2) && traffic.found() == before + 1 ? 0 : 3;
}

/// Uses a folder in which it may not write, without the rights of root.
int read(const std::string& folder) {
    if (::getuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) {
        return 4;
    }
    double seconds = 0;
    const auto tier = DiskTier::make(folder, std::uint64_t{4} << 20U, [&seconds] { return Date(seconds); });
    for (int round = 0; round < 3; ++round) {
        if (const auto writer = tier->write(url)) {
            writer->append(bytesOf(100000));
            writer->commit("", "head");
        }
        tier->remove(url);
        tier->removeAll();
        if (!tier->find(url).empty() || tier->usage() != 0) {
            return 1;
        }
        if (tier->write(url) != nullptr || tier->mayContain(url)) {
            return 2;
        }
        seconds += 11;
    }
    return 0;
}

int play(const std::string& role, const std::string& folder, std::uint32_t number) {
    if (role == "stream") {
        return stream(folder);
    }
    if (role == "run") {
        return run(folder, number);
    }
    if (role == "work") {
        return work(folder, number);
    }
    if (role == "leave") {
        return leave(folder);
    }
    if (role == "leave-static") {
        return leaveStatic(folder);
    }
    if (role == "fill") {
        return fill(folder, number);
    }
    if (role == "read") {
        return read(folder);
    }
    return 64;
}

} // namespace
} // namespace tovrel::tests

int main(int count, char** arguments) {
    if (count != 4) {
        return 64;
    }
    return tovrel::tests::play(arguments[1], arguments[2], static_cast<std::uint32_t>(std::stoul(arguments[3])));
}
