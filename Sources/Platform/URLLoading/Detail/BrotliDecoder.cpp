#include <Platform/URLLoading/Detail/StreamDecoders.hpp>

#include <array>
#include <brotli/decode.h>
#include <cstdint>
#include <new>

namespace tovrel {

namespace {

struct DestroyDecoder {
    void operator()(BrotliDecoderState* state) const noexcept { BrotliDecoderDestroyInstance(state); }
};

class BrotliDecoder final : public BodySink {
public:
    explicit BrotliDecoder(BodySink& sink)
        : sink_(sink), state_(BrotliDecoderCreateInstance(nullptr, nullptr, nullptr)) {
        if (!state_) {
            throw std::bad_alloc();
        }
    }

    Failure write(std::string_view bytes) override {
        started_ = started_ || !bytes.empty();
        std::size_t inputLeft = bytes.size();
        const auto* input = reinterpret_cast<const std::uint8_t*>(bytes.data());
        while (!BrotliDecoderIsFinished(state_.get())) {
            std::size_t outputLeft = output_.size();
            std::uint8_t* output = output_.data();
            const BrotliDecoderResult result =
                BrotliDecoderDecompressStream(state_.get(), &inputLeft, &input, &outputLeft, &output, nullptr);
            if (result == BROTLI_DECODER_RESULT_ERROR) {
                return URLError::Kind::cannotDecodeContentData;
            }
            if (const std::size_t produced = output_.size() - outputLeft; produced > 0) {
                if (auto failure = sink_.write({reinterpret_cast<const char*>(output_.data()), produced})) {
                    return failure;
                }
            }
            if (result == BROTLI_DECODER_RESULT_NEEDS_MORE_INPUT) {
                break;
            }
        }
        return std::nullopt;
    }

    Failure finish() override {
        return started_ && !BrotliDecoderIsFinished(state_.get()) ? Failure(URLError::Kind::cannotDecodeContentData)
                                                                  : sink_.finish();
    }

private:
    BodySink& sink_;
    std::unique_ptr<BrotliDecoderState, DestroyDecoder> state_;
    bool started_ = false;
    std::array<std::uint8_t, 16384> output_;
};

} // namespace

std::unique_ptr<BodySink> makeBrotliDecoder(BodySink& sink) {
    return std::make_unique<BrotliDecoder>(sink);
}

} // namespace tovrel
