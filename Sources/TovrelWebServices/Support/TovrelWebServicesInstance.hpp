#pragma once

#include <Platform/System/Export.hpp>

#include <memory>

namespace tovrel {

class ResourceBundle;

/// Where this library finds its resources. Thread-safe.
///
/// The core brings none: whoever links some in, as the account screens do, sets the bundle. Without one every text is
/// the English one of its call site.
class TOVREL_EXPORT TovrelWebServicesInstance {
public:
    TovrelWebServicesInstance() = delete;

    /// The bundle of this moment, never null.
    [[nodiscard]] static std::shared_ptr<const ResourceBundle> bundle();

    /// Puts another bundle in its place. `resourceBundle()` keeps what it had at its first call, so a bundle with
    /// colours is set before the first screen is made.
    static void setBundle(std::shared_ptr<const ResourceBundle> bundle);
};

} // namespace tovrel
