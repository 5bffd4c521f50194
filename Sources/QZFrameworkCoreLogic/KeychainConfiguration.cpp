#include <Platform/System/Bundle.hpp>
#include <QZFrameworkCoreLogic/KeychainConfiguration.hpp>

#include <system_error>

namespace tovrel {

namespace {

std::string applicationName() {
    if (std::optional<std::string> identifier = Bundle::main().string("CFBundleIdentifier")) {
        return *std::move(identifier);
    }
    std::error_code error;
    const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::string("application") : executable.filename().string();
}

} // namespace

KeychainConfiguration::KeychainConfiguration() : serviceName(applicationName()) {}

} // namespace tovrel
