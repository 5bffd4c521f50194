#include <Platform/System/Bundle.hpp>
#include <Platform/URLLoading/Detail/Cache/CacheDirectories.hpp>
#include <Platform/URLLoading/Detail/Cache/CacheStore.hpp>

#include <array>
#include <cstdlib>
#include <map>
#include <mutex>
#include <pwd.h>
#include <string>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace tovrel {

namespace {

namespace fs = std::filesystem;

std::optional<fs::path> absolutePath(const char* text) {
    if (text == nullptr || *text != '/') {
        return std::nullopt;
    }
    return fs::path(text);
}

std::optional<fs::path> homeDirectory() {
    if (auto home = absolutePath(std::getenv("HOME"))) {
        return home;
    }
    passwd record{};
    passwd* found = nullptr;
    std::array<char, 4096> texts{};
    if (getpwuid_r(geteuid(), &record, texts.data(), texts.size(), &found) != 0 || found == nullptr) {
        return std::nullopt;
    }
    return absolutePath(found->pw_dir);
}

/// What tells this application's responses from another's.
std::string applicationName() {
    if (auto identifier = Bundle::main().string("CFBundleIdentifier");
        identifier && !identifier->empty() && identifier->find('/') == std::string::npos && *identifier != "..") {
        return *identifier;
    }
    std::error_code error;
    const fs::path executable = fs::read_symlink("/proc/self/exe", error);
    return error || executable.filename().empty() ? "application" : executable.filename().string();
}

/// A path that is the same however the directory is spelled, also before it exists.
fs::path canonicalPath(const fs::path& directory) {
    std::error_code error;
    const fs::path absolute = fs::absolute(directory, error);
    fs::path result = fs::weakly_canonical(absolute, error);
    return error ? absolute.lexically_normal() : result;
}

} // namespace

std::optional<fs::path> defaultCacheDirectory() {
    std::optional<fs::path> base = absolutePath(std::getenv("XDG_CACHE_HOME"));
    if (!base) {
        base = homeDirectory();
        if (!base) {
            return std::nullopt;
        }
        *base /= ".cache";
    }
    return *base / applicationName() / "TovrelWebServices";
}

std::shared_ptr<CacheStore> cacheStore(std::uint64_t memoryCapacity, std::uint64_t diskCapacity,
                                       const std::optional<fs::path>& directory, std::function<Date()> now) {
    static std::mutex mutex;
    static std::map<fs::path, std::weak_ptr<CacheStore>> stores;
    if (!directory) {
        return std::make_shared<CacheStore>(memoryCapacity, diskCapacity, directory, std::move(now));
    }
    const fs::path path = canonicalPath(*directory);
    const std::scoped_lock lock(mutex);
    std::erase_if(stores, [](const auto& entry) { return entry.second.expired(); });
    std::weak_ptr<CacheStore>& known = stores[path];
    if (auto store = known.lock()) {
        store->setCapacities(memoryCapacity, diskCapacity);
        return store;
    }
    auto store = std::make_shared<CacheStore>(memoryCapacity, diskCapacity, path, std::move(now));
    known = store;
    return store;
}

} // namespace tovrel
