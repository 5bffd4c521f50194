#pragma once

#include <QZFrameworkCoreLogic/Detail/Keychain/KeychainBackend.hpp>

#include <string_view>

namespace tovrel::detail {

/// The bytes of a record in a persistent backend: one for the accessibility, then the value as it is.
Data encodeRecord(const KeychainRecord& record);

/// Absent for bytes that `encodeRecord` did not write.
std::optional<KeychainRecord> decodeRecord(std::string_view bytes);

} // namespace tovrel::detail
