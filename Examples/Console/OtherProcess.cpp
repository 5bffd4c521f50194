#include "OtherProcess.hpp"

#include <iostream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

void runAgain(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "console_demo");
    std::vector<char*> pointers;
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    std::cout.flush();
    const pid_t child = fork();
    if (child == 0) {
        execv("/proc/self/exe", pointers.data());
        _exit(127);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || status != 0) {
        throw std::runtime_error("the other process failed");
    }
}
