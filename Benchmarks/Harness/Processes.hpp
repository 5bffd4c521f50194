#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace tovrel::benchmarks {

/// The first and the last core that this process may use; with one core both are that.
enum class Core { first, last };

void pinToCore(Core core);

/// A running copy of this program and the ends of the pipes to it.
struct Child {
    pid_t process = 0;
    int input = -1;
    int output = -1;

    Child() = default;
};

Child startSelf(const std::vector<std::string>& arguments, Core core);

/// Everything up to the end, which closes the descriptor.
std::string readAll(int descriptor);

/// What a copy of this program writes before it ends; throws when it fails.
std::string runSelf(const std::vector<std::string>& arguments);

} // namespace tovrel::benchmarks
