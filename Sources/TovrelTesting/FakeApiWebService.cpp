#include <TovrelTesting/FakeApiWebService.hpp>

#include <utility>

namespace tovrel::testing {

std::shared_ptr<FakeApiWebService> FakeApiWebService::make(TovrelEnvironment stage) {
    return std::shared_ptr<FakeApiWebService>(new FakeApiWebService(stage));
}

FakeApiWebService::FakeApiWebService(TovrelEnvironment stage) : stage_(stage) {}

FakeApiWebService::~FakeApiWebService() = default;

Async<ApiWebService::AnyResponse> FakeApiWebService::executeAny(Request request, ApiPayloadType payload) const {
    return respond(std::move(request), payload);
}

} // namespace tovrel::testing
