#include <Platform/URLLoading/Detail/StreamDecoders.hpp>

#include <array>
#include <new>
#include <string>
#include <utility>
#include <zlib.h>

namespace tovrel {

namespace {

constexpr int zlibWindow = 15;
constexpr int gzipWindow = 15 + 16;
constexpr int rawWindow = -15;

class Inflater {
public:
    explicit Inflater(int windowBits) {
        if (inflateInit2(&stream_, windowBits) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;
    ~Inflater() { inflateEnd(&stream_); }

    /// Decodes up to the end of the stream or of the input and takes what it used from the input.
    BodySink::Failure decode(std::string_view& input, BodySink& sink) {
        do {
            // zlib counts in unsigned int; a chunk from the network is far smaller.
            stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(input.data()));
            stream_.avail_in = static_cast<uInt>(input.size());
            stream_.next_out = output_.data();
            stream_.avail_out = static_cast<uInt>(output_.size());
            const int status = inflate(&stream_, Z_NO_FLUSH);
            input.remove_prefix(input.size() - stream_.avail_in);
            if (status != Z_OK && status != Z_STREAM_END && status != Z_BUF_ERROR) {
                return URLError::Kind::cannotDecodeContentData;
            }
            const std::size_t produced = output_.size() - stream_.avail_out;
            if (produced > 0) {
                if (auto failure = sink.write({reinterpret_cast<const char*>(output_.data()), produced})) {
                    return failure;
                }
            }
            ended_ = status == Z_STREAM_END;
        } while (!ended_ && stream_.avail_out == 0);
        return std::nullopt;
    }

    bool ended() const noexcept { return ended_; }

    void restart() {
        inflateReset(&stream_);
        ended_ = false;
    }

private:
    z_stream stream_{};
    bool ended_ = false;
    std::array<Bytef, 16384> output_;
};

class GzipDecoder final : public BodySink {
public:
    explicit GzipDecoder(BodySink& sink) : sink_(sink) {}

    Failure write(std::string_view bytes) override {
        constexpr char firstMagicByte = '\x1f';
        while (!bytes.empty() && !ignoresRest_) {
            if (inflater_.ended()) {
                if (bytes.front() != firstMagicByte) {
                    ignoresRest_ = true;
                    break;
                }
                inflater_.restart();
            }
            started_ = true;
            if (auto failure = inflater_.decode(bytes, sink_)) {
                return failure;
            }
        }
        return std::nullopt;
    }

    Failure finish() override {
        return started_ && !inflater_.ended() ? Failure(URLError::Kind::cannotDecodeContentData) : sink_.finish();
    }

private:
    BodySink& sink_;
    Inflater inflater_{gzipWindow};
    bool started_ = false;
    bool ignoresRest_ = false;
};

class DeflateDecoder final : public BodySink {
public:
    explicit DeflateDecoder(BodySink& sink) : sink_(sink) {}

    Failure write(std::string_view bytes) override {
        if (inflater_) {
            return decode(bytes);
        }
        start_.append(bytes);
        if (start_.size() < 2) {
            return std::nullopt;
        }
        inflater_ = std::make_unique<Inflater>(startsWithZlibHeader() ? zlibWindow : rawWindow);
        return decode(std::exchange(start_, {}));
    }

    Failure finish() override {
        const bool complete = inflater_ ? inflater_->ended() : start_.empty();
        return complete ? sink_.finish() : Failure(URLError::Kind::cannotDecodeContentData);
    }

private:
    /// RFC 1950, section 2.2: method 8, and a check value.
    bool startsWithZlibHeader() const noexcept {
        const auto first = static_cast<unsigned char>(start_[0]);
        const auto second = static_cast<unsigned char>(start_[1]);
        return (first & 0x0FU) == 8 && (first * 256U + second) % 31U == 0;
    }

    Failure decode(std::string_view bytes) {
        return inflater_->ended() ? std::nullopt : inflater_->decode(bytes, sink_);
    }

    BodySink& sink_;
    std::string start_;
    std::unique_ptr<Inflater> inflater_;
};

} // namespace

std::unique_ptr<BodySink> makeGzipDecoder(BodySink& sink) {
    return std::make_unique<GzipDecoder>(sink);
}

std::unique_ptr<BodySink> makeDeflateDecoder(BodySink& sink) {
    return std::make_unique<DeflateDecoder>(sink);
}

} // namespace tovrel
