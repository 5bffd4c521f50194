#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <Support/ChildProgram.hpp>
#include <Support/TemporaryDirectory.hpp>

namespace tovrel::tests {

/// A user's session with a bus of its own, on which a real keyring daemon may run. The environment of this process
/// points into it for as long as it lives.
class PrivateSession {
public:
    /// Whether the bus may start the keyring daemon when it is asked for it.
    enum class Activation { none, keyring };

    explicit PrivateSession(Activation activation = Activation::none);
    PrivateSession(const PrivateSession&) = delete;
    PrivateSession& operator=(const PrivateSession&) = delete;
    ~PrivateSession();

    /// Starts the daemon with the login keyring unlocked, and made if need be, and waits until it answers.
    void startKeyring();
    void killKeyring();
    /// Stops the daemon where it stands, and lets it go on.
    void freezeKeyring() const { keyring_->signal(SIGSTOP); }
    void thawKeyring() const { keyring_->signal(SIGCONT); }
    /// Locks the login keyring.
    void lockKeyring() const;
    /// Unlocks it as the beginning of a session does, with a new daemon.
    void unlockKeyring();
    void killBus();

    [[nodiscard]] const std::filesystem::path& home() const { return directory_.path(); }

private:
    [[nodiscard]] std::filesystem::path writeBusConfiguration(Activation activation) const;
    void setVariable(const std::string& name, const std::string& value);

    TemporaryDirectory directory_;
    std::vector<std::pair<std::string, std::optional<std::string>>> previous_;
    std::unique_ptr<ChildProgram> bus_;
    std::unique_ptr<ChildProgram> keyring_;
};

} // namespace tovrel::tests
