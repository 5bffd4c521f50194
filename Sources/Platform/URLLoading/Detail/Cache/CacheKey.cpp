#include <Platform/URLLoading/Detail/ASCII.hpp>
#include <Platform/URLLoading/Detail/Cache/CacheKey.hpp>
#include <Platform/URLLoading/Detail/Cache/FieldValue.hpp>
#include <Platform/URLLoading/Detail/URIReference.hpp>

namespace tovrel {

std::string cacheKey(const URL& url) {
    const URIReference reference(url.absoluteString());
    const URIAuthority authority(reference.authority.value_or(""));
    std::string key = ascii::lowered(reference.scheme.value_or(""));
    const std::string_view defaultPort = key == "https" ? "443" : "80";
    key.append("://").append(ascii::lowered(authority.host));
    if (authority.port && !authority.port->empty() && *authority.port != defaultPort) {
        key.append(":").append(*authority.port);
    }
    key.append(reference.path.empty() ? "/" : reference.path);
    if (reference.query) {
        key.append("?").append(*reference.query);
    }
    return key;
}

} // namespace tovrel
