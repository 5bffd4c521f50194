#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/SignIn/AuthorizationError.hpp>
#include <TovrelWebServices/SignIn/Web/Private/Cryptography.hpp>
#include <TovrelWebServices/SignIn/Web/Private/IdentityTokenCheck.hpp>
#include <TovrelWebServices/SignIn/Web/Private/UserRecord.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tovrel::fuzz {
namespace {

using Kind = AuthorizationError::Kind;

/// Whatever comes fails with its own error, or is good.
template <class Operation>
void expectOnly(Kind kind, const Operation& operation) {
    try {
        operation();
    } catch (const AuthorizationError& error) {
        if (error.kind() != kind) {
            fatalError("an error of another kind");
        }
    }
}

void check(std::string_view token) {
    expectOnly(Kind::invalidIdentityToken, [token] {
        const detail::IdentityTokenExpectation expectation("i", "a", "n", Date::fromSecondsSince1970(1));
        if (detail::checkedSubject(token, expectation).empty()) {
            fatalError("a token without a subject");
        }
    });
}

/// The text as a token, as the payload of one, and as a user record.
void readAll(std::string_view text) {
    check(text);
    check("e30." + detail::base64URLEncoded(text) + ".e30");
    expectOnly(Kind::invalidResponse, [text] { static_cast<void>(detail::UserRecord::parse(text)); });
}

} // namespace
} // namespace tovrel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tovrel::fuzz::readAll(std::string_view(reinterpret_cast<const char*>(data), size));
    return 0;
}
