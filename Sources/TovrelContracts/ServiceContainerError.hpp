#pragma once

#include <Platform/System/Error.hpp>

#include <string>
#include <typeindex>

namespace tovrel {

/// Why a container could not take or give a service. Equal when kind and interface are.
class TOVREL_EXPORT ServiceContainerError final : public Error {
public:
    enum class Kind {
        /// There is a service under the interface already.
        alreadyRegistered,
        /// There is no service under the interface.
        notRegistered
    };

    [[nodiscard]] static ServiceContainerError alreadyRegistered(std::type_index interface);
    [[nodiscard]] static ServiceContainerError notRegistered(std::type_index interface);

    ServiceContainerError(const ServiceContainerError&) = default;
    ServiceContainerError(ServiceContainerError&&) noexcept = default;
    ServiceContainerError& operator=(const ServiceContainerError&) = default;
    ServiceContainerError& operator=(ServiceContainerError&&) noexcept = default;
    ~ServiceContainerError() override;

    [[nodiscard]] Kind kind() const { return kind_; }

    /// The name of the interface type, as a developer writes it.
    [[nodiscard]] const std::string& interfaceName() const { return interfaceName_; }

    friend bool operator==(const ServiceContainerError& a, const ServiceContainerError& b) {
        return a.kind_ == b.kind_ && a.interfaceName_ == b.interfaceName_;
    }

private:
    ServiceContainerError(Kind kind, std::string interfaceName, const std::string& predicate);

    Kind kind_;
    std::string interfaceName_;
};

} // namespace tovrel
