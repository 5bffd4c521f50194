#include <TovrelTesting/BackEnd/RawClient.hpp>

#include <gtest/gtest.h>
#include <openssl/err.h>

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <sys/socket.h>
#include <unistd.h>

namespace tovrel::testing {

RawClient::RawClient(std::uint16_t port)
    : socket_(::socket(AF_INET, SOCK_STREAM, 0)),
      context_(SSL_CTX_new(TLS_client_method())),
      tls_(SSL_new(context_.get())) {
    const timeval limit = {10, 0};
    ::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    SSL_set_fd(tls_.get(), socket_);
    EXPECT_EQ(SSL_connect(tls_.get()), 1);
}

RawClient::~RawClient() {
    ::close(socket_);
}

void RawClient::write(std::string_view bytes) {
    EXPECT_EQ(SSL_write(tls_.get(), bytes.data(), static_cast<int>(bytes.size())), static_cast<int>(bytes.size()));
}

std::string RawClient::readToEnd() {
    std::string result;
    std::array<char, 4096> buffer{};
    int count = 0;
    ERR_clear_error();
    while ((count = SSL_read(tls_.get(), buffer.data(), static_cast<int>(buffer.size()))) > 0) {
        result.append(buffer.data(), static_cast<std::size_t>(count));
    }
    const int systemError = errno;
    switch (SSL_get_error(tls_.get(), count)) {
    case SSL_ERROR_ZERO_RETURN:
        ending_ = Ending::farewell;
        break;
    case SSL_ERROR_SYSCALL:
        ending_ = systemError == ECONNRESET ? Ending::reset : Ending::silence;
        break;
    default:
        ending_ = ERR_GET_REASON(ERR_peek_error()) == SSL_R_UNEXPECTED_EOF_WHILE_READING ? Ending::silence
                                                                                         : Ending::forgedRecord;
    }
    return result;
}

} // namespace tovrel::testing
