#pragma once

#include <Platform/System/FatalError.hpp>
#include <QZFrameworkCoreLogic/Services.hpp>

#include <memory>

namespace tovrel {

/// A collaborator that is looked up when this object is made and held from then on. A missing service is a programming
/// error: it stops the process with the text of the lookup's error.
template <class Interface>
class Dependency {
public:
    explicit Dependency(const Services& services = Services::default_()) : service_(resolve(services)) {}

    [[nodiscard]] const std::shared_ptr<Interface>& get() const { return service_; }
    Interface& operator*() const { return *service_; }
    Interface* operator->() const { return service_.get(); }

private:
    static std::shared_ptr<Interface> resolve(const Services& services) {
        try {
            return services.safeGet<Interface>();
        } catch (const ServiceContainerError& error) {
            fatalError(error.what());
        }
    }

    std::shared_ptr<Interface> service_;
};

} // namespace tovrel
