#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tovrel::testing {

/// Where an application waits and how it proves to be the one that asked, as its state says it.
struct ReturnAddress {
    std::uint16_t port = 0;
    /// The S256 challenge (RFC 7636 section 4.2).
    std::string challenge;

    ReturnAddress(std::uint16_t port, std::string challenge);

    /// Reads "random.port.challenge"; absent for too little randomness, a privileged port or any other form.
    static std::optional<ReturnAddress> ofState(std::string_view state);

    /// Whether this text is the one that the challenge was made from.
    bool isProvedBy(std::string_view verifier) const;
};

} // namespace tovrel::testing
