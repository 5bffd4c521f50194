#include <Platform/System/Bundle.hpp>

#include <plist/plist.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <system_error>
#include <utility>

namespace tovrel {

namespace {

struct FreeNode {
    void operator()(void* node) const { plist_free(node); }
};

std::string contents(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::optional<Bundle::InfoValue> infoValue(plist_t node) {
    switch (plist_get_node_type(node)) {
    case PLIST_STRING: {
        std::uint64_t length = 0;
        const char* text = plist_get_string_ptr(node, &length);
        return Bundle::InfoValue(std::in_place_type<std::string>, text, length);
    }
    case PLIST_UINT: {
        std::uint64_t number = 0;
        plist_get_uint_val(node, &number);
        return Bundle::InfoValue(static_cast<std::int64_t>(number));
    }
    case PLIST_REAL: {
        double number = 0;
        plist_get_real_val(node, &number);
        return Bundle::InfoValue(number);
    }
    case PLIST_BOOLEAN: {
        std::uint8_t truth = 0;
        plist_get_bool_val(node, &truth);
        return Bundle::InfoValue(truth != 0);
    }
    default:
        return std::nullopt;
    }
}

Bundle::InfoDictionary readInfoDictionary(const std::filesystem::path& file) {
    const std::string text = contents(file);
    plist_t root = nullptr;
    if (!text.empty()) {
        plist_from_memory(text.data(), static_cast<std::uint32_t>(text.size()), &root);
    }
    const std::unique_ptr<void, FreeNode> owner(root);
    Bundle::InfoDictionary dictionary;
    if (root == nullptr || plist_get_node_type(root) != PLIST_DICT) {
        return dictionary;
    }
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(root, &iterator);
    char* key = nullptr;
    plist_t node = nullptr;
    for (plist_dict_next_item(root, iterator, &key, &node); key != nullptr;
         plist_dict_next_item(root, iterator, &key, &node)) {
        if (auto value = infoValue(node)) {
            dictionary.emplace(key, std::move(*value));
        }
        std::free(key);
        key = nullptr;
    }
    std::free(iterator);
    return dictionary;
}

std::filesystem::path executableFolder() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

} // namespace

const Bundle& Bundle::main() {
    static const Bundle bundle(executableFolder());
    return bundle;
}

Bundle::Bundle(InfoDictionary infoDictionary) : infoDictionary_(std::move(infoDictionary)) {}

Bundle::Bundle(const std::filesystem::path& folder) : infoDictionary_(readInfoDictionary(folder / "Info.plist")) {}

std::optional<std::string> Bundle::string(std::string_view key) const {
    const auto entry = infoDictionary_.find(std::string(key));
    if (entry == infoDictionary_.end()) {
        return std::nullopt;
    }
    const auto* text = std::get_if<std::string>(&entry->second);
    return text != nullptr ? std::optional(*text) : std::nullopt;
}

} // namespace tovrel
