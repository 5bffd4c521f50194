#pragma once

#include <TovrelTesting/ScriptedResponse.hpp>

#include <utility>

namespace tovrel::testing {

/// A response that no cache keeps (RFC 6749 section 5.1).
inline ScriptedResponse notStored(ScriptedResponse response) {
    return std::move(response).withHeader("Cache-Control", "no-store").withHeader("Pragma", "no-cache");
}

} // namespace tovrel::testing
