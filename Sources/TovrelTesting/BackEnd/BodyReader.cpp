#include <TovrelTesting/BackEnd/BodyReader.hpp>

#include <algorithm>
#include <vector>

namespace tovrel::testing {

namespace {

// A prime period keeps the pattern out of step with every buffer and frame size, so that a shifted or repeated block of
// a download is noticed. The block is a run longer than its period, so that each piece is contiguous.
constexpr std::size_t patternPeriod = 65521;
constexpr std::size_t longestPiece = 65536;

const std::vector<char>& pattern() {
    static const std::vector<char> block = [] {
        std::vector<char> bytes(patternPeriod + longestPiece);
        std::uint32_t state = 0x9E3779B9U;
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            state ^= state << 13U;
            state ^= state >> 17U;
            state ^= state << 5U;
            bytes[i] = i < patternPeriod ? static_cast<char>(state >> 24U) : bytes[i - patternPeriod];
        }
        return bytes;
    }();
    return block;
}

} // namespace

BodyReader::BodyReader(const ResponseBody& body) noexcept : size_(0), isGenerated_(false) {
    if (const auto* text = std::get_if<std::string>(&body)) {
        stored_ = *text;
        size_ = text->size();
    } else {
        size_ = std::get<GeneratedBytes>(body).count;
        isGenerated_ = true;
    }
}

std::string_view BodyReader::at(std::uint64_t offset, std::uint64_t limit) const noexcept {
    const std::uint64_t count = offset < size_ ? std::min(limit, size_ - offset) : 0;
    if (isGenerated_) {
        const auto length = static_cast<std::size_t>(std::min<std::uint64_t>(count, longestPiece));
        return {pattern().data() + offset % patternPeriod, length};
    }
    return count == 0 ? std::string_view()
                      : stored_.substr(static_cast<std::size_t>(offset), static_cast<std::size_t>(count));
}

} // namespace tovrel::testing
