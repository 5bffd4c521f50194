#pragma once

#include <Platform/URLLoading/HTTPHeaders.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tovrel {

/// The head of a response, gathered line by line as libcurl hands the lines over.
class ResponseHead {
public:
    enum class Event {
        /// One more line.
        line,
        /// The empty line of an interim response (1xx): the head starts anew.
        interim,
        /// The empty line of the final response: the head is complete.
        complete,
        /// More than anyone needs, or no HTTP.
        refused,
    };

    /// Takes one line, its line end included. Lines after the head, the trailers, are dropped.
    Event add(std::string_view line);

    void clear();

    int statusCode() const noexcept { return statusCode_; }
    const std::string& httpVersion() const noexcept { return httpVersion_; }
    /// The fields of a complete head.
    const HTTPHeaders& fields() const noexcept { return completeFields_; }
    HTTPHeaders takeFields() noexcept { return std::move(completeFields_); }
    /// The value of a field of a complete head, or null.
    const std::string* find(std::string_view name) const noexcept { return completeFields_.find(name); }

    /// Absent where there is none or it is no number.
    std::optional<std::uint64_t> contentLength() const;

private:
    bool startsAnew(std::string_view statusLine);
    void addField(std::string_view line);

    int statusCode_ = 0;
    std::string httpVersion_;
    std::vector<HTTPHeader> fields_;
    HTTPHeaders completeFields_;
    std::size_t size_ = 0;
    bool complete_ = false;
};

} // namespace tovrel
