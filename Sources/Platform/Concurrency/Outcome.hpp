#pragma once

#include <exception>
#include <optional>
#include <type_traits>
#include <utility>

namespace tovrel {

/// How an operation ended: with a value or with an error.
template <class T>
class Outcome {
public:
    /* implicit */ Outcome(T value) : value_(std::move(value)) {}
    /* implicit */ Outcome(std::exception_ptr error) : error_(std::move(error)) {}

    [[nodiscard]] bool hasValue() const { return value_.has_value(); }

    /// The value; rethrows the error if there is none.
    [[nodiscard]] T& value() {
        if (error_) {
            std::rethrow_exception(error_);
        }
        return *value_;
    }

    /// Null when there is a value.
    [[nodiscard]] std::exception_ptr error() const { return error_; }

private:
    std::optional<T> value_;
    std::exception_ptr error_;
};

template <>
class Outcome<void> {
public:
    Outcome() = default;
    /* implicit */ Outcome(std::exception_ptr error) : error_(std::move(error)) {}

    [[nodiscard]] bool hasValue() const { return error_ == nullptr; }

    /// Rethrows the error if there is one.
    void value() const {
        if (error_) {
            std::rethrow_exception(error_);
        }
    }

    [[nodiscard]] std::exception_ptr error() const { return error_; }

private:
    std::exception_ptr error_;
};

} // namespace tovrel
