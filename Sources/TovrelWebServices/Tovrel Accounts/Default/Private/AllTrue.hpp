#pragma once

#include <Platform/Concurrency/Async.hpp>

#include <vector>

namespace tovrel::detail {

/// Asks all questions at once, on the pool. The first that is answered with no, or fails, decides and cancels the
/// others; the answer comes when all have ended.
Async<bool> allTrue(std::vector<Async<bool>> questions);

} // namespace tovrel::detail
