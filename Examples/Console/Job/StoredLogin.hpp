#pragma once

#include "Job.hpp"

#include <cstdint>
#include <filesystem>

/// Starts from the login that an earlier run or another process has stored. Returns whether there was one.
bool startFromStoredLogin(const JobClient& client);

/// Logs in and leaves the login where another process, run here, and the next run of the demo find it.
void leaveLogin(Job& job);

/// What that other process does. It knows the folder and the back end's port and nothing else.
void useLoginOfAnotherProcess(const std::filesystem::path& directory, std::uint16_t port);
