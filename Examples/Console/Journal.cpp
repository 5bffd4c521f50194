#include "Journal.hpp"

#include <iostream>
#include <string>

using tovrel::testing::HTTPVersion;
using tovrel::testing::ReceivedRequest;

namespace {

constexpr std::size_t longestBody = 400;

std::string_view name(HTTPVersion version) {
    switch (version) {
    case HTTPVersion::http1_0:
        return "HTTP/1.0";
    case HTTPVersion::http1_1:
        return "HTTP/1.1";
    case HTTPVersion::http2:
        return "HTTP/2";
    }
    return "HTTP";
}

void body(std::string_view text) {
    if (!text.empty()) {
        std::cout << "      " << text.substr(0, longestBody) << (text.size() > longestBody ? " …" : "") << '\n';
    }
}

} // namespace

namespace journal {

void part(std::string_view text) {
    std::cout << "\n" << text << '\n';
}

void heading(std::string_view text) {
    std::cout << "\n== " << text << '\n';
}

void line(std::string_view text) {
    std::cout << "   " << text << '\n';
}

void sent(const ReceivedRequest& request) {
    std::cout << "   → " << request.method << " https://" << request.host << request.target << "  ("
              << name(request.version) << ", connection " << request.connection << ")\n";
    for (const auto& header : request.headers) {
        std::cout << "      " << header.name << ": " << header.value << '\n';
    }
    body(request.body);
}

void sentTo(const ReceivedRequest& request) {
    std::cout << "   → " << request.method << " https://" << request.host << request.path() << '\n';
}

void received(std::int64_t statusCode, const tovrel::HTTPHeaders& headers, const std::optional<tovrel::Data>& data) {
    std::cout << "   ← " << statusCode << '\n';
    for (const auto& header : headers) {
        std::cout << "      " << header.name << ": " << header.value << '\n';
    }
    body(data ? data->view() : std::string_view("(no body)"));
}

void failed(const std::exception_ptr& error) {
    try {
        std::rethrow_exception(error);
    } catch (const std::exception& failure) {
        std::cout << "   ✗ " << failure.what() << '\n';
    }
}

} // namespace journal
