#include "JobServers.hpp"

#include <chrono>
#include <fstream>
#include <iterator>
#include <vector>

using namespace tovrel;
using namespace tovrel::testing;

namespace {

constexpr const char* application = "com.example.demo";

AccountsServerOptions accountsOptions(std::shared_ptr<const IdentityIssuer> issuer) {
    AccountsServerOptions options;
    options.clients = {AccountsServerClient(JobServers::clientIdentifier, JobServers::clientSecret())};
    options.identityIssuers = {TrustedIdentityIssuer("apple", std::move(issuer), application)};
    options.lifetimes.refreshToken = std::chrono::hours(24 * 30);
    return options;
}

std::vector<std::string> items() {
    std::vector<std::string> elements;
    for (std::size_t number = 1; number <= JobServers::itemCount; ++number) {
        const std::string text = std::to_string(number);
        elements.push_back(R"({"identifier": )" + text + R"(, "title": "Item )" + text +
                           R"(", "created_at": 1763683200000})");
    }
    return elements;
}

} // namespace

JobServers::JobServers(const std::filesystem::path& directory)
    : file_(directory / "server.json"), deployment_(LocalDeployment::start(accountsOptions(issuer_))) {
    deployment_->content().setCollection("/items", items());
    deployment_->content().setFile("/files/atlas.bin", ContentFile(GeneratedBytes(fileSize)));
    if (std::ifstream stream(file_, std::ios::binary); stream) {
        const std::string text{std::istreambuf_iterator<char>(stream), {}};
        deployment_->accounts().restore(Data(text));
    }
}

std::string JobServers::identityToken() const {
    IdentityClaims claims("user-1", application);
    claims.email = "ada@example.org";
    return issuer_->mint(claims);
}

void JobServers::save() {
    namespace fs = std::filesystem;
    const fs::path unfinished = file_.string() + ".new";
    {
        std::ofstream stream(unfinished, std::ios::binary | std::ios::trunc);
        fs::permissions(unfinished, fs::perms::owner_read | fs::perms::owner_write);
        stream << deployment_->accounts().snapshot().view();
    }
    fs::rename(unfinished, file_);
}

std::string JobServers::clientSecret() {
    return "canary-secret-of-the-demo";
}
