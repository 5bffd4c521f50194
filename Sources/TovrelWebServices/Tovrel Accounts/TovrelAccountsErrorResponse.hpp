#pragma once

#include <Platform/Coding/Coding.hpp>
#include <Platform/System/Export.hpp>

#include <optional>
#include <string>
#include <tuple>
#include <utility>

namespace tovrel {

/// The body of a refused token, refresh or logout request (RFC 6749 section 5.2).
struct TOVREL_EXPORT TovrelAccountsErrorResponse {
    /// The error's code.
    std::string error;
    std::optional<std::string> description;
    std::optional<std::string> uri;

    TovrelAccountsErrorResponse() = default;
    TovrelAccountsErrorResponse(std::string code, std::optional<std::string> errorDescription,
                                std::optional<std::string> errorUri)
        : error(std::move(code)), description(std::move(errorDescription)), uri(std::move(errorUri)) {}

    static constexpr auto fields() {
        return std::tuple{Field<&TovrelAccountsErrorResponse::error, "error">{},
                          Field<&TovrelAccountsErrorResponse::description, "error_description">{},
                          Field<&TovrelAccountsErrorResponse::uri, "error_uri">{}};
    }

    friend bool operator==(const TovrelAccountsErrorResponse&, const TovrelAccountsErrorResponse&) = default;
};

} // namespace tovrel
