#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/URLLoading/Detail/BodySink.hpp>

#include <cstdint>
#include <optional>

namespace tovrel {

/// A body that is gathered in memory, up to a limit.
class MemoryBody final : public BodySink {
public:
    explicit MemoryBody(std::optional<std::uint64_t> maximumSize) : maximumSize_(maximumSize) {}

    /// Makes room for a body of about that size. The number comes from the other side, so it is trusted only so far.
    void expect(std::uint64_t size);

    [[nodiscard]] Failure write(std::string_view bytes) override;
    [[nodiscard]] Failure finish() override { return std::nullopt; }

    /// Drops what was gathered.
    void clear() noexcept { bytes_.clear(); }

    Data take() { return bytes_.freeze(); }

private:
    std::optional<std::uint64_t> maximumSize_;
    MutableData bytes_;
};

} // namespace tovrel
