#include <QZFrameworkCoreLogic/KeychainError.hpp>

#include <string>

namespace tovrel {

namespace {

std::string_view description(KeychainError::Kind kind) noexcept {
    using Kind = KeychainError::Kind;
    switch (kind) {
    case Kind::locked:
        return "the keychain is locked";
    case Kind::unavailable:
        return "the keychain is not available";
    case Kind::denied:
        return "access to the keychain is denied";
    case Kind::corrupt:
        return "the keychain's entry is corrupt";
    }
    return "keychain failure";
}

std::string message(KeychainError::Kind kind, std::string_view context) {
    std::string text(description(kind));
    if (!context.empty()) {
        text.append(" (").append(context).append(")");
    }
    return text;
}

} // namespace

KeychainError::KeychainError(Kind kind, std::string_view context) : Error(message(kind, context)), kind_(kind) {}

KeychainError::~KeychainError() = default;

KeychainError KeychainError::locked(std::string_view context) {
    return KeychainError(Kind::locked, context);
}

KeychainError KeychainError::unavailable(std::string_view context) {
    return KeychainError(Kind::unavailable, context);
}

KeychainError KeychainError::denied(std::string_view context) {
    return KeychainError(Kind::denied, context);
}

KeychainError KeychainError::corrupt(std::string_view context) {
    return KeychainError(Kind::corrupt, context);
}

} // namespace tovrel
