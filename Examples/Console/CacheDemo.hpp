#pragma once

#include <TovrelTesting/LocalBackEnd.hpp>

#include <filesystem>

/// The response cache: a miss, a hit in memory, one on disk in another process, a confirmation, and an answer while the
/// back end cannot be reached.
void demonstrateCache(tovrel::testing::LocalBackEnd& backEnd);

/// What that other process does: it knows the directory of the cache and nothing of the back end.
void readCacheOfAnotherProcess(const std::filesystem::path& directory);
