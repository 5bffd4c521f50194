#include <Platform/URLLoading/Detail/ContentDecoder.hpp>
#include <Platform/URLLoading/Detail/MemoryBody.hpp>

#include <gtest/gtest.h>

#include <brotli/encode.h>
#include <functional>
#include <string>
#include <zlib.h>
#include <zstd.h>

namespace tovrel {
namespace {

std::string deflated(std::string_view text, int windowBits) {
    z_stream stream{};
    EXPECT_EQ(deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, windowBits, 8, Z_DEFAULT_STRATEGY), Z_OK);
    std::string result(deflateBound(&stream, text.size()) + 64, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    result.resize(stream.total_out);
    deflateEnd(&stream);
    return result;
}

std::string gzipped(std::string_view text) {
    return deflated(text, 15 + 16);
}
std::string zlibbed(std::string_view text) {
    return deflated(text, 15);
}
std::string rawDeflated(std::string_view text) {
    return deflated(text, -15);
}

std::string brotlied(std::string_view text) {
    std::string result(BrotliEncoderMaxCompressedSize(text.size()) + 64, '\0');
    std::size_t size = result.size();
    EXPECT_TRUE(BrotliEncoderCompress(5, BROTLI_DEFAULT_WINDOW, BROTLI_MODE_GENERIC, text.size(),
                                      reinterpret_cast<const std::uint8_t*>(text.data()), &size,
                                      reinterpret_cast<std::uint8_t*>(result.data())));
    result.resize(size);
    return result;
}

std::string zstandarded(std::string_view text) {
    std::string result(ZSTD_compressBound(text.size()), '\0');
    result.resize(ZSTD_compress(result.data(), result.size(), text.data(), text.size(), 3));
    return result;
}

struct Decoded {
    std::optional<std::string> text;
    BodySink::Failure failure;

