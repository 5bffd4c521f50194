#include "LoopbackConnection.hpp"

#include <arpa/inet.h>
#include <cerrno>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace tovrel::tests {

LoopbackConnection::LoopbackConnection(std::uint16_t port, const char* address)
    : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    const timeval deadline{10, 0};
    ::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &deadline, sizeof deadline);
    ::setsockopt(socket_, SOL_SOCKET, SO_SNDTIMEO, &deadline, sizeof deadline);
    sockaddr_in endpoint{};
    endpoint.sin_family = AF_INET;
    endpoint.sin_port = htons(port);
    ::inet_pton(AF_INET, address, &endpoint.sin_addr);
    isConnected_ = ::connect(socket_, reinterpret_cast<const sockaddr*>(&endpoint), sizeof endpoint) == 0;
    // Where nobody listens, a socket that happens to get the same port connects to itself.
    sockaddr_in own{};
    socklen_t size = sizeof own;
    ::getsockname(socket_, reinterpret_cast<sockaddr*>(&own), &size);
    isConnected_ = isConnected_ && own.sin_port != endpoint.sin_port;
}

LoopbackConnection::~LoopbackConnection() {
    ::close(socket_);
}

bool LoopbackConnection::send(const std::string& bytes) const {
    return ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
}

std::string LoopbackConnection::receive() const {
    std::string received;
    char chunk[4096];
    while (true) {
        const ssize_t count = ::recv(socket_, chunk, sizeof chunk, 0);
        if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) {
            return "still open";
        }
        if (count <= 0) {
            return received;
        }
        received.append(chunk, static_cast<std::size_t>(count));
    }
}

std::string LoopbackConnection::get(std::uint16_t port, const std::string& target) {
    const LoopbackConnection connection(port);
    connection.send("GET " + target + " HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port) + "\r\n\r\n");
    return connection.receive();
}

bool LoopbackConnection::isRefused(std::uint16_t port) {
    return !LoopbackConnection(port).isConnected();
}

} // namespace tovrel::tests
