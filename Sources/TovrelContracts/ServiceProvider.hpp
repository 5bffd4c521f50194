#pragma once

#include <Platform/System/Export.hpp>

namespace tovrel {

class ServiceContainer;

/// Something that makes services and puts them into a container.
class TOVREL_EXPORT ServiceProvider {
public:
    virtual ~ServiceProvider();

    /// @throws ServiceContainerError alreadyRegistered
    virtual void register_(ServiceContainer& services) = 0;

protected:
    ServiceProvider();
};

} // namespace tovrel
