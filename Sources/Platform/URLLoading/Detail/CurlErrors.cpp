#include <Platform/URLLoading/Detail/CurlErrors.hpp>
#include <Platform/URLLoading/Detail/NetworkInterfaces.hpp>

#include <cerrno>

namespace tovrel {

URLError::Kind errorKind(CURLcode code, long systemError) {
    using Kind = URLError::Kind;
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return isAnyNetworkUp() ? Kind::cannotFindHost : Kind::notConnectedToInternet;
    case CURLE_COULDNT_CONNECT: {
        const bool noRoute = systemError == ENETUNREACH || systemError == EHOSTUNREACH || systemError == ENETDOWN ||
                             systemError == EADDRNOTAVAIL;
        return noRoute && !isAnyNetworkUp() ? Kind::notConnectedToInternet : Kind::cannotConnectToHost;
    }
    case CURLE_PROXY:
        return Kind::cannotConnectToHost;
    case CURLE_OPERATION_TIMEDOUT:
        return Kind::timedOut;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_INVALIDCERTSTATUS:
        return Kind::certificateUntrusted;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ENGINE_NOTFOUND:
    case CURLE_SSL_ENGINE_SETFAILED:
    case CURLE_USE_SSL_FAILED:
        return Kind::secureConnectionFailed;
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
    case CURLE_SEND_FAIL_REWIND:
    case CURLE_HTTP2:
    case CURLE_HTTP2_STREAM:
        return Kind::networkConnectionLost;
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_CONTENT_ENCODING:
        return Kind::badServerResponse;
    case CURLE_URL_MALFORMAT:
        return Kind::badURL;
    default:
        return Kind::unknown;
    }
}

} // namespace tovrel
