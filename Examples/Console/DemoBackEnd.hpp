#pragma once

#include <TovrelTesting/LocalBackEnd.hpp>

#include <memory>
#include <string>

/// The host that the demo's client believes to talk to.
inline const std::string demoHost = "items.tovrel.example";

/// A back end with a few items, for `demoHost`.
std::unique_ptr<tovrel::testing::LocalBackEnd> startDemoBackEnd();
