#pragma once

#include <TovrelTesting/ReceivedRequest.hpp>

#include <boost/beast/http/basic_parser.hpp>

#include <cstddef>
#include <string_view>

namespace tovrel::testing {

/// Parses one HTTP/1.1 request into a `ReceivedRequest`, every line as it was sent.
class Http1RequestParser : private boost::beast::http::basic_parser<true> {
public:
    using Failure = boost::beast::error_code;

    explicit Http1RequestParser(ReceivedRequest& request);

    /// Parses up to the end of the head and returns how many bytes it took. A failure that is not "need more" is the
    /// peer's mistake.
    std::size_t parseHead(std::string_view bytes, Failure& failure);

    /// Goes on with the body.
    std::size_t parseBody(std::string_view bytes, Failure& failure);

    static bool needsMore(const Failure& failure);

    bool hasHead() const { return is_header_done(); }
    bool isComplete() const { return is_done(); }
    bool keepsConnection() const { return keep_alive(); }

private:
    using Text = boost::beast::string_view;

    void on_request_impl(boost::beast::http::verb verb, Text method, Text target, int version,
                         Failure& failure) override;
    void on_response_impl(int status, Text reason, int version, Failure& failure) override;
    void on_field_impl(boost::beast::http::field field, Text name, Text value, Failure& failure) override;
    void on_header_impl(Failure& failure) override;
    void on_body_init_impl(const boost::optional<std::uint64_t>& length, Failure& failure) override;
    std::size_t on_body_impl(Text bytes, Failure& failure) override;
    void on_chunk_header_impl(std::uint64_t size, Text extensions, Failure& failure) override;
    std::size_t on_chunk_body_impl(std::uint64_t remaining, Text bytes, Failure& failure) override;
    void on_finish_impl(Failure& failure) override;

    ReceivedRequest& request_;
};

} // namespace tovrel::testing
