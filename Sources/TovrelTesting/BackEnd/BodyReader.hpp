#pragma once

#include <TovrelTesting/ScriptedResponse.hpp>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tovrel::testing {

/// Reads any response body piece by piece without copying it. The body must outlive the reader.
class BodyReader {
public:
    explicit BodyReader(const ResponseBody& body) noexcept;

    std::uint64_t size() const noexcept { return size_; }

    /// At most `limit` bytes from `offset` on; empty only at the end or for a limit of zero.
    std::string_view at(std::uint64_t offset, std::uint64_t limit) const noexcept;

private:
    std::string_view stored_;
    std::uint64_t size_;
    bool isGenerated_;
};

} // namespace tovrel::testing
