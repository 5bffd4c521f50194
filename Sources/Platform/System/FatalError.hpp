#pragma once

#include <Platform/System/Export.hpp>

#include <string_view>

namespace tovrel {

/// Reports a programming error on standard error and aborts the process.
[[noreturn]] TOVREL_EXPORT void fatalError(std::string_view message) noexcept;

} // namespace tovrel
