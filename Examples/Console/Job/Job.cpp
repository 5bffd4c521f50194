#include "Job.hpp"

#include "../Journal.hpp"

Job::Job(const std::filesystem::path& stateDirectory)
    : directory(stateDirectory), servers(directory), client(directory, servers.deployment().sessionConfiguration()) {}

void Job::begin(std::string_view heading) {
    printSent();
    journal::heading(heading);
}

void Job::printSent() {
    tovrel::testing::LocalBackEnd& backEnd = servers.deployment().backEnd();
    for (const auto& request : backEnd.requests()) {
        journal::sentTo(request);
    }
    backEnd.clearRequests();
}
