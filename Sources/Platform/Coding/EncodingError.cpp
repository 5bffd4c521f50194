#include <Platform/Coding/EncodingError.hpp>

#include <utility>

namespace tovrel {

EncodingError::EncodingError(Kind kind, std::string description, CodingPath path)
    : Error("encoding failed: invalid value" + (path.empty() ? "" : " at " + describe(path)) + ": " + description),
      kind_(kind),
      path_(std::move(path)),
      description_(std::move(description)) {}

EncodingError EncodingError::invalidValue(std::string description, CodingPath path) {
    return EncodingError(Kind::invalidValue, std::move(description), std::move(path));
}

} // namespace tovrel
