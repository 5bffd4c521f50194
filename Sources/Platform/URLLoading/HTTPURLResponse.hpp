#pragma once

#include <Platform/System/Export.hpp>
#include <Platform/URLLoading/HTTPHeaders.hpp>
#include <Platform/URLLoading/URLResponse.hpp>

#include <string>

namespace tovrel {

/// The head of an HTTP response.
class TOVREL_EXPORT HTTPURLResponse final : public URLResponse {
public:
    /// Where a response was taken from.
    enum class Source {
        network,
        /// The session's cache, without asking the origin.
        cache,
        /// The session's cache, after the origin had confirmed it.
        validatedCache,
    };

    HTTPURLResponse(URL url, int statusCode, HTTPHeaders allHeaderFields, std::string httpVersion,
                    Source source = Source::network);
    ~HTTPURLResponse() override;

    int statusCode() const noexcept { return statusCode_; }

    /// The fields as received, in their order; names are lower case over HTTP/2. Repeated fields are one, joined with
    /// ", " (RFC 9110, section 5.2), except Set-Cookie, which stays apart. Trailers are not among them. The body has
    /// been decoded, although Content-Encoding and Content-Length still describe what was on the wire.
    const HTTPHeaders& allHeaderFields() const noexcept { return allHeaderFields_; }

    /// "HTTP/1.0", "HTTP/1.1" or "HTTP/2".
    const std::string& httpVersion() const noexcept { return httpVersion_; }

    /// Of a response that followed redirects, its last one.
    Source source() const noexcept { return source_; }

private:
    int statusCode_;
    HTTPHeaders allHeaderFields_;
    std::string httpVersion_;
    Source source_;
};

} // namespace tovrel
