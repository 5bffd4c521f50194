#pragma once

#include <Platform/Coding/CodingPath.hpp>
#include <Platform/System/Error.hpp>

#include <string>

namespace tovrel {

/// Why a value could not be decoded. Neither the path nor the description holds a decoded value.
class TOVREL_EXPORT DecodingError : public Error {
public:
    enum class Kind {
        /// An object lacks a required key; the path ends with that key.
        keyNotFound,
        /// The value is of another type than the described one.
        typeMismatch,
        /// A null, or the end of a list, stands where a value is required.
        valueNotFound,
        /// The value is of the right type but not valid, or the document as a whole is malformed.
        dataCorrupted
    };

    /// Hand-written codings leave `path` empty: the decoder adds the way to the value being decoded.
    static DecodingError keyNotFound(std::string key, std::string description, CodingPath path = {});
    static DecodingError typeMismatch(std::string description, CodingPath path = {});
    static DecodingError valueNotFound(std::string description, CodingPath path = {});
    static DecodingError dataCorrupted(std::string description, CodingPath path = {});

    DecodingError(Kind kind, std::string description, CodingPath path);

    Kind kind() const noexcept { return kind_; }
    /// The way from the outermost value to the failed one.
    const CodingPath& path() const noexcept { return path_; }
    const std::string& description() const noexcept { return description_; }

    friend bool operator==(const DecodingError& left, const DecodingError& right) {
        return left.kind_ == right.kind_ && left.path_ == right.path_ && left.description_ == right.description_;
    }

private:
    Kind kind_;
    CodingPath path_;
    std::string description_;
};

} // namespace tovrel
