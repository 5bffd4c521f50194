#pragma once

#include <Platform/Coding/Coding.hpp>
#include <TovrelWebServices/Services/ApiResponseMeta.hpp>

#include <concepts>
#include <optional>
#include <tuple>
#include <utility>

namespace tovrel {

/// The envelope of every JSON answer of the API, and of the CDN where it sends envelopes.
///
/// @tparam T The payload. In a description of it keys are in camel case: `createdAt` for "created_at".
template <Codable T>
struct ApiWebResponseObject {
    ApiResponseMeta meta;
    /// Absent when the answer has no "data" or a null one.
    std::optional<T> data;

    ApiWebResponseObject() = default;
    explicit ApiWebResponseObject(ApiResponseMeta responseMeta, std::optional<T> responseData = std::nullopt)
        : meta(std::move(responseMeta)), data(std::move(responseData)) {}

    static constexpr auto fields() {
        return std::tuple{Field<&ApiWebResponseObject::meta, "meta">{}, Field<&ApiWebResponseObject::data, "data">{}};
    }

    friend bool operator==(const ApiWebResponseObject&,
                           const ApiWebResponseObject&) requires std::equality_comparable<T>
    = default;
};

} // namespace tovrel
