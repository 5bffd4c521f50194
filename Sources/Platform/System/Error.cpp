#include <Platform/System/Error.hpp>

#include <utility>

namespace tovrel {

Error::Error(std::string message) : message_(std::move(message)) {}

Error::~Error() = default;

const char* Error::what() const noexcept {
    return message_.c_str();
}

} // namespace tovrel
