#pragma once

#include <cstdint>
#include <string>

namespace tovrel::tests {

/// A plain TCP connection to this machine, with deadlines.
class LoopbackConnection {
public:
    /// Connects to the port of 127.0.0.1, or of another address of this machine.
    explicit LoopbackConnection(std::uint16_t port, const char* address = "127.0.0.1");
    ~LoopbackConnection();
    LoopbackConnection(const LoopbackConnection&) = delete;
    LoopbackConnection& operator=(const LoopbackConnection&) = delete;

    /// Whether somebody listened.
    [[nodiscard]] bool isConnected() const { return isConnected_; }

    /// Sends the bytes; false where the other side is gone.
    bool send(const std::string& bytes) const;

    /// All bytes until the other side closes, or "still open" after the deadline.
    [[nodiscard]] std::string receive() const;

    /// A GET with the listener's own address, and the response.
    static std::string get(std::uint16_t port, const std::string& target);

    /// Whether nobody listens there.
    static bool isRefused(std::uint16_t port);

private:
    int socket_;
    bool isConnected_;
};

} // namespace tovrel::tests
