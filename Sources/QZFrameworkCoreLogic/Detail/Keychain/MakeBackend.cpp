#include <QZFrameworkCoreLogic/Detail/Keychain/MakeBackend.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/MemoryBackend.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/SealedBackend.hpp>

namespace tovrel::detail {

std::unique_ptr<KeychainBackend> makeBackend(const KeychainConfiguration& configuration) {
    using Backend = KeychainConfiguration::Backend;
    switch (configuration.backend) {
    case Backend::memory:
        return std::make_unique<MemoryBackend>();
    case Backend::automatic:
    case Backend::sealedStore:
        break;
    }
    return std::make_unique<SealedBackend>(configuration.directory);
}

} // namespace tovrel::detail
