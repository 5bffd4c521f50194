#pragma once

#include <Platform/System/Error.hpp>
#include <Platform/System/Export.hpp>

#include <string_view>

namespace tovrel {

/// Why a keychain could not do what it was asked to. That there is no entry is no error.
///
/// Two errors are equal if their kinds are; the context, "reading" for example, is for developers and part of
/// `what()` alone.
class TOVREL_EXPORT KeychainError final : public Error {
public:
    enum class Kind {
        /// The keyring waits for its user's password. What it holds is unknown.
        locked,
        /// Nothing answered in time, or the disk failed. What is stored is unknown.
        unavailable,
        /// The system does not let this process read or write there.
        denied,
        /// There is an entry, but not one that this library wrote with the key that it has.
        corrupt,
    };

    static KeychainError locked(std::string_view context = {});
    static KeychainError unavailable(std::string_view context = {});
    static KeychainError denied(std::string_view context = {});
    static KeychainError corrupt(std::string_view context = {});

    KeychainError(const KeychainError&) = default;
    KeychainError(KeychainError&&) noexcept = default;
    KeychainError& operator=(const KeychainError&) = default;
    KeychainError& operator=(KeychainError&&) noexcept = default;
    ~KeychainError() override;

    Kind kind() const noexcept { return kind_; }

    friend bool operator==(const KeychainError& a, const KeychainError& b) noexcept { return a.kind_ == b.kind_; }

private:
    KeychainError(Kind kind, std::string_view context);

    Kind kind_;
};

} // namespace tovrel
