#include <Platform/URLLoading/Detail/ASCII.hpp>
#include <Platform/URLLoading/Detail/Cache/FieldValue.hpp>

namespace tovrel {

std::optional<std::string> combinedValue(const HTTPHeaders& headers, std::string_view name) {
    std::optional<std::string> result;
    for (const HTTPHeader& field : headers) {
        if (!ascii::equalIgnoringCase(field.name, name)) {
            continue;
        }
        if (result) {
            result->append(", ").append(field.value);
        } else {
            result = field.value;
        }
    }
    return result;
}

FieldList::FieldList(std::string_view value) {
    std::size_t start = 0;
    bool isQuoted = false;
    const auto finishMember = [&](std::size_t end) {
        const std::string_view member = ascii::trimmed(value.substr(start, end - start));
        if (!member.empty()) {
            members.push_back(member);
        }
        start = end + 1;
    };
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (isQuoted && value[i] == '\\') {
            ++i;
        } else if (value[i] == '"') {
            isQuoted = !isQuoted;
        } else if (value[i] == ',' && !isQuoted) {
            finishMember(i);
        }
    }
    finishMember(value.size());
    isMalformed = isQuoted;
}

} // namespace tovrel
