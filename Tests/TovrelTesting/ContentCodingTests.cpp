#include <TovrelTesting/ContentCoding.hpp>

#include <gtest/gtest.h>

#include <string>
#include <zlib.h>

namespace tovrel::testing {

namespace {

std::string inflated(const std::string& bytes, int windowBits, std::size_t size) {
    z_stream stream = {};
    EXPECT_EQ(inflateInit2(&stream, windowBits), Z_OK);
    std::string result(size + 1, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
    EXPECT_EQ(stream.avail_in, 0U);
    result.resize(stream.total_out);
    inflateEnd(&stream);
    return result;
}

constexpr int onlyGzip = MAX_WBITS + 16;
constexpr int onlyZlib = MAX_WBITS;

} // namespace

TEST(ContentCoding, WritesTheGzipFormat) {
    const std::string text(100000, 'a');
    const std::string coded = compressed(text, ContentCoding::gzip);
    EXPECT_LT(coded.size(), 1000U);
    EXPECT_EQ(inflated(coded, onlyGzip, text.size()), text);
}

TEST(ContentCoding, WritesTheZlibFormatForDeflate) {
    EXPECT_EQ(inflated(compressed("some text", ContentCoding::deflate), onlyZlib, 9), "some text");
}

TEST(ContentCoding, CompressesNothingToAValidStream) {
    EXPECT_EQ(inflated(compressed("", ContentCoding::gzip), onlyGzip, 0), "");
}

TEST(ContentCoding, HasTheNamesOfTheWire) {
    EXPECT_EQ(contentCodingName(ContentCoding::gzip), "gzip");
    EXPECT_EQ(contentCodingName(ContentCoding::deflate), "deflate");
}

} // namespace tovrel::testing
