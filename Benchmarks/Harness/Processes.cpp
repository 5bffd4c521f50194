#include <array>
#include <fcntl.h>
#include <Harness/Processes.hpp>
#include <sched.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace tovrel::benchmarks {

namespace {

/// What the process was allowed before anything was pinned.
const cpu_set_t& allowedCores() {
    static const cpu_set_t cores = [] {
        cpu_set_t set;
        CPU_ZERO(&set);
        sched_getaffinity(0, sizeof set, &set);
        return set;
    }();
    return cores;
}

} // namespace

void pinToCore(Core core) {
    const cpu_set_t& allowed = allowedCores();
    cpu_set_t chosen;
    CPU_ZERO(&chosen);
    for (std::size_t index = 0; index < CPU_SETSIZE; ++index) {
        if (CPU_ISSET(index, &allowed)) {
            CPU_ZERO(&chosen);
            CPU_SET(index, &chosen);
            if (core == Core::first) {
                break;
            }
        }
    }
    sched_setaffinity(0, sizeof chosen, &chosen);
}

Child startSelf(const std::vector<std::string>& arguments, Core core) {
    std::vector<char*> argv = {const_cast<char*>("tovrel_benchmarks")};
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);

    std::array<int, 2> in{};
    std::array<int, 2> out{};
    if (pipe2(in.data(), O_CLOEXEC) != 0 || pipe2(out.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    allowedCores();
    Child child;
    child.process = fork();
    if (child.process < 0) {
        throw std::runtime_error("no process");
    }
    if (child.process == 0) {
        dup2(in[0], STDIN_FILENO);
        dup2(out[1], STDOUT_FILENO);
        pinToCore(core);
        execv("/proc/self/exe", argv.data());
        _exit(127);
    }
    close(in[0]);
    close(out[1]);
    child.input = in[1];
    child.output = out[0];
    return child;
}

std::string readAll(int descriptor) {
    std::string text;
    std::array<char, 4096> buffer;
    for (ssize_t count = 0; (count = read(descriptor, buffer.data(), buffer.size())) > 0;) {
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    close(descriptor);
    return text;
}

std::string runSelf(const std::vector<std::string>& arguments) {
    const Child child = startSelf(arguments, Core::first);
    std::string text = readAll(child.output);
    close(child.input);
    int status = 0;
    waitpid(child.process, &status, 0);
    if (status != 0) {
        throw std::runtime_error("a measuring process failed");
    }
    return text;
}

} // namespace tovrel::benchmarks
