#pragma once

#include <cstdint>
#include <string_view>

namespace tovrel {

/// The CRC-32 of some bytes and of those that `previous` is for, in front of them.
std::uint32_t diskChecksum(std::string_view bytes, std::uint32_t previous = 0) noexcept;

/// The number under which a URL is found on disk. The same in all processes and versions.
std::uint64_t diskHash(std::string_view url) noexcept;

} // namespace tovrel
