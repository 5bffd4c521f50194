#include "JobDemo.hpp"

#include "../Journal.hpp"
#include "Chapters.hpp"
#include "StoredLogin.hpp"

#include <string>

namespace {

namespace fs = std::filesystem;

/// A folder that only its owner enters.
fs::path prepared(const fs::path& directory) {
    fs::create_directories(directory);
    fs::permissions(directory, fs::perms::owner_all);
    return fs::canonical(directory);
}

} // namespace

void demonstrateJob(const fs::path& directory) {
    Job job(prepared(directory));
    journal::part("The main job. A local back end plays the accounts server, the API and the CDN on port " +
                  std::to_string(job.servers.deployment().backEnd().port()) + ".");
    journal::line("◆ marks an event, → a request as it arrived, ✗ a failure");

    job.begin("Starting");
    const bool isSecondRun = startFromStoredLogin(job.client);
    logInAsClient(job);
    if (isSecondRun) {
        journal::line("no other login was needed: this run started from the stored one");
    }
    readPages(job);
    downloadFile(job);
    outliveToken(job);
    signIn(job);
    showProfile(job);
    meetDomainError(job);
    loseLogin(job);
    logOut(job);
    deleteAccount(job);
    leaveLogin(job);
}
