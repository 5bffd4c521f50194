// Another process of the same application: `keychain_process BACKEND DIRECTORY put|get|drop|spoil KEY [VALUE [TIMES]]`.
#include <Platform/Concurrency/Start.hpp>
#include <QZFrameworkCoreLogic/Keychain.hpp>

#include <iostream>
#include <libsecret/secret.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using tovrel::get;
using tovrel::Keychain;
using tovrel::KeychainAccessibility;
using tovrel::KeychainConfiguration;

/// Puts something into an entry of the keyring that no keychain has written.
void spoil(const std::string& key) {
    const SecretSchema schema{"com.tovrel.Keychain",
                              SECRET_SCHEMA_NONE,
                              {{"service", SECRET_SCHEMA_ATTRIBUTE_STRING}, {"key", SECRET_SCHEMA_ATTRIBUTE_STRING}},
                              0,
                              nullptr,
                              nullptr,
                              nullptr,
                              nullptr,
                              nullptr,
                              nullptr,
                              nullptr};
    if (!secret_password_store_sync(&schema, SECRET_COLLECTION_DEFAULT, "label", "no record", nullptr, nullptr,
                                    "service", "keychain-tests", "key", key.c_str(), nullptr)) {
        throw std::runtime_error("could not store");
    }
}

int run(const std::vector<std::string>& arguments) {
    KeychainConfiguration configuration;
    configuration.serviceName = "keychain-tests";
    configuration.backend = arguments.at(0) == "automatic" ? KeychainConfiguration::Backend::automatic
                            : arguments.at(0) == "sealed"  ? KeychainConfiguration::Backend::sealedStore
                                                           : KeychainConfiguration::Backend::secretService;
    configuration.directory = arguments.at(1);
    const Keychain keychain(configuration);
    const std::string& action = arguments.at(2);
    const std::string& key = arguments.at(3);
    if (action == "put") {
        const int times = arguments.size() > 5 ? std::stoi(arguments[5]) : 1;
        for (int index = 0; index < times; ++index) {
            get(keychain.setString(key, arguments.at(4), KeychainAccessibility::afterFirstUnlock));
        }
    } else if (action == "get") {
        std::cout << get(keychain.string(key)).value_or("(absent)");
    } else if (action == "spoil") {
        spoil(key);
    } else {
        std::cout << get(keychain.remove(key));
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(std::vector<std::string>(argv + 1, argv + argc));
    } catch (const std::exception& error) {
        std::cout << error.what();
        return 1;
    }
}
