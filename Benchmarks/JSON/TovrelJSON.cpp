#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/Coding/JSONEncoder.hpp>

#include <JSON/JSONPeers.hpp>

namespace tovrel::benchmarks {

JSONPeer tovrelJSON() {
    return JSONPeer(
        "ours",
        [decoder =
             JSONDecoder(KeyDecodingStrategy::convertFromSnakeCase(), DateDecodingStrategy::millisecondsSince1970())](
            const Data& document) { return decoder.decode<RecordEnvelope>(document); },
        [encoder =
             JSONEncoder(KeyEncodingStrategy::convertToSnakeCase(), DateEncodingStrategy::millisecondsSince1970())](
            const RecordEnvelope& envelope, const JSONPeer::Reader& read) { read(encoder.encode(envelope).view()); });
}

} // namespace tovrel::benchmarks
