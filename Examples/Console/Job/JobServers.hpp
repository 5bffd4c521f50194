#pragma once

#include <TovrelTesting/LocalDeployment.hpp>

#include <filesystem>
#include <memory>
#include <string>

/// The other side of the job: the accounts server, the API and the CDN, on this machine. They keep their users and
/// logins in a file, so that a login that a client has stored is still one when the demo runs again.
class JobServers {
public:
    static constexpr const char* clientIdentifier = "demo";
    static constexpr std::size_t itemCount = 45;
    static constexpr std::uint64_t fileSize = 20'000'000;

    explicit JobServers(const std::filesystem::path& directory);

    tovrel::testing::LocalDeployment& deployment() noexcept { return *deployment_; }

    /// What the sign-in provider gives a device whose user signs in.
    std::string identityToken() const;

    /// Writes down who is logged in.
    void save();

    /// The client's secret, which a real host brings along.
    static std::string clientSecret();

private:
    std::filesystem::path file_;
    std::shared_ptr<tovrel::testing::IdentityIssuer> issuer_ = tovrel::testing::IdentityIssuer::make();
    std::unique_ptr<tovrel::testing::LocalDeployment> deployment_;
};
