#pragma once

#include <TovrelTesting/ScriptedResponse.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tovrel::testing {

/// Which part of a list an answer holds.
struct EnvelopePagination {
    std::int64_t limit;
    std::optional<std::string> next;

    EnvelopePagination(std::int64_t limit, std::optional<std::string> next);
};

/// A successful answer: the data, given as JSON, in its envelope.
std::string envelopeOf(std::string_view data, const std::optional<EnvelopePagination>& pagination = std::nullopt);

/// A refusal in the form of an envelope.
ScriptedResponse refusalEnvelope(int status, const std::string& code, const std::string& message);

} // namespace tovrel::testing
