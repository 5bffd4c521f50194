#pragma once

#include <Platform/System/Export.hpp>

#include <memory>

namespace tovrel {

class Window;

/// Where a provider shows what it asks the user. For the main actor only.
class TOVREL_EXPORT AuthorizationPresentation {
public:
    virtual ~AuthorizationPresentation();

    /// The window over which a provider shows its own sheet, never null. A provider that needs no window, because it
    /// opens a browser for instance, does not call this: it stops the process where there is no window with the focus.
    [[nodiscard]] virtual std::shared_ptr<Window> presentationAnchor() = 0;

protected:
    AuthorizationPresentation();
    AuthorizationPresentation(const AuthorizationPresentation&) = default;
    AuthorizationPresentation& operator=(const AuthorizationPresentation&) = default;
};

} // namespace tovrel
