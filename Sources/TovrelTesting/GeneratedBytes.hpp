#pragma once

#include <Platform/System/Export.hpp>

#include <cstddef>
#include <cstdint>
#include <string>

namespace tovrel::testing {

/// A body of any size that is made up while it is sent, so that a large file costs no memory. Its bytes are the same in
/// every run and look random, so that compression does not shrink them.
struct TOVREL_EXPORT GeneratedBytes {
    /// How many bytes the body has.
    std::uint64_t count = 0;

    explicit GeneratedBytes(std::uint64_t count);

    bool operator==(const GeneratedBytes&) const = default;
};

/// The bytes of every generated body from `offset` on, for comparison with what a client received.
TOVREL_EXPORT std::string generatedBytes(std::uint64_t offset, std::size_t count);

} // namespace tovrel::testing
