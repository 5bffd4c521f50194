#pragma once

#include <Platform/System/Export.hpp>

#include <string>
#include <utility>

namespace tovrel {

/// Which application this is.
struct TOVREL_EXPORT TovrelAppIdentifier {
    /// A short lower-case string, for example "wx".
    std::string appCode;

    explicit TovrelAppIdentifier(std::string code) : appCode(std::move(code)) {}

    friend bool operator==(const TovrelAppIdentifier&, const TovrelAppIdentifier&) = default;
};

} // namespace tovrel
