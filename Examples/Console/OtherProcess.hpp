#pragma once

#include <string>
#include <vector>

/// Runs this program again and waits for it. Throws `std::runtime_error` when it fails.
void runAgain(std::vector<std::string> arguments);
