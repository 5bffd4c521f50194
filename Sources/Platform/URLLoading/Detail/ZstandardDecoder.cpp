#include <Platform/URLLoading/Detail/StreamDecoders.hpp>

#include <array>
#include <new>
#include <zstd.h>

namespace tovrel {

namespace {

/// 8 MiB: what a decoder must support, and all that a sender may ask for.
constexpr int largestWindowLog = 23;

struct FreeStream {
    void operator()(ZSTD_DStream* stream) const noexcept { ZSTD_freeDStream(stream); }
};

class ZstandardDecoder final : public BodySink {
public:
    explicit ZstandardDecoder(BodySink& sink) : sink_(sink), stream_(ZSTD_createDStream()) {
        if (!stream_ ||
            ZSTD_isError(ZSTD_DCtx_setParameter(stream_.get(), ZSTD_d_windowLogMax, largestWindowLog)) != 0) {
            throw std::bad_alloc();
        }
    }

    Failure write(std::string_view bytes) override {
        ZSTD_inBuffer input{bytes.data(), bytes.size(), 0};
        bool outputFull = false;
        while (input.pos < input.size || outputFull) {
            ZSTD_outBuffer output{output_.data(), output_.size(), 0};
            const std::size_t status = ZSTD_decompressStream(stream_.get(), &output, &input);
            if (ZSTD_isError(status) != 0) {
                return URLError::Kind::cannotDecodeContentData;
            }
            betweenFrames_ = status == 0;
            outputFull = output.pos == output.size && !betweenFrames_;
            if (output.pos > 0) {
                if (auto failure = sink_.write({output_.data(), output.pos})) {
                    return failure;
                }
            }
        }
        return std::nullopt;
    }

    Failure finish() override {
        return betweenFrames_ ? sink_.finish() : Failure(URLError::Kind::cannotDecodeContentData);
    }

private:
    BodySink& sink_;
    std::unique_ptr<ZSTD_DStream, FreeStream> stream_;
    bool betweenFrames_ = true;
    std::array<char, 16384> output_;
};

} // namespace

std::unique_ptr<BodySink> makeZstandardDecoder(BodySink& sink) {
    return std::make_unique<ZstandardDecoder>(sink);
}

} // namespace tovrel
