#pragma once

/// @file
/// All of TovrelTesting.

#include <TovrelTesting/ManualClock.hpp>
