#include <TovrelTesting/LocalBackEndError.hpp>

#include <utility>

namespace tovrel::testing {

LocalBackEndError::LocalBackEndError(Kind kind, std::string message) : Error(std::move(message)), kind_(kind) {}

LocalBackEndError LocalBackEndError::cannotListen(const std::string& reason) {
    return {Kind::cannotListen, "The local back end cannot listen on 127.0.0.1: " + reason};
}

LocalBackEndError LocalBackEndError::cryptography(const std::string& operation) {
    return {Kind::cryptography, "The local back end cannot set up TLS: " + operation + " failed"};
}

} // namespace tovrel::testing
