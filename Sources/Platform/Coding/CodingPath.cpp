#include <Platform/Coding/CodingPath.hpp>

namespace tovrel {

std::string describe(const CodingPath& path) {
    std::string text;
    for (const CodingKey& key : path) {
        if (key.index()) {
            text += '[' + std::to_string(*key.index()) + ']';
        } else {
            text += (text.empty() ? "" : ".") + key.name();
        }
    }
    return text;
}

} // namespace tovrel
