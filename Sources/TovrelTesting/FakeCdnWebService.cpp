#include <TovrelTesting/FakeCdnWebService.hpp>

#include <utility>

namespace tovrel::testing {

std::shared_ptr<FakeCdnWebService> FakeCdnWebService::make(TovrelEnvironment stage) {
    return std::shared_ptr<FakeCdnWebService>(new FakeCdnWebService(stage));
}

FakeCdnWebService::FakeCdnWebService(TovrelEnvironment stage) : stage_(stage) {}

FakeCdnWebService::~FakeCdnWebService() = default;

Async<WebResponse> FakeCdnWebService::execute(Request request) const {
    return executor_->data(std::move(request));
}

Async<CdnWebService::AnyResponse> FakeCdnWebService::executeAny(Request request, ApiPayloadType payload) const {
    return respond(std::move(request), payload);
}

} // namespace tovrel::testing
