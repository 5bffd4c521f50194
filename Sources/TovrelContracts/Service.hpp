#pragma once

#include <Platform/System/Export.hpp>

namespace tovrel {

/// What a `ServiceContainer` can hold. A mark without operations.
class TOVREL_EXPORT Service {
public:
    virtual ~Service();

protected:
    Service();
    Service(const Service&) = default;
    Service& operator=(const Service&) = default;
};

} // namespace tovrel
