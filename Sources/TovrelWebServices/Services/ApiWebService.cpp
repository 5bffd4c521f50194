#include <TovrelWebServices/Services/ApiWebService.hpp>

namespace tovrel {

ApiWebService::ApiWebService() = default;

ApiWebService::~ApiWebService() = default;

ApiWebService::Request ApiWebService::buildRequest(std::string_view resourceUrl, HttpMethod method) const {
    return WebRequest<RequestType::API>::build(environment().environment(), resourceUrl)->setMethod(method);
}

Async<ApiWebResponseObject<ApiEmptyDataResponse>> ApiWebService::execute(Request request) const {
    return executeEnvelope<ApiEmptyDataResponse>(std::move(request));
}

} // namespace tovrel
