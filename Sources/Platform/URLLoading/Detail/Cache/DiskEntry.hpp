#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace tovrel {

/// One stored response of a URL: its head, and where its body is.
struct DiskEntry {
    std::int64_t identifier;
    std::string variant;
    std::string head;
    std::uint64_t bodySize;
    std::uint32_t bodyChecksum;

    DiskEntry(std::int64_t entryIdentifier, std::string entryVariant, std::string entryHead,
              std::uint64_t entryBodySize, std::uint32_t entryBodyChecksum)
        : identifier(entryIdentifier),
          variant(std::move(entryVariant)),
          head(std::move(entryHead)),
          bodySize(entryBodySize),
          bodyChecksum(entryBodyChecksum) {}
};

} // namespace tovrel
