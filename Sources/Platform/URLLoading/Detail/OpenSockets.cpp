#include <Platform/URLLoading/Detail/Curl.hpp>
#include <Platform/URLLoading/Detail/OpenSockets.hpp>

#include <algorithm>
#include <netinet/in.h>
#include <new>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tovrel {

namespace {

int localPort(curl_socket_t socket) noexcept {
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    if (getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
        return -1;
    }
    switch (address.ss_family) {
    case AF_INET:
        return ntohs(reinterpret_cast<const sockaddr_in&>(address).sin_port);
    case AF_INET6:
        return ntohs(reinterpret_cast<const sockaddr_in6&>(address).sin6_port);
    default:
        return -1;
    }
}

} // namespace

void OpenSockets::serve(CURL* easy) {
    curl::check(curl_easy_setopt(easy, CURLOPT_OPENSOCKETFUNCTION, &OpenSockets::open));
    curl::check(curl_easy_setopt(easy, CURLOPT_OPENSOCKETDATA, this));
    curl::check(curl_easy_setopt(easy, CURLOPT_CLOSESOCKETFUNCTION, &OpenSockets::close));
    curl::check(curl_easy_setopt(easy, CURLOPT_CLOSESOCKETDATA, this));
}

bool OpenSockets::hasPeerLeft(int port) const noexcept {
    const auto found = std::find_if(sockets_.begin(), sockets_.end(),
                                    [port](curl_socket_t socket) { return localPort(socket) == port; });
    if (found == sockets_.end()) {
        return false;
    }
    pollfd state{*found, POLLRDHUP, 0};
    return poll(&state, 1, 0) > 0;
}

curl_socket_t OpenSockets::open(void* self, curlsocktype /*purpose*/, curl_sockaddr* address) noexcept {
    const curl_socket_t socket = ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
    if (socket < 0) {
        return CURL_SOCKET_BAD;
    }
    try {
        static_cast<OpenSockets*>(self)->sockets_.push_back(socket);
    } catch (const std::bad_alloc&) {
        ::close(socket);
        return CURL_SOCKET_BAD;
    }
    return socket;
}

int OpenSockets::close(void* self, curl_socket_t socket) noexcept {
    auto& sockets = *static_cast<OpenSockets*>(self);
    std::erase(sockets.sockets_, socket);
    sockets.events_.forget(socket);
    return ::close(socket);
}

} // namespace tovrel
