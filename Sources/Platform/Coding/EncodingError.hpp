#pragma once

#include <Platform/Coding/CodingPath.hpp>
#include <Platform/System/Error.hpp>

#include <string>

namespace tovrel {

/// Why a value could not be encoded. Neither the path nor the description holds the value.
class TOVREL_EXPORT EncodingError : public Error {
public:
    enum class Kind {
        /// The value has no form in the format: a number that is not finite, text that is not UTF-8, a date out of
        /// range.
        invalidValue
    };

    /// Hand-written codings leave `path` empty: the encoder adds the way to the value being encoded.
    static EncodingError invalidValue(std::string description, CodingPath path = {});

    Kind kind() const noexcept { return kind_; }
    /// The way from the outermost value to the failed one.
    const CodingPath& path() const noexcept { return path_; }
    const std::string& description() const noexcept { return description_; }

    friend bool operator==(const EncodingError& left, const EncodingError& right) {
        return left.kind_ == right.kind_ && left.path_ == right.path_ && left.description_ == right.description_;
    }

private:
    EncodingError(Kind kind, std::string description, CodingPath path);

    Kind kind_;
    CodingPath path_;
    std::string description_;
};

} // namespace tovrel
