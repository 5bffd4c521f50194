#include <Platform/URLLoading/Detail/MemoryBody.hpp>

#include <algorithm>

namespace tovrel {

namespace {

constexpr std::uint64_t largestReservation = 16U << 20U;

} // namespace

void MemoryBody::expect(std::uint64_t size) {
    bytes_.reserve(static_cast<std::size_t>(std::min({size, largestReservation, maximumSize_.value_or(size)})));
}

BodySink::Failure MemoryBody::write(std::string_view bytes) {
    if (maximumSize_ && bytes.size() > *maximumSize_ - bytes_.size()) {
        return URLError::Kind::dataLengthExceedsMaximum;
    }
    bytes_.append(bytes);
    return std::nullopt;
}

} // namespace tovrel
