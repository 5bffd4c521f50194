#pragma once

#include <Platform/System/Export.hpp>
#include <Platform/System/FatalError.hpp>
#include <TovrelContracts/Service.hpp>
#include <TovrelContracts/ServiceContainerError.hpp>

#include <concepts>
#include <memory>
#include <typeindex>
#include <utility>

namespace tovrel {

/// Where the libraries of one application find each other's services: one instance for each interface type.
class TOVREL_EXPORT ServiceContainer {
public:
    virtual ~ServiceContainer();
    ServiceContainer(const ServiceContainer&) = delete;
    ServiceContainer& operator=(const ServiceContainer&) = delete;

    /// Makes the service the one that is found under `Interface`: `services.register_<Clock>(clock)`.
    ///
    /// @throws ServiceContainerError alreadyRegistered; the container then keeps what it has.
    template <class Interface, std::derived_from<Service> Implementation>
    requires std::derived_from<Implementation, Interface>
    void register_(std::shared_ptr<Implementation> service) {
        if (!service) {
            fatalError("A service to be registered is null.");
        }
        store(typeid(Interface), std::shared_ptr<Interface>(std::move(service)));
    }

protected:
    ServiceContainer();

    /// @param service Points to an object of the interface type.
    /// @throws ServiceContainerError alreadyRegistered
    virtual void store(std::type_index interface, std::shared_ptr<void> service) = 0;
};

} // namespace tovrel
