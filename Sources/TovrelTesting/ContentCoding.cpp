#include <TovrelTesting/ContentCoding.hpp>

#include <new>
#include <zlib.h>

namespace tovrel::testing {

std::string_view contentCodingName(ContentCoding coding) noexcept {
    return coding == ContentCoding::gzip ? "gzip" : "deflate";
}

std::string compressed(std::string_view text, ContentCoding coding) {
    constexpr int gzipWrapper = 16;
    z_stream stream = {};
    const int windowBits = MAX_WBITS + (coding == ContentCoding::gzip ? gzipWrapper : 0);
    if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, windowBits, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY) !=
        Z_OK) {
        throw std::bad_alloc();
    }
    std::string result(deflateBound(&stream, static_cast<uLong>(text.size())), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    deflate(&stream, Z_FINISH);
    result.resize(stream.total_out);
    deflateEnd(&stream);
    return result;
}

} // namespace tovrel::testing