    friend bool operator==(const Decoded&, const Decoded&) = default;
};

Decoded decoded(std::string_view coding, std::string_view bytes, std::size_t step = 1 << 20,
                std::optional<std::uint64_t> limit = {}) {
    MemoryBody body(limit);
    ContentDecoding decoding = contentDecoding(coding, body);
    if (const auto* kind = std::get_if<URLError::Kind>(&decoding)) {
        return {{}, *kind};
    }
    auto* decoder = std::get_if<std::unique_ptr<BodySink>>(&decoding);
    BodySink& sink = decoder != nullptr ? **decoder : static_cast<BodySink&>(body);
    for (std::size_t i = 0; i < bytes.size(); i += step) {
        if (auto failure = sink.write(bytes.substr(i, step))) {
            return {{}, failure};
        }
    }
    if (auto failure = sink.finish()) {
        return {{}, failure};
    }
    return {body.take().string(), {}};
}

const Decoded broken{{}, URLError::Kind::cannotDecodeContentData};

/// Compressible and not, and larger than any buffer in between.
std::string sample() {
    std::string text;
    unsigned state = 1;
    for (int i = 0; i < 60000; ++i) {
        state = state * 1664525U + 1013904223U;
        text += i % 3 == 0 ? static_cast<char>(state >> 24U) : 'a';
    }
    return text;
}

struct Coding {
    const char* name;
    std::function<std::string(std::string_view)> encode;
};

const Coding codings[] = {{"gzip", gzipped},        {"x-gzip", gzipped}, {"deflate", zlibbed},
                          {"deflate", rawDeflated}, {"br", brotlied},    {"zstd", zstandarded}};

TEST(ContentDecoder, DecodesEveryCodingWhateverThePieces) {
    const std::string text = sample();
    for (const Coding& coding : codings) {
        const std::string bytes = coding.encode(text);
        for (const std::size_t step : {std::size_t(1), std::size_t(7), std::size_t(1000), bytes.size()}) {
            EXPECT_EQ(decoded(coding.name, bytes, step), (Decoded{text, {}})) << coding.name << " " << step;
        }
    }
}

TEST(ContentDecoder, DecodesWhatGrowsManyTimes) {
    const std::string text(5'000'000, 'z');
    for (const Coding& coding : codings) {
        EXPECT_EQ(decoded(coding.name, coding.encode(text), 100), (Decoded{text, {}})) << coding.name;
    }
}

TEST(ContentDecoder, FailsOnATruncatedStreamWhereverItEnds) {
    const std::string text = sample().substr(0, 300);
    for (const Coding& coding : codings) {
        const std::string bytes = coding.encode(text);
        for (std::size_t size = 1; size < bytes.size(); ++size) {
            EXPECT_EQ(decoded(coding.name, bytes.substr(0, size)), broken) << coding.name << " " << size;
        }
    }
}

TEST(ContentDecoder, FailsOnBytesThatAreNotOfTheCoding) {
    for (const Coding& coding : codings) {
        EXPECT_EQ(decoded(coding.name, "<html>this is no compressed body at all</html>"), broken) << coding.name;
    }
}

TEST(ContentDecoder, FailsOnADamagedGzipStream) {
    std::string bytes = gzipped(sample());
    bytes[bytes.size() - 6] = static_cast<char>(bytes[bytes.size() - 6] ^ 1);
    EXPECT_EQ(decoded("gzip", bytes), broken);
}

TEST(ContentDecoder, TakesNoBytesForAnEmptyBody) {
    for (const Coding& coding : codings) {
        EXPECT_EQ(decoded(coding.name, ""), (Decoded{"", {}})) << coding.name;
        EXPECT_EQ(decoded(coding.name, coding.encode("")), (Decoded{"", {}})) << coding.name;
    }
}

TEST(ContentDecoder, DecodesGzipMembersOneAfterTheOther) {
    EXPECT_EQ(decoded("gzip", gzipped("one ") + gzipped("two"), 3), (Decoded{"one two", {}}));
    EXPECT_EQ(decoded("gzip", gzipped("one ") + gzipped("two").substr(0, 12)), broken);
}

TEST(ContentDecoder, IgnoresPaddingBehindGzip) {
    EXPECT_EQ(decoded("gzip", gzipped("one") + std::string(10, '\0'), 1), (Decoded{"one", {}}));
}

TEST(ContentDecoder, UndoesSeveralCodingsLastOneFirst) {
    EXPECT_EQ(decoded("deflate, gzip", gzipped(zlibbed("text")), 2), (Decoded{"text", {}}));
    EXPECT_EQ(decoded("br,identity , GZIP", gzipped(brotlied("text")), 2), (Decoded{"text", {}}));
    const std::string inner = zlibbed(sample());
    EXPECT_EQ(decoded("deflate, gzip", gzipped(std::string_view(inner).substr(0, 1000))), broken);
}

TEST(ContentDecoder, RefusesAnAbsurdNumberOfCodings) {
    EXPECT_EQ(decoded("gzip, gzip, gzip, gzip, gzip", ""), broken);
}

TEST(ContentDecoder, DeliversIdentityAndUnknownCodingsAsTheyAre) {
    const std::string bytes = gzipped("text");
    for (const char* coding : {"", "identity", " , ", "compress", "gzip, aes128gcm", "x-unknown"}) {
        EXPECT_EQ(decoded(coding, bytes), (Decoded{bytes, {}})) << coding;
    }
}

TEST(ContentDecoder, StopsAtTheLimitOfDecodedBytes) {
    const std::string text(1'000'000, 'z');
    for (const Coding& coding : codings) {
        const std::string bytes = coding.encode(text);
        EXPECT_EQ(decoded(coding.name, bytes, 1 << 20, 1'000'000), (Decoded{text, {}})) << coding.name;
        EXPECT_EQ(decoded(coding.name, bytes, 1 << 20, 999'999),
                  (Decoded{{}, URLError::Kind::dataLengthExceedsMaximum}))
            << coding.name;
    }
}

} // namespace
} // namespace tovrel
