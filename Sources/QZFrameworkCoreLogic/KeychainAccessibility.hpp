#pragma once

namespace tovrel {

/// When a stored entry may be read. Kept with the entry.
enum class KeychainAccessibility {
    /// While the keyring is unlocked, and never from memory while it is locked or out of reach.
    whenUnlocked,
    /// Once it has been read or written in this process, also while the keyring is locked or out of reach.
    afterFirstUnlock,
};

} // namespace tovrel
