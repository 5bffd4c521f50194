#pragma once

#include <Platform/System/Logger.hpp>

#include <memory>

namespace tovrel::detail {

/// The journal where its socket exists, else standard error: without a journal its client library reports success and
/// loses the record.
std::shared_ptr<SystemLogSink> makeDefaultSystemLogSink();

} // namespace tovrel::detail
