#pragma once

#include <TovrelTesting/BackEnd/BodyReader.hpp>
#include <TovrelTesting/ReceivedRequest.hpp>
#include <TovrelTesting/ScriptedResponse.hpp>

#include <cstdint>
#include <memory>
#include <optional>

namespace tovrel::testing {

/// A scripted response with the questions answered that do not depend on the protocol version. Lives in a shared
/// pointer, as its body is read where it lies.
class PreparedResponse {
public:
    PreparedResponse(const ReceivedRequest& request, ScriptedResponse response, std::int64_t lengthDifference);
    PreparedResponse(const PreparedResponse&) = delete;
    PreparedResponse& operator=(const PreparedResponse&) = delete;

    const ScriptedResponse& script() const noexcept { return script_; }
    const BodyReader& body() const noexcept { return body_; }

    /// How many bytes of the body are sent: none for HEAD, 204 and 304 (RFC 9110 section 6.4.1).
    std::uint64_t bodySize() const noexcept { return isBodyless_ ? 0 : body_.size(); }
    bool isBodyless() const noexcept { return isBodyless_; }

    /// The `Content-Length` to add, where one belongs and the script has none of its own.
    std::optional<std::uint64_t> lengthToAdd() const noexcept { return lengthToAdd_; }

    /// Whether the announced length is not the body's.
    bool hasWrongLength() const noexcept { return hasWrongLength_; }

private:
    ScriptedResponse script_;
    BodyReader body_;
    bool isBodyless_;
    bool hasWrongLength_ = false;
    std::optional<std::uint64_t> lengthToAdd_;
};

} // namespace tovrel::testing
