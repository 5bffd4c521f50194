#include "FuzzedRecord.hpp"

#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/Coding/JSONEncoder.hpp>
#include <Platform/System/FatalError.hpp>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tovrel::fuzz {
namespace {

void decodeAndEncodeAgain(const Data& json, const JSONDecoder& decoder, const JSONEncoder& encoder) {
    Record record;
    try {
        record = decoder.decode<Record>(json);
    } catch (const DecodingError&) {
        return;
    }
    Data encoded;
    try {
        encoded = encoder.encode(record);
    } catch (const EncodingError&) {
        // Only a date too far away for the form that is asked for: what was decoded is finite and UTF-8.
        if (encoder.dateEncodingStrategy.kind() == DateEncodingStrategy::Kind::deferredToDate) {
            fatalError("what was decoded cannot be encoded");
        }
        return;
    }
    if (encoder.encode(decoder.decode<Record>(encoded)) != encoded) {
        fatalError("what was encoded does not come back");
    }
}

} // namespace
} // namespace tovrel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tovrel;
    const Data json(bytes, size);
    fuzz::decodeAndEncodeAgain(json, JSONDecoder(), JSONEncoder());
    JSONEncoder encoder(KeyEncodingStrategy::convertToSnakeCase(), DateEncodingStrategy::iso8601());
    encoder.sortsKeys = true;
    encoder.prettyPrints = true;
    const JSONDecoder decoder(KeyDecodingStrategy::convertFromSnakeCase(), DateDecodingStrategy::iso8601());
    fuzz::decodeAndEncodeAgain(json, decoder, encoder);
    return 0;
}
