#include <TovrelTesting/BackEnd/Http1RequestParser.hpp>

#include <boost/asio/buffer.hpp>
#include <boost/beast/http/error.hpp>

namespace tovrel::testing {

namespace http = boost::beast::http;

Http1RequestParser::Http1RequestParser(ReceivedRequest& request) : request_(request) {
    constexpr std::uint32_t longestHead = 1U << 20U;
    header_limit(longestHead);
    body_limit(boost::none);
}

std::size_t Http1RequestParser::parseHead(std::string_view bytes, Failure& failure) {
    return put(boost::asio::const_buffer(bytes.data(), bytes.size()), failure);
}

std::size_t Http1RequestParser::parseBody(std::string_view bytes, Failure& failure) {
    eager(true);
    return put(boost::asio::const_buffer(bytes.data(), bytes.size()), failure);
}

bool Http1RequestParser::needsMore(const Failure& failure) {
    return failure == http::error::need_more;
}

void Http1RequestParser::on_request_impl(http::verb, Text method, Text target, int version, Failure&) {
    constexpr int version1_0 = 10;
    request_.method = method;
    request_.target = target;
    request_.version = version == version1_0 ? HTTPVersion::http1_0 : HTTPVersion::http1_1;
}

void Http1RequestParser::on_response_impl(int, Text, int, Failure&) {}

void Http1RequestParser::on_field_impl(http::field field, Text name, Text value, Failure&) {
    if (is_header_done()) {
        request_.trailers.emplace_back(name, value);
        return;
    }
    if (field == http::field::host) {
        request_.host = value;
    }
    request_.headers.emplace_back(name, value);
}

void Http1RequestParser::on_header_impl(Failure&) {}

void Http1RequestParser::on_body_init_impl(const boost::optional<std::uint64_t>&, Failure&) {}

std::size_t Http1RequestParser::on_body_impl(Text bytes, Failure&) {
    request_.received = ReceivedPart::partOfBody;
    request_.body.append(bytes.data(), bytes.size());
    return bytes.size();
}

void Http1RequestParser::on_chunk_header_impl(std::uint64_t, Text, Failure&) {}

std::size_t Http1RequestParser::on_chunk_body_impl(std::uint64_t, Text bytes, Failure& failure) {
    return on_body_impl(bytes, failure);
}

void Http1RequestParser::on_finish_impl(Failure&) {
    request_.received = ReceivedPart::everything;
}

} // namespace tovrel::testing
