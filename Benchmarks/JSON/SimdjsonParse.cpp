#include <simdjson.h>

#include <JSON/JSONPeers.hpp>
#include <memory>

namespace tovrel::benchmarks {

std::function<void(const Data& document)> simdjsonParse() {
    return [parser = std::make_shared<simdjson::dom::parser>()](const Data& document) {
        static_assert(Data::padding >= simdjson::SIMDJSON_PADDING);
        const simdjson::dom::element root = parser->parse(document.data(), document.size(), false);
        if (!root.is_object()) {
            throw simdjson::simdjson_error(simdjson::INCORRECT_TYPE);
        }
    };
}

} // namespace tovrel::benchmarks
