#include <Platform/Coding/Detail/KeySpelling.hpp>
#include <Platform/Coding/KeyStrategies.hpp>

#include <utility>

namespace tovrel {

KeyDecodingStrategy KeyDecodingStrategy::convertFromSnakeCase() noexcept {
    KeyDecodingStrategy strategy;
    strategy.kind_ = Kind::convertFromSnakeCase;
    return strategy;
}

KeyDecodingStrategy KeyDecodingStrategy::custom(Function function) {
    KeyDecodingStrategy strategy;
    strategy.kind_ = Kind::custom;
    strategy.function_ = std::make_shared<const Function>(std::move(function));
    return strategy;
}

std::string KeyDecodingStrategy::convert(std::string_view key) const {
    if (kind_ == Kind::custom) {
        return (*function_)(key);
    }
    std::string converted(key);
    if (kind_ == Kind::convertFromSnakeCase) {
        converted.resize(detail::convertFromSnakeCase(key, converted.data()));
    }
    return converted;
}

KeyEncodingStrategy KeyEncodingStrategy::convertToSnakeCase() noexcept {
    KeyEncodingStrategy strategy;
    strategy.kind_ = Kind::convertToSnakeCase;
    return strategy;
}

KeyEncodingStrategy KeyEncodingStrategy::custom(Function function) {
    KeyEncodingStrategy strategy;
    strategy.kind_ = Kind::custom;
    strategy.function_ = std::make_shared<const Function>(std::move(function));
    return strategy;
}

std::string KeyEncodingStrategy::convert(std::string_view key) const {
    switch (kind_) {
    case Kind::custom:
        return (*function_)(key);
    case Kind::convertToSnakeCase: {
        std::string converted(key.size() * 2, '\0');
        converted.resize(detail::convertToSnakeCase(key, converted.data()));
        return converted;
    }
    case Kind::useDefaultKeys:
        break;
    }
    return std::string(key);
}

} // namespace tovrel
