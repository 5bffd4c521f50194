#pragma once

#include <filesystem>

/// The library's main job, whole: an application logs in, talks to its back end with typed calls, stays logged in and
/// leaves again.
///
/// @param directory Keeps the login for the next run, and what the servers know of it.
void demonstrateJob(const std::filesystem::path& directory);
