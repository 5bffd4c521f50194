#pragma once

#include <Platform/System/Export.hpp>

#include <cstdint>
#include <optional>

namespace tovrel {

/// How much of a response's body has come.
struct TOVREL_EXPORT URLProgress {
    /// In bytes of the body as the caller gets it, that is, decoded.
    std::uint64_t receivedBytes = 0;
    /// What `receivedBytes` ends at. Absent where the server does not say, and where the body is encoded.
    std::optional<std::uint64_t> expectedBytes;

    URLProgress();
    URLProgress(std::uint64_t received, std::optional<std::uint64_t> expected);

    /// From 0 to 1; absent where the expected size is. An empty body is complete.
    [[nodiscard]] std::optional<double> fraction() const;

    friend bool operator==(const URLProgress&, const URLProgress&) = default;
};

} // namespace tovrel
