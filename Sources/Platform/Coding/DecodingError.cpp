#include <Platform/Coding/DecodingError.hpp>

#include <utility>

namespace tovrel {

namespace {

std::string message(DecodingError::Kind kind, const std::string& description, const CodingPath& path) {
    std::string text = "decoding failed: ";
    switch (kind) {
    case DecodingError::Kind::keyNotFound:
        text += "key not found";
        break;
    case DecodingError::Kind::typeMismatch:
        text += "type mismatch";
        break;
    case DecodingError::Kind::valueNotFound:
        text += "value not found";
        break;
    case DecodingError::Kind::dataCorrupted:
        text += "data corrupted";
        break;
    }
    if (!path.empty()) {
        text += " at " + describe(path);
    }
    return text + ": " + description;
}

} // namespace

DecodingError::DecodingError(Kind kind, std::string description, CodingPath path)
    : Error(message(kind, description, path)),
      kind_(kind),
      path_(std::move(path)),
      description_(std::move(description)) {}

DecodingError DecodingError::keyNotFound(std::string key, std::string description, CodingPath path) {
    path.emplace_back(std::move(key));
    return DecodingError(Kind::keyNotFound, std::move(description), std::move(path));
}

DecodingError DecodingError::typeMismatch(std::string description, CodingPath path) {
    return DecodingError(Kind::typeMismatch, std::move(description), std::move(path));
}

DecodingError DecodingError::valueNotFound(std::string description, CodingPath path) {
    return DecodingError(Kind::valueNotFound, std::move(description), std::move(path));
}

DecodingError DecodingError::dataCorrupted(std::string description, CodingPath path) {
    return DecodingError(Kind::dataCorrupted, std::move(description), std::move(path));
}

} // namespace tovrel
