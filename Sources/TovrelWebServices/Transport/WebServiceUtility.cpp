#include <TovrelWebServices/Transport/WebServiceError.hpp>
#include <TovrelWebServices/Transport/WebServiceUtility.hpp>

namespace tovrel {

void WebServiceUtility::validateStatusCode(std::int64_t statusCode, StatusCodeRange acceptableCodes) {
    if (acceptableCodes.contains(statusCode)) {
        return;
    }
    switch (statusCode) {
    case 400:
        throw WebServiceError::invalidServerResponse();
    case 401:
        throw WebServiceError::unauthorized();
    case 404:
        throw WebServiceError::notFound();
    case 500:
        throw WebServiceError::internalServerError();
    default:
        throw WebServiceError::unexpectedServerStatusCode(statusCode);
    }
}

} // namespace tovrel
