#pragma once

#include <Platform/Coding/Date.hpp>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

namespace tovrel {

class CacheStore;

/// Where this application's responses lie by default.
std::optional<std::filesystem::path> defaultCacheDirectory();

/// The one store of a directory in this process, with these capacities from now on. Thread-safe.
///
/// @param directory Absent: a store in memory only, which nobody else gets.
std::shared_ptr<CacheStore> cacheStore(std::uint64_t memoryCapacity, std::uint64_t diskCapacity,
                                       const std::optional<std::filesystem::path>& directory,
                                       std::function<Date()> now);

} // namespace tovrel
