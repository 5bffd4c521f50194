#include <TovrelTesting/LocalSession.hpp>

namespace tovrel::testing {

URLSessionConfiguration localSessionConfiguration(const LocalBackEnd& backEnd, const std::vector<std::string>& hosts) {
    URLSessionConfiguration configuration;
    configuration.additionalCertificateAuthorities.push_back(backEnd.certificateAuthorityPem());
    configuration.cacheDirectory = backEnd.cacheDirectory();
    for (const std::string& host : hosts) {
        configuration.connectionOverrides.emplace_back(host, std::nullopt, "127.0.0.1", backEnd.port());
    }
    return configuration;
}

} // namespace tovrel::testing
