#pragma once

#include <Platform/System/Error.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsErrorResponse.hpp>

#include <cstdint>
#include <optional>
#include <string>

namespace tovrel {

/// The accounts server refused a request and said why (RFC 6749 section 5.2). Equal when all fields are.
///
/// The text of `what()` holds the status and, where it is one that the standards define, the code; never the server's
/// own words, which may repeat what was sent.
class TOVREL_EXPORT TovrelAccountsError final : public Error {
public:
    TovrelAccountsError(std::int64_t statusCode, std::string error, std::optional<std::string> description,
                        std::optional<std::string> uri);
    TovrelAccountsError(std::int64_t statusCode, TovrelAccountsErrorResponse response);
    TovrelAccountsError(const TovrelAccountsError&) = default;
    TovrelAccountsError(TovrelAccountsError&&) noexcept = default;
    TovrelAccountsError& operator=(const TovrelAccountsError&) = default;
    TovrelAccountsError& operator=(TovrelAccountsError&&) noexcept = default;
    ~TovrelAccountsError() override;

    /// The HTTP status.
    [[nodiscard]] std::int64_t statusCode() const { return statusCode_; }
    /// The error's code.
    [[nodiscard]] const std::string& error() const { return response_.error; }
    [[nodiscard]] const std::optional<std::string>& description() const { return response_.description; }
    [[nodiscard]] const std::optional<std::string>& uri() const { return response_.uri; }

    friend bool operator==(const TovrelAccountsError& a, const TovrelAccountsError& b) {
        return a.statusCode_ == b.statusCode_ && a.response_ == b.response_;
    }

private:
    std::int64_t statusCode_;
    TovrelAccountsErrorResponse response_;
};

} // namespace tovrel
