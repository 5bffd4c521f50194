#pragma once

#include <functional>
#include <JSON/Records.hpp>
#include <string>
#include <string_view>

namespace tovrel::benchmarks {

/// What one JSON library makes of the records, each written the way its own manual shows, with every key required that
/// is not optional and every type checked.
struct JSONPeer {
    using Reader = std::function<void(std::string_view text)>;

    std::string name;
    std::function<RecordEnvelope(const Data& document)> decode;
    /// Encodes into whatever the library writes to and shows that text.
    std::function<void(const RecordEnvelope& envelope, const Reader& read)> encode;

    /// Why it cannot take part, if so; then the functions are empty.
    std::string absence;

    static JSONPeer absent(std::string name);
    JSONPeer(std::string peerName, std::function<RecordEnvelope(const Data&)> decoder,
             std::function<void(const RecordEnvelope&, const Reader&)> encoder);
};

JSONPeer tovrelJSON();
JSONPeer rapidJSON();
JSONPeer boostJSON();
JSONPeer nlohmannJSON();

/// Ours first.
std::vector<JSONPeer> jsonPeers();

/// Parses the document and looks at nothing in it: what no decoder on top of this parser can beat.
std::function<void(const Data& document)> simdjsonParse();

} // namespace tovrel::benchmarks
