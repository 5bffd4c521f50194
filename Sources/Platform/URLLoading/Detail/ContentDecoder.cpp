#include <Platform/URLLoading/Detail/ASCII.hpp>
#include <Platform/URLLoading/Detail/ContentDecoder.hpp>
#include <Platform/URLLoading/Detail/StreamDecoders.hpp>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace tovrel {

namespace {

/// Nobody stacks more; each level multiplies what a few hostile bytes can cost.
constexpr std::size_t mostCodings = 4;

using MakeDecoder = std::unique_ptr<BodySink> (*)(BodySink&);

/// Null where the coding is unknown.
MakeDecoder decoderFor(std::string_view coding) noexcept {
    struct Entry {
        std::string_view coding;
        MakeDecoder make;
    };
    static constexpr Entry entries[] = {{"gzip", makeGzipDecoder},
                                        {"x-gzip", makeGzipDecoder},
                                        {"deflate", makeDeflateDecoder},
                                        {"br", makeBrotliDecoder},
                                        {"zstd", makeZstandardDecoder}};
    for (const Entry& entry : entries) {
        if (ascii::equalIgnoringCase(entry.coding, coding)) {
            return entry.make;
        }
    }
    return nullptr;
}

/// Decodes the outer coding into the decoder of the inner ones.
class DecoderChain final : public BodySink {
public:
    DecoderChain(const std::vector<MakeDecoder>& innermostFirst, BodySink& sink) {
        BodySink* next = &sink;
        for (const MakeDecoder make : innermostFirst) {
            stages_.push_back(make(*next));
            next = stages_.back().get();
        }
    }

    Failure write(std::string_view bytes) override { return stages_.back()->write(bytes); }
    Failure finish() override { return stages_.back()->finish(); }

private:
    std::vector<std::unique_ptr<BodySink>> stages_;
};

} // namespace

ContentDecoding contentDecoding(std::string_view contentEncoding, BodySink& sink) {
    std::vector<MakeDecoder> decoders;
    while (!contentEncoding.empty()) {
        const std::size_t comma = std::min(contentEncoding.find(','), contentEncoding.size());
        const std::string_view coding = ascii::trimmed(contentEncoding.substr(0, comma));
        contentEncoding.remove_prefix(std::min(comma + 1, contentEncoding.size()));
        if (coding.empty() || ascii::equalIgnoringCase(coding, "identity")) {
            continue;
        }
        const MakeDecoder make = decoderFor(coding);
        if (make == nullptr) {
            return std::monostate{};
        }
        decoders.push_back(make);
    }
    if (decoders.size() > mostCodings) {
        return URLError::Kind::cannotDecodeContentData;
    }
    if (decoders.empty()) {
        return std::monostate{};
    }
    if (decoders.size() == 1) {
        return decoders.front()(sink);
    }
    return std::make_unique<DecoderChain>(decoders, sink);
}

} // namespace tovrel
