#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelWebServices/SignIn/AppleIDCredential.hpp>

#include <string>
#include <utility>
#include <variant>

namespace tovrel {

/// What an authorization ends with: a credential of Sign in with Apple, or one of another kind, such as a password that
/// the user has chosen in its place.
class TOVREL_EXPORT AuthorizationCredential {
public:
    [[nodiscard]] static AuthorizationCredential appleID(AppleIDCredential credential) {
        return AuthorizationCredential(std::in_place_type<AppleIDCredential>, std::move(credential));
    }

    /// @param kind A name for developers, "password" for instance.
    [[nodiscard]] static AuthorizationCredential other(std::string kind) {
        return AuthorizationCredential(std::in_place_type<std::string>, std::move(kind));
    }

    /// The credential of Sign in with Apple; null for another kind.
    [[nodiscard]] const AppleIDCredential* appleID() const { return std::get_if<AppleIDCredential>(&value_); }

    /// The name of another kind; null for a credential of Sign in with Apple.
    [[nodiscard]] const std::string* otherKind() const { return std::get_if<std::string>(&value_); }

    friend bool operator==(const AuthorizationCredential&, const AuthorizationCredential&) = default;

private:
    template <class T>
    AuthorizationCredential(std::in_place_type_t<T> type, T value) : value_(type, std::move(value)) {}

    std::variant<AppleIDCredential, std::string> value_;
};

} // namespace tovrel
