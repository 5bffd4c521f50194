#include <QZFrameworkCoreLogic/Detail/Keychain/AutomaticBackend.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/MakeBackend.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/MemoryBackend.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/SealedBackend.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/SecretServiceBackend.hpp>

namespace tovrel::detail {

std::unique_ptr<KeychainBackend> makeBackend(const KeychainConfiguration& configuration) {
    using Backend = KeychainConfiguration::Backend;
    switch (configuration.backend) {
    case Backend::memory:
        return std::make_unique<MemoryBackend>();
    case Backend::sealedStore:
        return std::make_unique<SealedBackend>(configuration.directory);
    case Backend::secretService:
        return std::make_unique<SecretServiceBackend>(configuration.serviceName);
    case Backend::automatic:
        break;
    }
    return std::make_unique<AutomaticBackend>(configuration.serviceName, configuration.directory);
}

} // namespace tovrel::detail
