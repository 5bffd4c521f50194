#include "StoredLogin.hpp"

#include "../Journal.hpp"
#include "../OtherProcess.hpp"
#include "Chapters.hpp"

#include <Platform/Coding/Date.hpp>
#include <Platform/Concurrency/Start.hpp>

#include <exception>
#include <fstream>
#include <iterator>
#include <string>

using namespace tovrel;
using tovrel::testing::LocalDeployment;

namespace {

std::filesystem::path authorityFile(const std::filesystem::path& directory) {
    return directory / "authority.pem";
}

URLSessionConfiguration configurationFor(const std::filesystem::path& directory, std::uint16_t port) {
    std::ifstream stream(authorityFile(directory), std::ios::binary);
    URLSessionConfiguration configuration;
    configuration.additionalCertificateAuthorities.emplace_back(std::istreambuf_iterator<char>(stream),
                                                                std::istreambuf_iterator<char>());
    configuration.cacheDirectory = directory / "cache";
    for (const auto& hosts :
         {LocalDeployment::accountsHosts(), LocalDeployment::apiHosts(), LocalDeployment::cdnHosts()}) {
        for (const std::string& host : hosts) {
            configuration.connectionOverrides.emplace_back(host, std::nullopt, "127.0.0.1", port);
        }
    }
    return configuration;
}

} // namespace

bool startFromStoredLogin(const JobClient& client) {
    const auto stored = get(client.storage().token(client.accounts().client()));
    if (!stored) {
        journal::line("no login is stored");
        return false;
    }
    const double age = Date::now().secondsSince1970() - stored->timestamp;
    journal::line("a login is stored, received " + std::to_string(static_cast<long>(age)) + " s ago" +
                  (age < stored->accessTokenExpiresIn ? " and still valid" : ": to be refreshed"));
    std::exception_ptr failure;
    try {
        const auto answer = get(client.api().execute(client.api().buildRequest("items", HttpMethod::get)));
        journal::line("the API took it: " + answer.meta.message);
    } catch (const Error&) {
        failure = std::current_exception();
    }
    if (failure) {
        journal::failed(failure);
    }
    return !failure;
}

void leaveLogin(Job& job) {
    logInAsClient(job);
    job.begin("Another process starts from this login, as the next run of the demo will");
    const auto& backEnd = job.servers.deployment().backEnd();
    std::ofstream(authorityFile(job.directory), std::ios::binary) << backEnd.certificateAuthorityPem();
    runAgain({"use-login", job.directory.string(), std::to_string(backEnd.port())});
    job.printSent();
    job.servers.save();
}

void useLoginOfAnotherProcess(const std::filesystem::path& directory, std::uint16_t port) {
    startFromStoredLogin(JobClient(directory, configurationFor(directory, port)));
}
