#include <TovrelTesting/BackEnd/BodyReader.hpp>
#include <TovrelTesting/GeneratedBytes.hpp>

namespace tovrel::testing {

GeneratedBytes::GeneratedBytes(std::uint64_t byteCount) : count(byteCount) {}

std::string generatedBytes(std::uint64_t offset, std::size_t count) {
    const ResponseBody body = GeneratedBytes(offset + count);
    const BodyReader reader(body);
    std::string bytes;
    bytes.reserve(count);
    while (bytes.size() < count) {
        bytes += reader.at(offset + bytes.size(), count - bytes.size());
    }
    return bytes;
}

} // namespace tovrel::testing
