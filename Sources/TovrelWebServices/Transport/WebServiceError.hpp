#pragma once

#include <Platform/System/Error.hpp>

#include <cstdint>

namespace tovrel {

/// What the transport layer recognises of failures. Equal when the kind and, for an unexpected status, the code are.
class TOVREL_EXPORT WebServiceError final : public Error {
public:
    enum class Kind {
        /// A status outside the acceptable range that has no kind of its own.
        unexpectedServerStatusCode,
        /// The device is not connected.
        notConnectedToInternet,
        /// Status 400, a response that is not HTTP, or none of the body that was needed.
        invalidServerResponse,
        /// A URL that cannot be formed.
        invalidUrl,
        /// Status 401.
        unauthorized,
        /// Status 404.
        notFound,
        /// Status 500.
        internalServerError,
        timedOut
    };

    [[nodiscard]] static WebServiceError unexpectedServerStatusCode(std::int64_t statusCode);
    [[nodiscard]] static WebServiceError notConnectedToInternet();
    [[nodiscard]] static WebServiceError invalidServerResponse();
    [[nodiscard]] static WebServiceError invalidUrl();
    [[nodiscard]] static WebServiceError unauthorized();
    [[nodiscard]] static WebServiceError notFound();
    [[nodiscard]] static WebServiceError internalServerError();
    [[nodiscard]] static WebServiceError timedOut();

    WebServiceError(const WebServiceError&) = default;
    WebServiceError(WebServiceError&&) noexcept = default;
    WebServiceError& operator=(const WebServiceError&) = default;
    WebServiceError& operator=(WebServiceError&&) noexcept = default;
    ~WebServiceError() override;

    [[nodiscard]] Kind kind() const { return kind_; }

    /// The code of an `unexpectedServerStatusCode`; 0 for the other kinds.
    [[nodiscard]] std::int64_t statusCode() const { return statusCode_; }

    friend bool operator==(const WebServiceError& a, const WebServiceError& b) {
        return a.kind_ == b.kind_ && a.statusCode_ == b.statusCode_;
    }

private:
    WebServiceError(Kind kind, std::int64_t statusCode, std::string message);

    Kind kind_;
    std::int64_t statusCode_;
};

} // namespace tovrel
