#include <QZFrameworkCoreLogic/Detail/Keychain/RecordCoding.hpp>

namespace tovrel::detail {

namespace {

constexpr char whenUnlockedMark = 1;
constexpr char afterFirstUnlockMark = 2;

} // namespace

Data encodeRecord(const KeychainRecord& record) {
    const char mark =
        record.accessibility == KeychainAccessibility::whenUnlocked ? whenUnlockedMark : afterFirstUnlockMark;
    MutableData bytes;
    bytes.reserve(1 + record.value.size());
    bytes.append(&mark, 1);
    bytes.append(record.value.view());
    return bytes.freeze();
}

std::optional<KeychainRecord> decodeRecord(std::string_view bytes) {
    if (bytes.empty() || (bytes.front() != whenUnlockedMark && bytes.front() != afterFirstUnlockMark)) {
        return std::nullopt;
    }
    return KeychainRecord(Data(bytes.substr(1)), bytes.front() == whenUnlockedMark
                                                     ? KeychainAccessibility::whenUnlocked
                                                     : KeychainAccessibility::afterFirstUnlock);
}

} // namespace tovrel::detail
