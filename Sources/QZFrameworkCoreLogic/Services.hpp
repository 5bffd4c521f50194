#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelContracts/ServiceContainer.hpp>

#include <map>
#include <memory>
#include <mutex>
#include <typeindex>

namespace tovrel {

/// A container in which services are looked up by their interface type. Thread-safe.
class TOVREL_EXPORT Services final : public ServiceContainer {
public:
    Services();
    ~Services() override;

    /// The container of the process. It is never destroyed, so that a task that ends late still finds it.
    static Services& default_();

    /// The service that is registered under `Interface`; all callers share the one instance.
    ///
    /// @throws ServiceContainerError notRegistered
    template <class Interface>
    [[nodiscard]] std::shared_ptr<Interface> safeGet() const {
        return std::static_pointer_cast<Interface>(find(typeid(Interface)));
    }

    /// Makes room for another service under `Interface`, in tests above all; whoever holds the old one keeps it.
    ///
    /// @return Whether there was one.
    template <class Interface>
    bool remove() {
        return erase(typeid(Interface));
    }

private:
    void store(std::type_index interface, std::shared_ptr<void> service) override;
    [[nodiscard]] std::shared_ptr<void> find(std::type_index interface) const;
    bool erase(std::type_index interface);

    mutable std::mutex mutex_;
    std::map<std::type_index, std::shared_ptr<void>> services_;
};

} // namespace tovrel
