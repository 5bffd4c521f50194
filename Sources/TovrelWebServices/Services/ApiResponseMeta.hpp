#pragma once

#include <Platform/Coding/Coding.hpp>
#include <Platform/System/Export.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

namespace tovrel {

/// Which part of a list an answer holds.
struct TOVREL_EXPORT ApiResponsePagination {
    /// The most elements that one answer holds.
    std::int64_t limit = 0;
    /// Leads to the next part, untouched as the server sent it; absent at the end.
    std::optional<std::string> next;

    ApiResponsePagination() = default;
    explicit ApiResponsePagination(std::int64_t limitOfPage, std::optional<std::string> nextPage = std::nullopt)
        : limit(limitOfPage), next(std::move(nextPage)) {}

    static constexpr auto fields() {
        return std::tuple{Field<&ApiResponsePagination::limit, "limit">{},
                          Field<&ApiResponsePagination::next, "next">{}};
    }

    friend bool operator==(const ApiResponsePagination&, const ApiResponsePagination&) = default;
};

/// What the server says about an answer. The HTTP status alone decides whether a call has succeeded, not the code.
struct TOVREL_EXPORT ApiResponseMeta {
    std::string code;
    /// For people.
    std::string message;
    std::optional<ApiResponsePagination> pagination;

    ApiResponseMeta() = default;
    ApiResponseMeta(std::string responseCode, std::string responseMessage,
                    std::optional<ApiResponsePagination> responsePagination = std::nullopt)
        : code(std::move(responseCode)),
          message(std::move(responseMessage)),
          pagination(std::move(responsePagination)) {}

    static constexpr auto fields() {
        return std::tuple{Field<&ApiResponseMeta::code, "code">{}, Field<&ApiResponseMeta::message, "message">{},
                          Field<&ApiResponseMeta::pagination, "pagination">{}};
    }

    friend bool operator==(const ApiResponseMeta&, const ApiResponseMeta&) = default;
};

} // namespace tovrel
