#pragma once

#include "JobClient.hpp"
#include "JobServers.hpp"

#include <filesystem>
#include <string_view>

/// Both sides of the job, as its chapters need them.
struct Job {
    explicit Job(const std::filesystem::path& stateDirectory);

    /// Begins a chapter.
    void begin(std::string_view heading);

    /// Prints where requests went since the last time.
    void printSent();

    std::filesystem::path directory;
    JobServers servers;
    JobClient client;
};
