#pragma once

#include <Platform/System/Error.hpp>
#include <Platform/System/Export.hpp>

#include <string>

namespace tovrel::testing {

/// Why a local back end did not start.
class TOVREL_EXPORT LocalBackEndError : public Error {
public:
    enum class Kind {
        /// No port of 127.0.0.1 could be opened.
        cannotListen,
        /// The cryptographic library refused to make keys, certificates or a TLS set-up.
        cryptography,
    };

    static LocalBackEndError cannotListen(const std::string& reason);
    static LocalBackEndError cryptography(const std::string& operation);

    Kind kind() const noexcept { return kind_; }

    /// Compares the kinds.
    bool operator==(const LocalBackEndError& other) const noexcept { return kind_ == other.kind_; }

private:
    LocalBackEndError(Kind kind, std::string message);

    Kind kind_;
};

} // namespace tovrel::testing
