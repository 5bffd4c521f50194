// The demo: everything that the library does so far, against local back ends that it starts itself.

#include "CacheDemo.hpp"
#include "HttpDemo.hpp"
#include "Job/JobDemo.hpp"
#include "Job/StoredLogin.hpp"
#include "SignIn/SignInDemo.hpp"

#include <cstdint>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr const char* usage = "usage: console_demo [job [DIRECTORY] | http | sign-in]\n";

/// What outlives the demo lies beside it.
std::filesystem::path defaultDirectory() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / "state";
}

int run(const std::vector<std::string>& arguments) {
    const std::string_view part = arguments.empty() ? std::string_view() : arguments.front();
    if (arguments.empty()) {
        demonstrateJob(defaultDirectory());
        demonstrateHttp();
    } else if (part == "job" && arguments.size() <= 2) {
        demonstrateJob(arguments.size() == 2 ? std::filesystem::path(arguments[1]) : defaultDirectory());
    } else if (part == "http" && arguments.size() == 1) {
        demonstrateHttp();
    } else if (part == "sign-in" && arguments.size() == 1) {
        demonstrateSignIn();
    } else if (part == "read-cache" && arguments.size() == 2) {
        readCacheOfAnotherProcess(arguments[1]);
        return 0;
    } else if (part == "use-login" && arguments.size() == 3) {
        useLoginOfAnotherProcess(arguments[1], static_cast<std::uint16_t>(std::stoi(arguments[2])));
        return 0;
    } else {
        std::cerr << usage;
        return 2;
    }
    std::cout << "\nDone.\n";
    return 0;
}

} // namespace

int main(int count, char** arguments) {
    try {
        return run(std::vector<std::string>(arguments + 1, arguments + count));
    } catch (const std::exception& error) {
        std::cerr << "The demo failed: " << error.what() << '\n';
        return 1;
    }
}
