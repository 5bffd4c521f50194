#include <Platform/URLLoading/URLError.hpp>

namespace tovrel {

namespace {

std::string_view description(URLError::Kind kind) noexcept {
    using Kind = URLError::Kind;
    switch (kind) {
    case Kind::notConnectedToInternet:
        return "not connected to the internet";
    case Kind::timedOut:
        return "timed out";
    case Kind::cannotFindHost:
        return "cannot find the host";
    case Kind::cannotConnectToHost:
        return "cannot connect to the host";
    case Kind::networkConnectionLost:
        return "network connection lost";
    case Kind::secureConnectionFailed:
        return "secure connection failed";
    case Kind::certificateUntrusted:
        return "certificate not trusted";
    case Kind::cancelled:
        return "cancelled";
    case Kind::badServerResponse:
        return "bad server response";
    case Kind::dataLengthExceedsMaximum:
        return "body larger than the maximum";
    case Kind::badURL:
        return "bad URL";
    case Kind::unsupportedURL:
        return "unsupported URL";
    case Kind::insecureURL:
        return "plain http is not allowed";
    case Kind::tooManyRedirects:
        return "too many redirects";
    case Kind::invalidHeader:
        return "invalid header field or method";
    case Kind::cannotDecodeContentData:
        return "cannot decode the body";
    case Kind::resourceUnavailable:
        return "not stored, and loading is not allowed";
    case Kind::unknown:
        break;
    }
    return "unknown failure";
}

std::string message(URLError::Kind kind, std::string_view context) {
    std::string text(description(kind));
    if (!context.empty()) {
        text.append(" (").append(context).append(")");
    }
    return text;
}

} // namespace

URLError::URLError(Kind kind, std::string_view context) : Error(message(kind, context)), kind_(kind) {}

URLError::~URLError() = default;

URLError URLError::notConnectedToInternet(std::string_view context) {
    return URLError(Kind::notConnectedToInternet, context);
}

URLError URLError::timedOut(std::string_view context) {
    return URLError(Kind::timedOut, context);
}

URLError URLError::cannotFindHost(std::string_view context) {
    return URLError(Kind::cannotFindHost, context);
}

URLError URLError::cannotConnectToHost(std::string_view context) {
    return URLError(Kind::cannotConnectToHost, context);
}

URLError URLError::networkConnectionLost(std::string_view context) {
    return URLError(Kind::networkConnectionLost, context);
}

URLError URLError::secureConnectionFailed(std::string_view context) {
    return URLError(Kind::secureConnectionFailed, context);
}

URLError URLError::certificateUntrusted(std::string_view context) {
    return URLError(Kind::certificateUntrusted, context);
}

URLError URLError::cancelled(std::string_view context) {
    return URLError(Kind::cancelled, context);
}

URLError URLError::badServerResponse(std::string_view context) {
    return URLError(Kind::badServerResponse, context);
}

URLError URLError::dataLengthExceedsMaximum(std::string_view context) {
    return URLError(Kind::dataLengthExceedsMaximum, context);
}

URLError URLError::badURL(std::string_view context) {
    return URLError(Kind::badURL, context);
}

URLError URLError::unsupportedURL(std::string_view context) {
    return URLError(Kind::unsupportedURL, context);
}

URLError URLError::insecureURL(std::string_view context) {
    return URLError(Kind::insecureURL, context);
}

URLError URLError::tooManyRedirects(std::string_view context) {
    return URLError(Kind::tooManyRedirects, context);
}

URLError URLError::invalidHeader(std::string_view context) {
    return URLError(Kind::invalidHeader, context);
}

URLError URLError::cannotDecodeContentData(std::string_view context) {
    return URLError(Kind::cannotDecodeContentData, context);
}

URLError URLError::resourceUnavailable(std::string_view context) {
    return URLError(Kind::resourceUnavailable, context);
}

URLError URLError::unknown(std::string_view context) {
    return URLError(Kind::unknown, context);
}

} // namespace tovrel
