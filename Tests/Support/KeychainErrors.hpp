#pragma once

#include <QZFrameworkCoreLogic/KeychainError.hpp>

#include <optional>
#include <Support/Await.hpp>
#include <utility>

namespace tovrel::tests {

/// The kind of the `KeychainError` that an operation fails with; absent when it succeeds. Other errors pass through.
template <class T>
std::optional<KeychainError::Kind> keychainErrorOf(Async<T> operation) {
    try {
        getInTime(std::move(operation));
    } catch (const KeychainError& error) {
        return error.kind();
    }
    return std::nullopt;
}

} // namespace tovrel::tests
