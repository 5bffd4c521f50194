#include <TovrelWebServices/Transport/AcceptEncodingType.hpp>

namespace tovrel {

const std::vector<AcceptEncodingType>& AcceptEncodingType::default_() {
    static const std::vector<AcceptEncodingType> types{deflate, gzip};
    return types;
}

std::string AcceptEncodingType::headerValue(std::span<const AcceptEncodingType> types) {
    std::string value;
    for (const AcceptEncodingType type : types) {
        if (!value.empty()) {
            value += ", ";
        }
        value += type.rawValue();
    }
    return value;
}

} // namespace tovrel
