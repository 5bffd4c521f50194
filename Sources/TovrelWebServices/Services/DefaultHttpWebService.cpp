#include <TovrelWebServices/Services/DefaultHttpWebService.hpp>

#include <utility>

namespace tovrel {

std::shared_ptr<DefaultHttpWebService> DefaultHttpWebService::make(std::shared_ptr<WebRequestExecutor> executor) {
    return std::shared_ptr<DefaultHttpWebService>(new DefaultHttpWebService(std::move(executor)));
}

DefaultHttpWebService::DefaultHttpWebService(std::shared_ptr<WebRequestExecutor> executor)
    : executor_(std::move(executor)) {}

DefaultHttpWebService::~DefaultHttpWebService() = default;

} // namespace tovrel
