#pragma once

#include <TovrelTesting/ReceivedRequest.hpp>
#include <TovrelTesting/ScriptedResponse.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace tovrel::testing {

/// How many elements a page has.
struct PageSizes {
    std::int64_t byDefault;
    std::int64_t largest;

    PageSizes(std::int64_t defaultSize, std::int64_t largestSize) : byDefault(defaultSize), largest(largestSize) {}
};

/// The page of the list that the request asks for.
ScriptedResponse pageAnswer(const std::vector<std::string>& elements, const PageSizes& sizes,
                            const ReceivedRequest& request);

} // namespace tovrel::testing
