#pragma once

#include <Platform/System/Export.hpp>
#include <Platform/URLLoading/URL.hpp>
#include <TovrelWebServices/Services/WebServiceEnvironment.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsRealm.hpp>

#include <optional>
#include <string_view>

namespace tovrel {

/// The two faces of the accounts server.
enum class TovrelAccountsEndpoint {
    application,  ///< its own resources, below "/api/"
    openIDConnect ///< the protocol's endpoints, below "/realms/" and the realm
};

/// Builds the URLs of the accounts server.
class TOVREL_EXPORT URLBuilder {
public:
    URLBuilder() = delete;

    /// @param path Appended as it is, without percent-encoding.
    /// @return Absent when the text is no URL.
    [[nodiscard]] static std::optional<URL> url(std::string_view path, const TovrelAccountsEnvironment& environment,
                                                TovrelAccountsRealm realm, TovrelAccountsEndpoint endpoint);
};

} // namespace tovrel
