#include <TovrelContracts/ServiceContainerError.hpp>

#include <boost/core/demangle.hpp>

#include <utility>

namespace tovrel {

ServiceContainerError::ServiceContainerError(Kind kind, std::string interfaceName, const std::string& predicate)
    : Error("The service " + interfaceName + " is " + predicate + "."),
      kind_(kind),
      interfaceName_(std::move(interfaceName)) {}

ServiceContainerError::~ServiceContainerError() = default;

ServiceContainerError ServiceContainerError::alreadyRegistered(std::type_index interface) {
    return ServiceContainerError(Kind::alreadyRegistered, boost::core::demangle(interface.name()),
                                 "registered already");
}

ServiceContainerError ServiceContainerError::notRegistered(std::type_index interface) {
    return ServiceContainerError(Kind::notRegistered, boost::core::demangle(interface.name()), "not registered");
}

} // namespace tovrel
