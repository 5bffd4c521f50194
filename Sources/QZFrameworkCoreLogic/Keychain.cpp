#include <Platform/Coding/TextEncoding.hpp>
#include <Platform/System/FatalError.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/DataDirectory.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/KeychainStore.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/MemoryBackend.hpp>
#include <QZFrameworkCoreLogic/Keychain.hpp>

#include <utility>

namespace tovrel {

namespace {

/// The configuration with the directory that it stands for.
KeychainConfiguration resolved(KeychainConfiguration configuration) {
    const std::string& name = configuration.serviceName;
    if (name.empty() || name == "." || name == ".." || name.find_first_of(std::string_view("/\0", 2)) != name.npos) {
        fatalError("the service name of a keychain has to be a plain file name");
    }
    if (configuration.directory.empty()) {
        configuration.directory = detail::dataDirectory() / name / "keychain";
    }
    return configuration;
}

Async<std::optional<std::string>> text(Async<std::optional<Data>> operation) {
    const std::optional<Data> bytes = co_await std::move(operation);
    if (!bytes) {
        co_return std::nullopt;
    }
    if (!encodeText(bytes->view(), TextEncoding::utf8, false)) {
        throw KeychainError::corrupt("reading text");
    }
    co_return bytes->string();
}

} // namespace

Keychain::Keychain() : Keychain(KeychainConfiguration()) {}

Keychain::Keychain(const KeychainConfiguration& configuration)
    : Keychain(detail::KeychainStore::shared(resolved(configuration)), configuration.deadline) {}

Keychain::Keychain(std::shared_ptr<detail::KeychainStore> store, Clock::Duration deadline)
    : store_(std::move(store)), deadline_(deadline) {}

Keychain Keychain::inMemory() {
    return Keychain(std::make_shared<detail::KeychainStore>(std::make_unique<detail::MemoryBackend>()),
                    KeychainConfiguration().deadline);
}

Async<std::optional<Data>> Keychain::data(std::string key) const {
    return detail::KeychainStore::read(store_, std::move(key), deadline_);
}

Async<std::optional<std::string>> Keychain::string(std::string key) const {
    return text(data(std::move(key)));
}

Async<void> Keychain::setData(std::string key, Data value, KeychainAccessibility accessibility) const {
    return detail::KeychainStore::write(store_, std::move(key), detail::KeychainRecord(std::move(value), accessibility),
                                        deadline_);
}

Async<void> Keychain::setString(std::string key, std::string value, KeychainAccessibility accessibility) const {
    return setData(std::move(key), Data(value), accessibility);
}

Async<bool> Keychain::remove(std::string key) const {
    return detail::KeychainStore::remove(store_, std::move(key), deadline_);
}

} // namespace tovrel
