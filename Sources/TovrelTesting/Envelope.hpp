#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelTesting/ScriptedResponse.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tovrel::testing {

/// Which part of a list an answer holds.
struct TOVREL_EXPORT EnvelopePagination {
    /// How many elements a page has at most.
    std::int64_t limit;
    /// What asks for the next page; absent on the last one.
    std::optional<std::string> next;

    EnvelopePagination(std::int64_t limit, std::optional<std::string> next);
};

/// An answer of the API: `data`, which is JSON, in the envelope of a success. Without data only the envelope.
TOVREL_EXPORT ScriptedResponse envelope(const std::optional<std::string>& data,
                                        const std::optional<EnvelopePagination>& pagination = std::nullopt);

/// A refusal of the API: an envelope without data.
TOVREL_EXPORT ScriptedResponse refusalEnvelope(int status, const std::string& code, const std::string& message);

} // namespace tovrel::testing
