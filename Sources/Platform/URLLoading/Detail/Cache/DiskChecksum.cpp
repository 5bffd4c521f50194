#include <Platform/URLLoading/Detail/Cache/DiskChecksum.hpp>

#include <zlib.h>

namespace tovrel {

std::uint32_t diskChecksum(std::string_view bytes, std::uint32_t previous) noexcept {
    // zlib takes a null pointer for a request of the initial value.
    if (bytes.empty()) {
        return previous;
    }
    return static_cast<std::uint32_t>(crc32_z(previous, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

std::uint64_t diskHash(std::string_view url) noexcept {
    // FNV-1a
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char character : url) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001b3U;
    }
    return hash;
}

} // namespace tovrel
