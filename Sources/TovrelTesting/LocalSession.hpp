#pragma once

#include <Platform/System/Export.hpp>
#include <Platform/URLLoading/URLSessionConfiguration.hpp>
#include <TovrelTesting/LocalBackEnd.hpp>

#include <string>
#include <vector>

namespace tovrel::testing {

/// A session configuration for which the back end is every one of these hosts: connections for them go to its TLS port,
/// and its certificate authority is trusted beside the system's. The back end's certificate has to name the hosts.
/// Responses are kept in the back end's own directory.
[[nodiscard]] TOVREL_EXPORT URLSessionConfiguration localSessionConfiguration(const LocalBackEnd& backEnd,
                                                                              const std::vector<std::string>& hosts);

} // namespace tovrel::testing
