#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <utility>

namespace tovrel {

WebServiceError::WebServiceError(Kind kind, std::int64_t statusCode, std::string message)
    : Error(std::move(message)), kind_(kind), statusCode_(statusCode) {}

WebServiceError::~WebServiceError() = default;

WebServiceError WebServiceError::unexpectedServerStatusCode(std::int64_t statusCode) {
    return WebServiceError(Kind::unexpectedServerStatusCode, statusCode,
                           "The server answered with the unexpected status " + std::to_string(statusCode) + ".");
}

WebServiceError WebServiceError::notConnectedToInternet() {
    return WebServiceError(Kind::notConnectedToInternet, 0, "The device is not connected to the internet.");
}

WebServiceError WebServiceError::invalidServerResponse() {
    return WebServiceError(Kind::invalidServerResponse, 0, "The server's response is not valid.");
}

WebServiceError WebServiceError::invalidUrl() {
    return WebServiceError(Kind::invalidUrl, 0, "The URL of the request cannot be formed.");
}

WebServiceError WebServiceError::unauthorized() {
    return WebServiceError(Kind::unauthorized, 0, "The server refused the request as unauthorized (401).");
}

WebServiceError WebServiceError::notFound() {
    return WebServiceError(Kind::notFound, 0, "The server has no such resource (404).");
}

WebServiceError WebServiceError::internalServerError() {
    return WebServiceError(Kind::internalServerError, 0, "The server failed (500).");
}

WebServiceError WebServiceError::timedOut() {
    return WebServiceError(Kind::timedOut, 0, "The request timed out.");
}

} // namespace tovrel
