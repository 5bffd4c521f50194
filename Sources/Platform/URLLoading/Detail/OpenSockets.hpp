#pragma once

#include <Platform/URLLoading/Detail/SocketEvents.hpp>

#include <curl/curl.h>

#include <vector>

namespace tovrel {

/// The sockets that libcurl has open, made and closed here on its behalf.
///
/// libcurl 7.88 takes a kept connection for a living one while the peer's farewell waits in it unread. To a request
/// that must not be sent twice that makes the difference between a new connection and a failure, so it is looked at
/// here.
class OpenSockets {
public:
    /// @param events Forgets a socket before it is closed.
    explicit OpenSockets(SocketEvents& events) : events_(events) {}
    OpenSockets(const OpenSockets&) = delete;
    OpenSockets& operator=(const OpenSockets&) = delete;

    /// Lets the handle open and close its sockets here. Connections refer to this object until they are closed.
    void serve(CURL* easy);

    /// Whether the peer has ended the connection from that local port.
    bool hasPeerLeft(int localPort) const noexcept;

private:
    static curl_socket_t open(void* self, curlsocktype purpose, curl_sockaddr* address) noexcept;
    static int close(void* self, curl_socket_t socket) noexcept;

    SocketEvents& events_;
    std::vector<curl_socket_t> sockets_;
};

} // namespace tovrel
