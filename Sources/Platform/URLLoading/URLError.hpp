#pragma once

#include <Platform/System/Error.hpp>
#include <Platform/System/Export.hpp>

#include <string>
#include <string_view>

namespace tovrel {

/// Why loading a URL failed. Two errors are equal if their kinds are; the context, "GET api.example" for example, is
/// for developers and part of `what()` alone.
class TOVREL_EXPORT URLError final : public Error {
public:
    enum class Kind {
        /// No network interface is up.
        notConnectedToInternet,
        /// No byte came or went for the request's timeout interval.
        timedOut,
        cannotFindHost,
        /// Refused, or no route to it.
        cannotConnectToHost,
        /// The connection ended before the response did.
        networkConnectionLost,
        /// No TLS connection of an acceptable version could be made.
        secureConnectionFailed,
        /// The certificate is expired, for another host, or of an unknown authority.
        certificateUntrusted,
        cancelled,
        /// No HTTP, or HTTP beyond every sane limit.
        badServerResponse,
        /// The body is larger than the session's configuration allows.
        dataLengthExceedsMaximum,
        /// No host, a relative URL, or one with user information, which is never sent.
        badURL,
        /// A scheme other than https and http.
        unsupportedURL,
        /// Plain http, by the request or by a redirect, where the configuration does not allow it.
        insecureURL,
        tooManyRedirects,
        /// A header field or a method that would break the message.
        invalidHeader,
        /// The body is not what its Content-Encoding says, or ends too early for it.
        cannotDecodeContentData,
        /// The request's cache policy is `returnCacheDataDontLoad`, and no response to it is stored.
        resourceUnavailable,
        unknown,
    };

    static URLError notConnectedToInternet(std::string_view context = {});
    static URLError timedOut(std::string_view context = {});
    static URLError cannotFindHost(std::string_view context = {});
    static URLError cannotConnectToHost(std::string_view context = {});
    static URLError networkConnectionLost(std::string_view context = {});
    static URLError secureConnectionFailed(std::string_view context = {});
    static URLError certificateUntrusted(std::string_view context = {});
    static URLError cancelled(std::string_view context = {});
    static URLError badServerResponse(std::string_view context = {});
    static URLError dataLengthExceedsMaximum(std::string_view context = {});
    static URLError badURL(std::string_view context = {});
    static URLError unsupportedURL(std::string_view context = {});
    static URLError insecureURL(std::string_view context = {});
    static URLError tooManyRedirects(std::string_view context = {});
    static URLError invalidHeader(std::string_view context = {});
    static URLError cannotDecodeContentData(std::string_view context = {});
    static URLError resourceUnavailable(std::string_view context = {});
    static URLError unknown(std::string_view context = {});

    /// The context must hold nothing secret: no header value, no query, no body.
    explicit URLError(Kind kind, std::string_view context = {});
    URLError(const URLError&) = default;
    URLError(URLError&&) noexcept = default;
    URLError& operator=(const URLError&) = default;
    URLError& operator=(URLError&&) noexcept = default;
    ~URLError() override;

    Kind kind() const noexcept { return kind_; }

    friend bool operator==(const URLError& a, const URLError& b) noexcept { return a.kind_ == b.kind_; }

private:
    Kind kind_;
};

} // namespace tovrel
