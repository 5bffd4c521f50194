#include <TovrelTesting/BackEnd/Channel.hpp>

#include <boost/asio/buffer.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/ssl/error.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/asio/write.hpp>
#include <openssl/ssl.h>

#include <array>
#include <chrono>
#include <utility>

namespace tovrel::testing {

namespace asio = boost::asio;
using boost::system::error_code;

Channel::Channel(asio::ip::tcp::socket socket, asio::ssl::context* context, std::uint64_t number)
    : number_(number), socket_(std::move(socket)), lingering_(socket_.get_executor()) {
    error_code ignored;
    socket_.set_option(asio::ip::tcp::no_delay(true), ignored);
    if (context != nullptr) {
        tls_.emplace(socket_, *context);
    }
}

bool Channel::hasResumedSession() const {
    return tls_ && SSL_session_reused(const_cast<SSL*>(const_cast<Channel*>(this)->tls_->native_handle())) == 1;
}

bool Channel::hasNegotiatedHTTP2() const {
    if (!tls_) {
        return false;
    }
    const unsigned char* name = nullptr;
    unsigned int length = 0;
    SSL_get0_alpn_selected(const_cast<Channel*>(this)->tls_->native_handle(), &name, &length);
    return std::string_view(reinterpret_cast<const char*>(name), length) == "h2";
}

Async<void> Channel::readAhead() {
    std::array<char, 4096> buffer{};
    error_code failure;
    while (!failure) {
        const std::size_t count =
            co_await socket_.async_read_some(asio::buffer(buffer), asio::redirect_error(asio::use_awaitable, failure));
        readAhead_.append(buffer.data(), count);
    }
    if (failure != asio::error::operation_aborted) {
        abort();
    }
}

void Channel::cancelReadingAhead() {
    error_code ignored;
    socket_.cancel(ignored);
}

Async<void> Channel::waitForFirstBytes() {
    co_await socket_.async_wait(asio::ip::tcp::socket::wait_read, asio::use_awaitable);
}

Async<void> Channel::handshake() {
    if (!tls_) {
        co_return;
    }
    if (readAhead_.empty()) {
        co_await tls_->async_handshake(asio::ssl::stream_base::server, asio::use_awaitable);
    } else {
        co_await tls_->async_handshake(asio::ssl::stream_base::server, asio::buffer(readAhead_), asio::use_awaitable);
    }
}

Async<std::size_t> Channel::readSome(char* buffer, std::size_t size) {
    const asio::mutable_buffer target(buffer, size);
    if (!tls_ && !readAhead_.empty()) {
        const std::size_t count = readAhead_.copy(buffer, size);
        readAhead_.erase(0, count);
        co_return count;
    }
    if (tls_) {
        co_return co_await tls_->async_read_some(target, asio::use_awaitable);
    }
    co_return co_await socket_.async_read_some(target, asio::use_awaitable);
}

Async<void> Channel::write(std::string_view bytes) {
    const asio::const_buffer source(bytes.data(), bytes.size());
    if (tls_) {
        co_await asio::async_write(*tls_, source, asio::use_awaitable);
    } else {
        co_await asio::async_write(socket_, source, asio::use_awaitable);
    }
}

Async<void> Channel::writeBeneathTLS(std::string_view bytes) {
    const asio::const_buffer source(bytes.data(), bytes.size());
    co_await asio::async_write(socket_, source, asio::use_awaitable);
}

Async<void> Channel::writeForgedRecord() {
    // An application data record of TLS 1.2 form (RFC 8446 section 5.2) whose 64 bytes no key has sealed.
    static constexpr std::array<char, 69> record = {0x17, 0x03, 0x03, 0x00, 0x40};
    co_await writeBeneathTLS(std::string_view(record.data(), record.size()));
}

void Channel::shutDownSending() {
    error_code ignored;
    socket_.shutdown(asio::ip::tcp::socket::shutdown_send, ignored);
}

void Channel::endSending(Farewell farewell) {
    if (tls_ && farewell == Farewell::closeNotify) {
        // The operation sends its alert at once and then waits for the peer's, which need not ever come.
        tls_->async_shutdown([self = shared_from_this()](const error_code&) {});
        asio::post(socket_.get_executor(), [self = shared_from_this()] { self->shutDownSending(); });
    } else {
        shutDownSending();
    }
}

Async<void> Channel::finish(Farewell farewell) {
    closeSoon();
    error_code failure;
    if (tls_ && farewell == Farewell::closeNotify) {
        // The end of the stream is told only once, so no read may follow the one that this operation ends with. It ends
        // early, with bytes still to come, where the peer goes on to send.
        asio::post(socket_.get_executor(), [self = shared_from_this()] { self->shutDownSending(); });
        co_await tls_->async_shutdown(asio::redirect_error(asio::use_awaitable, failure));
        if (failure.category() == asio::error::get_ssl_category()) {
            failure.clear();
        }
    } else {
        shutDownSending();
    }
    std::array<char, 4096> swallowed{};
    while (!failure) {
        co_await socket_.async_read_some(asio::buffer(swallowed), asio::redirect_error(asio::use_awaitable, failure));
    }
    abort();
}

void Channel::closeSoon() {
    lingering_.expires_after(std::chrono::seconds(1));
    lingering_.async_wait([self = shared_from_this()](const error_code& failure) {
        if (!failure) {
            self->abort();
        }
    });
}

void Channel::reset() {
    error_code ignored;
    socket_.set_option(asio::socket_base::linger(true, 0), ignored);
    abort();
}

void Channel::abort() {
    error_code ignored;
    lingering_.cancel();
    socket_.close(ignored);
}

} // namespace tovrel::testing
