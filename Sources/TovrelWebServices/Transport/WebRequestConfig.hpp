#pragma once

#include <Platform/System/Bundle.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelContracts/TovrelAppIdentifier.hpp>

#include <optional>
#include <string>

namespace tovrel {

/// What all requests of the process have in common. Thread-safe: readers see a snapshot.
class TOVREL_EXPORT WebRequestConfig {
public:
    WebRequestConfig() = delete;

    /// The "User-Agent" of API and CDN requests; absent at first.
    [[nodiscard]] static std::optional<std::string> userAgent();

    /// Sets the user agent to the application's code in upper case, "/", the bundle's "CFBundleShortVersionString", a
    /// space and the platform: "WX/5.2.1 iOS". Without version or platform it stays as it is, and the log says why.
    static void setUserAgent(const TovrelAppIdentifier& appIdentifier, const Bundle& bundle,
                             const std::optional<std::string>& platform);
};

} // namespace tovrel
