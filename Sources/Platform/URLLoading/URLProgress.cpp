#include <Platform/URLLoading/URLProgress.hpp>

namespace tovrel {

URLProgress::URLProgress() = default;

URLProgress::URLProgress(std::uint64_t received, std::optional<std::uint64_t> expected)
    : receivedBytes(received), expectedBytes(expected) {}

std::optional<double> URLProgress::fraction() const {
    if (!expectedBytes) {
        return std::nullopt;
    }
    return *expectedBytes == 0 ? 1.0 : static_cast<double>(receivedBytes) / static_cast<double>(*expectedBytes);
}

} // namespace tovrel
