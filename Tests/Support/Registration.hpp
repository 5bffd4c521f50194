#pragma once

#include <QZFrameworkCoreLogic/Services.hpp>

#include <memory>
#include <utility>

namespace tovrel::tests {

/// Registers a service in the process's container for as long as it lives.
template <class Interface>
class Registration {
public:
    explicit Registration(std::shared_ptr<Interface> service) {
        Services::default_().register_<Interface>(std::move(service));
    }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() { Services::default_().remove<Interface>(); }
};

} // namespace tovrel::tests
