#pragma once

#include <cstddef>
#include <filesystem>
#include <Harness/Measurement.hpp>
#include <HTTP/HTTPClient.hpp>
#include <string>
#include <vector>

namespace tovrel::benchmarks {

/// QNetworkDiskCache by itself, and as the cache of a QNetworkAccessManager. Both are filled before they are measured.
std::vector<Contender> qtCacheHits(const Endpoint& endpoint, const std::string& path, std::size_t bodySize,
                                   std::size_t hits, const std::filesystem::path& directory);

} // namespace tovrel::benchmarks
