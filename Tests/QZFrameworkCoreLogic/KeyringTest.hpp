#pragma once

#include <QZFrameworkCoreLogic/Keychain.hpp>

#include <chrono>
#include <string>
#include <Support/Await.hpp>
#include <Support/ChildProgram.hpp>
#include <Support/KeychainErrors.hpp>
#include <Support/PrivateSession.hpp>
#include <Support/SystemLogTest.hpp>
#include <thread>
#include <vector>

namespace tovrel::tests {

/// A keychain in a user's session of the test's own.
class KeyringTest : public AsyncTest {
protected:
    using Backend = KeychainConfiguration::Backend;
    using Kind = KeychainError::Kind;

    static constexpr KeychainAccessibility afterFirstUnlock = KeychainAccessibility::afterFirstUnlock;
    static constexpr KeychainAccessibility whenUnlocked = KeychainAccessibility::whenUnlocked;

    explicit KeyringTest(Backend backend) {
        configuration_.serviceName = "keychain-tests";
        configuration_.backend = backend;
        configuration_.directory = session_.home() / "keychain";
    }

    [[nodiscard]] Keychain keychain() const { return Keychain(configuration_); }

    /// What another process of the application answers.
    [[nodiscard]] std::string inAnotherProcess(const std::vector<std::string>& action) const {
        return otherProcess(action)->finish().first;
    }

    [[nodiscard]] std::unique_ptr<ChildProgram> otherProcess(const std::vector<std::string>& action) const {
        std::vector<std::string> command{TOVREL_KEYCHAIN_PROCESS, backendName(), configuration_.directory.string()};
        command.insert(command.end(), action.begin(), action.end());
        return std::make_unique<ChildProgram>(command);
    }

    /// Whether the entry reads as this text soon: another process's change is heard of by a signal.
    [[nodiscard]] static bool becomes(const Keychain& keychain, const std::string& key,
                                      const std::optional<std::string>& text) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (getInTime(keychain.string(key)) != text) {
            if (std::chrono::steady_clock::now() > end) {
                return false;
            }
            std::this_thread::yield();
        }
        return true;
    }

    PrivateSession session_;
    KeychainConfiguration configuration_;

private:
    [[nodiscard]] std::string backendName() const {
        switch (configuration_.backend) {
        case Backend::automatic:
            return "automatic";
        case Backend::sealedStore:
            return "sealed";
        default:
            return "service";
        }
    }
};

} // namespace tovrel::tests
