#include <TovrelContracts/Application.hpp>
#include <TovrelContracts/ServiceContainer.hpp>
#include <TovrelContracts/ServiceProvider.hpp>

#include <utility>

namespace tovrel {

Service::Service() = default;

Service::~Service() = default;

ServiceContainer::ServiceContainer() = default;

ServiceContainer::~ServiceContainer() = default;

ServiceProvider::ServiceProvider() = default;

ServiceProvider::~ServiceProvider() = default;

Application::Application() = default;

Application::~Application() = default;

std::vector<std::shared_ptr<Window>> Application::windows() const {
    std::vector<std::shared_ptr<Window>> windows;
    if (std::shared_ptr<Window> main = window()) {
        windows.push_back(std::move(main));
    }
    return windows;
}

} // namespace tovrel
