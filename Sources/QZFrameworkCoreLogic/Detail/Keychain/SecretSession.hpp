#pragma once

#include <Platform/Coding/Data.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/GLibContext.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/SessionBus.hpp>

#include <memory>

typedef struct _SecretService SecretService;

namespace tovrel::detail {

/// An encrypted session with the keyring service: what travels over the bus is no plain secret.
class SecretSession {
public:
    /// Blocks. Throws `KeychainError`.
    SecretSession(std::shared_ptr<SessionBus> bus, Clock::Instant deadline);
    SecretSession(const SecretSession&) = delete;
    SecretSession& operator=(const SecretSession&) = delete;
    ~SecretSession();

    /// Whether the service is still the one that the session is with.
    [[nodiscard]] bool isCurrent() const;

    /// Lets go of the signals that came in; to be called with each use.
    void drain() const { context_.drain(); }

    [[nodiscard]] const char* path() const;

    /// A secret in the form in which it travels; floating.
    [[nodiscard]] GVariant* encode(const Data& bytes) const;

    /// The bytes of a secret that has travelled. Throws `KeychainError`.
    [[nodiscard]] Data decode(GVariant* secret) const;

private:
    std::shared_ptr<SessionBus> bus_;
    std::uint64_t ownerChanges_;
    GLibContext context_;
    GObjectPointer<SecretService> service_;
};

} // namespace tovrel::detail
