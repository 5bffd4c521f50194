#include <Platform/Coding/PropertyListDecoder.hpp>
#include <Platform/System/Bundle.hpp>

#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

namespace tovrel {

namespace {

/// One entry of an "Info.plist"; without a value if it is of a kind that a bundle does not know.
struct InfoEntry {
    std::optional<Bundle::InfoValue> value;

    InfoEntry() = default;
    explicit InfoEntry(std::optional<Bundle::InfoValue> entryValue) : value(std::move(entryValue)) {}
};

template <class... Types>
std::optional<Bundle::InfoValue> firstOf(Decoder& decoder) {
    std::optional<Bundle::InfoValue> value;
    const auto attempt = [&]<class T>(std::in_place_type_t<T>) {
        try {
            value = decoder.singleValue().decode<T>();
        } catch (const DecodingError&) {
            return false;
        }
        return true;
    };
    static_cast<void>((attempt(std::in_place_type<Types>) || ...));
    return value;
}

} // namespace

template <>
struct Coding<InfoEntry> {
    static InfoEntry decode(Decoder& decoder) {
        return InfoEntry(firstOf<std::string, bool, std::int64_t, double>(decoder));
    }

    static void encode(const InfoEntry& entry, Encoder& encoder) {
        std::visit([&](const auto& value) { encoder.singleValue(value); }, entry.value.value_or(std::string()));
    }
};

namespace {

Data contents(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return Data(std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()));
}

Bundle::InfoDictionary readInfoDictionary(const std::filesystem::path& file) {
    Bundle::InfoDictionary dictionary;
    try {
        const auto entries = PropertyListDecoder().decode<std::map<std::string, InfoEntry>>(contents(file));
        for (const auto& [key, entry] : entries) {
            if (entry.value) {
                dictionary.emplace(key, *entry.value);
            }
        }
    } catch (const DecodingError&) {
        dictionary.clear();
    }
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
