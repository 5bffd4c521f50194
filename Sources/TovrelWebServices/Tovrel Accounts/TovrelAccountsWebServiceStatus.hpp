#pragma once

#include <Platform/System/Export.hpp>

#include <optional>
#include <string>
#include <utility>

namespace tovrel {

/// Whether someone is logged in, and with which access token.
class TOVREL_EXPORT TovrelAccountsWebServiceStatus {
public:
    enum class Kind { loggedIn, loggedOut };

    [[nodiscard]] static TovrelAccountsWebServiceStatus loggedIn(std::string accessToken) {
        return TovrelAccountsWebServiceStatus(Kind::loggedIn, std::move(accessToken));
    }
    [[nodiscard]] static TovrelAccountsWebServiceStatus loggedOut() {
        return TovrelAccountsWebServiceStatus(Kind::loggedOut, std::nullopt);
    }

    /// For `switch`.
    [[nodiscard]] Kind kind() const { return kind_; }

    /// The token of a `loggedIn`; absent otherwise.
    [[nodiscard]] const std::optional<std::string>& accessToken() const { return accessToken_; }

    friend bool operator==(const TovrelAccountsWebServiceStatus&, const TovrelAccountsWebServiceStatus&) = default;

private:
    TovrelAccountsWebServiceStatus(Kind kind, std::optional<std::string> accessToken)
        : kind_(kind), accessToken_(std::move(accessToken)) {}

    Kind kind_;
    std::optional<std::string> accessToken_;
};

} // namespace tovrel
