#include <TovrelContracts/Application.hpp>
#include <TovrelContracts/ServiceContainer.hpp>
#include <TovrelContracts/ServiceProvider.hpp>

namespace tovrel {

Service::Service() = default;

Service::~Service() = default;

ServiceContainer::ServiceContainer() = default;

ServiceContainer::~ServiceContainer() = default;

ServiceProvider::ServiceProvider() = default;

ServiceProvider::~ServiceProvider() = default;

Application::Application() = default;

Application::~Application() = default;

} // namespace tovrel
