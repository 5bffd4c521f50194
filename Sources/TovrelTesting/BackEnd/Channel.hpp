#pragma once

#include <Platform/Concurrency/Async.hpp>

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/asio/steady_timer.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tovrel::testing {

/// How a channel says goodbye before it ends the TCP connection.
enum class Farewell { closeNotify, none };

/// One accepted connection, with or without TLS, and the ways to mistreat it. Lives on the server's thread. At most one
/// read and one write are under way at a time. What fails throws `boost::system::system_error`.
class Channel : public std::enable_shared_from_this<Channel> {
public:
    /// Without a context the connection is plain.
    Channel(boost::asio::ip::tcp::socket socket, boost::asio::ssl::context* context, std::uint64_t number);

    std::uint64_t number() const noexcept { return number_; }
    bool isSecure() const noexcept { return tls_.has_value(); }
    bool hasResumedSession() const;
    bool hasNegotiatedHTTP2() const;
    Executor executor() { return socket_.get_executor(); }

    /// Reads and keeps what arrives before the handshake, until that is cancelled; notices when the peer goes away.
    Async<void> readAhead();
    void cancelReadingAhead();

    /// Returns when the first bytes have arrived.
    Async<void> waitForFirstBytes();

    Async<void> handshake();
    Async<std::size_t> readSome(char* buffer, std::size_t size);
    Async<void> write(std::string_view bytes);

    /// Writes beneath TLS, where the peer takes the bytes for a record.
    Async<void> writeBeneathTLS(std::string_view bytes);

    /// Sends a record that the peer cannot authenticate; without TLS just its bytes.
    Async<void> writeForgedRecord();

    /// Says goodbye and ends the sending direction.
    void endSending(Farewell farewell);

    /// Ends the sending direction and swallows what the peer still sends, for a socket that is closed over unread bytes
    /// resets the connection. Returns when the peer has ended its direction, at the latest after a second.
    Async<void> finish(Farewell farewell);

    /// Closes the connection after a second at the latest.
    void closeSoon();

    /// Resets the TCP connection.
    void reset();

    /// Closes at once; whatever is under way fails.
    void abort();

    bool isClosed() const { return !socket_.is_open(); }

private:
    void shutDownSending();

    std::uint64_t number_;
    boost::asio::ip::tcp::socket socket_;
    std::optional<boost::asio::ssl::stream<boost::asio::ip::tcp::socket&>> tls_;
    boost::asio::steady_timer lingering_;
    std::string readAhead_;
};

} // namespace tovrel::testing
