#pragma once

/// Marks a type or function that crosses the boundary of a shared library.
#if defined(_WIN32)
#define TOVREL_EXPORT
#else
#define TOVREL_EXPORT __attribute__((visibility("default")))
#endif
