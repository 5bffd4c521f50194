#include <TovrelWebServices/Services/CdnWebService.hpp>

namespace tovrel {

CdnWebService::CdnWebService() = default;

CdnWebService::~CdnWebService() = default;

CdnWebService::Request CdnWebService::buildRequest(std::string_view resourceUrl, HttpMethod method) const {
    return WebRequest<RequestType::CDN>::build(environment().environment(), resourceUrl)->setMethod(method);
}

} // namespace tovrel
