#include <TovrelWebServices/Services/TovrelDomainServiceError.hpp>
#include <TovrelWebServices/Services/TovrelDomainWebService.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>
#include <TovrelWebServices/Transport/WebServiceUtility.hpp>

#include <new>

namespace tovrel {

TovrelDomainWebService::TovrelDomainWebService() = default;

TovrelDomainWebService::~TovrelDomainWebService() = default;

AnyApiWebResponseObject TovrelDomainWebService::decode(const Data& data, const JSONDecoder& with,
                                                       const ApiPayloadType& payload) {
    try {
        return payload.decode(data, with);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {
        // Whatever a hand-written coding throws, the body was not what was asked for.
        throw WebServiceError::invalidServerResponse();
    }
}

TovrelDomainWebService::AnyResponse TovrelDomainWebService::validatedTovrelResponse(WebResponse webResponse,
                                                                                    const Data& rawData,
                                                                                    const JSONDecoder& with,
                                                                                    const ApiPayloadType& payload) {
    AnyApiWebResponseObject envelope = decode(rawData, with, payload);
    if (!StatusCodeRange::success().contains(webResponse.statusCode)) {
        throw TovrelDomainServiceError(webResponse.statusCode, envelope.meta().code, envelope.meta().message);
    }
    return AnyResponse(std::move(envelope), std::move(webResponse));
}

} // namespace tovrel
