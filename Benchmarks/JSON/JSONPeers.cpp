#include <JSON/JSONPeers.hpp>
#include <utility>

namespace tovrel::benchmarks {

JSONPeer::JSONPeer(std::string peerName, std::function<RecordEnvelope(const Data&)> decoder,
                   std::function<void(const RecordEnvelope&, const Reader&)> encoder)
    : name(std::move(peerName)), decode(std::move(decoder)), encode(std::move(encoder)) {}

JSONPeer JSONPeer::absent(std::string name) {
    JSONPeer peer(std::move(name), nullptr, nullptr);
    peer.absence = "not installed";
    return peer;
}

std::vector<JSONPeer> jsonPeers() {
    return {tovrelJSON(),
#ifdef TOVREL_HAS_RAPIDJSON
            rapidJSON(),
#else
            JSONPeer::absent("RapidJSON"),
#endif
#ifdef TOVREL_HAS_BOOST_JSON
            boostJSON(),
#else
            JSONPeer::absent("Boost.JSON"),
#endif
#ifdef TOVREL_HAS_NLOHMANN
            nlohmannJSON()
#else
            JSONPeer::absent("nlohmann/json")
#endif
    };
}

} // namespace tovrel::benchmarks
