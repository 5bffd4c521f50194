#include "FuzzedRecord.hpp"

#include <Platform/Coding/PropertyListDecoder.hpp>
#include <Platform/Coding/PropertyListEncoder.hpp>
#include <Platform/System/FatalError.hpp>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tovrel;
    const PropertyListDecoder decoder;
    const PropertyListEncoder encoder;
    fuzz::Record record;
    try {
        record = decoder.decode<fuzz::Record>(Data(bytes, size));
    } catch (const DecodingError&) {
        return 0;
    }
    const Data encoded = encoder.encode(record);
    if (encoder.encode(decoder.decode<fuzz::Record>(encoded)) != encoded) {
        fatalError("what was encoded does not come back");
    }
    return 0;
}
