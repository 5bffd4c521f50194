#pragma once

#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <optional>
#include <Support/Await.hpp>
#include <utility>

namespace tovrel::tests {

/// The `WebServiceError` that an operation fails with; absent when it succeeds. Other errors pass through.
template <class T>
std::optional<WebServiceError> webServiceErrorOf(Async<T> operation) {
    try {
        getInTime(std::move(operation));
    } catch (const WebServiceError& error) {
        return error;
    }
    return std::nullopt;
}

} // namespace tovrel::tests
