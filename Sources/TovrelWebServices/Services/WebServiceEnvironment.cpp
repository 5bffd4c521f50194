#include <TovrelWebServices/Services/HostNames.hpp>
#include <TovrelWebServices/Services/WebServiceEnvironment.hpp>

namespace tovrel {

namespace {

std::string_view hostName(const HostNames& hosts, TovrelEnvironment stage) {
    switch (stage) {
    case TovrelEnvironment::development:
        return hosts.development;
    case TovrelEnvironment::test:
        return hosts.test;
    case TovrelEnvironment::production:
        return hosts.production;
    }
    return hosts.production;
}

} // namespace

std::string_view TovrelApiEnvironment::domain() const {
    return hostName(apiHostNames, environment_);
}

std::string_view TovrelCdnEnvironment::domain() const {
    return hostName(cdnHostNames, environment_);
}

std::string_view TovrelAccountsEnvironment::domain() const {
    return hostName(accountsHostNames, environment_);
}

} // namespace tovrel
