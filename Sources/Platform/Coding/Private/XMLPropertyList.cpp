#include <Platform/Coding/DecodingError.hpp>
#include <Platform/Coding/Private/XMLPropertyList.hpp>

#include <plist/plist.h>

#include <cstdint>
#include <memory>

namespace tovrel::detail {

namespace {

constexpr std::size_t deepestNesting = 512;

// The parser recurses over what it has read, so how deep elements nest is checked beforehand.
bool isNestedTooDeeply(std::string_view text) {
    std::size_t depth = 0;
    for (std::size_t position = text.find('<'); position != std::string_view::npos;
         position = text.find('<', position)) {
        const std::string_view rest = text.substr(position);
        std::string_view terminator = ">";
        if (rest.starts_with("<!--")) {
            terminator = "-->";
        } else if (rest.starts_with("<![CDATA[")) {
            terminator = "]]>";
        }
        const std::size_t end = rest.find(terminator);
        if (end == std::string_view::npos) {
            return depth > deepestNesting;
        }
        if (rest.starts_with("</")) {
            depth -= depth > 0 ? 1 : 0;
        } else if (!rest.starts_with("<!") && !rest.starts_with("<?") && rest[end - 1] != '/') {
            ++depth;
        }
        if (depth > deepestNesting) {
            return true;
        }
        position += end + terminator.size();
    }
    return false;
}

[[noreturn]] void refuse() {
    throw DecodingError::dataCorrupted("the bytes are no property list");
}

} // namespace

Data binaryFromXMLPropertyList(std::string_view text) {
    if (isNestedTooDeeply(text)) {
        throw DecodingError::dataCorrupted("the property list is nested too deeply");
    }
    plist_t parsed = nullptr;
    plist_from_xml(text.data(), static_cast<std::uint32_t>(text.size()), &parsed);
    const std::unique_ptr<void, void (*)(void*)> root(parsed, [](void* node) { plist_free(node); });
    if (root == nullptr) {
        refuse();
    }
    char* written = nullptr; // the library writes only to a null pointer
    std::uint32_t length = 0;
    plist_to_bin(root.get(), &written, &length);
    const std::unique_ptr<char, void (*)(char*)> binary(written, [](char* bytes) { plist_to_bin_free(bytes); });
    if (binary == nullptr) {
        refuse();
    }
    return Data(binary.get(), length);
}

} // namespace tovrel::detail
