#include <Platform/Coding/JSONDecoder.hpp>

#include <JSON/JSONPeers.hpp>

namespace tovrel::benchmarks {

JSONPeer tovrelJSON() {
    return JSONPeer(
        "ours",
        [decoder =
             JSONDecoder(KeyDecodingStrategy::convertFromSnakeCase(), DateDecodingStrategy::millisecondsSince1970())](
            const Data& document) { return decoder.decode<RecordEnvelope>(document); },
        nullptr);
}

} // namespace tovrel::benchmarks
