#pragma once

#include <openssl/ssl.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tovrel::testing {

/// How the server ended a connection, as a bare TLS client sees it.
enum class Ending { farewell, silence, reset, forgedRecord };

/// A blocking TLS client that speaks no HTTP at all, to see exactly what travels.
class RawClient {
public:
    explicit RawClient(std::uint16_t port);
    ~RawClient();
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    void write(std::string_view bytes);

    /// Everything up to the end of the connection, which `ending` then tells; gives up after ten seconds of silence.
    std::string readToEnd();
    Ending ending() const { return ending_; }

private:
    struct Deleter {
        void operator()(SSL_CTX* context) const noexcept { SSL_CTX_free(context); }
        void operator()(SSL* tls) const noexcept { SSL_free(tls); }
    };

    int socket_;
    std::unique_ptr<SSL_CTX, Deleter> context_;
    std::unique_ptr<SSL, Deleter> tls_;
    Ending ending_ = Ending::silence;
};

} // namespace tovrel::testing
