#include <Platform/URLLoading/URLSessionConfiguration.hpp>

#include <utility>

namespace tovrel {

URLConnectionOverride::URLConnectionOverride(std::string fromHost, std::optional<std::uint16_t> fromPort,
                                             std::string toHost, std::uint16_t toPort)
    : host(std::move(fromHost)), port(fromPort), targetHost(std::move(toHost)), targetPort(toPort) {}

URLProxy::URLProxy(Kind kind, std::string url) : kind_(kind), url_(std::move(url)) {}

URLProxy URLProxy::direct() {
    return URLProxy(Kind::direct, {});
}

URLProxy URLProxy::server(std::string url) {
    return URLProxy(Kind::server, std::move(url));
}

URLProxy URLProxy::system() {
    return URLProxy(Kind::system, {});
}

URLSessionConfiguration::URLSessionConfiguration() = default;

} // namespace tovrel
