#pragma once

#include <QZFrameworkCoreLogic/Detail/Keychain/KeychainBackend.hpp>
#include <QZFrameworkCoreLogic/KeychainConfiguration.hpp>

#include <memory>

namespace tovrel::detail {

/// The backend that a configuration asks for; its directory is filled in. Contacts nothing yet.
std::unique_ptr<KeychainBackend> makeBackend(const KeychainConfiguration& configuration);

} // namespace tovrel::detail
