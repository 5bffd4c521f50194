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
    /// The value of a field, or null.
    const std::string* find(std::string_view name) const noexcept;
    HTTPHeaders takeFields() noexcept { return HTTPHeaders(std::move(fields_)); }

    /// Absent where there is none or it is no number.
    std::optional<std::uint64_t> contentLength() const;

private:
    bool startsAnew(std::string_view statusLine);
    void addField(std::string_view line);

    int statusCode_ = 0;
    std::string httpVersion_;
    std::vector<HTTPHeader> fields_;
    std::size_t size_ = 0;
    bool complete_ = false;
};

} // namespace tovrel
