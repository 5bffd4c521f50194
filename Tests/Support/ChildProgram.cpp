#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <Support/ChildProgram.hpp>
#include <sys/wait.h>
#include <unistd.h>

namespace tovrel::tests {

namespace {

std::array<int, 2> makePipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    return ends;
}

/// The environment of this process with the additions in front of what they replace.
std::vector<std::string> environmentWith(const std::vector<std::pair<std::string, std::string>>& additions) {
    std::vector<std::string> variables;
    for (const auto& [name, value] : additions) {
        variables.push_back(name + "=" + value);
    }
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string text(*variable);
        bool isReplaced = false;
        for (const auto& [name, value] : additions) {
            isReplaced = isReplaced || text.starts_with(name + "=");
        }
        if (!isReplaced) {
            variables.push_back(text);
        }
    }
    return variables;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace

ChildProgram::ChildProgram(const std::vector<std::string>& command, const std::string& input,
                           const std::vector<std::pair<std::string, std::string>>& environment) {
    const std::array<int, 2> in = makePipe();
    const std::array<int, 2> out = makePipe();
    std::vector<std::string> words = command;
    std::vector<std::string> variables = environmentWith(environment);
    const std::vector<char*> arguments = pointersTo(words);
    const std::vector<char*> assignments = pointersTo(variables);
    process_ = ::fork();
    if (process_ == 0) {
        ::dup2(in[0], STDIN_FILENO);
        ::dup2(out[1], STDOUT_FILENO);
        ::execvpe(arguments[0], arguments.data(), assignments.data());
        ::_exit(127);
    }
    ::close(in[0]);
    ::close(out[1]);
    output_ = out[0];
    // Inputs are short: they fit into the pipe.
    const bool isWritten = ::write(in[1], input.data(), input.size()) == static_cast<ssize_t>(input.size());
    ::close(in[1]);
    if (process_ < 0 || !isWritten) {
        throw std::runtime_error("could not start " + command.front());
    }
}

ChildProgram::~ChildProgram() {
    kill();
    ::close(output_);
}

void ChildProgram::signal(int number) const {
    ::kill(process_, number);
}

void ChildProgram::kill() {
    if (process_ > 0) {
        signal(SIGKILL);
        wait();
    }
}

std::pair<std::string, bool> ChildProgram::finish() {
    std::string output;
    std::array<char, 4096> buffer{};
    ssize_t count = 0;
    while ((count = ::read(output_, buffer.data(), buffer.size())) > 0) {
        output.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return {output, wait()};
}

std::string ChildProgram::readLine() {
    std::string line;
    char character = 0;
    while (::read(output_, &character, 1) == 1 && character != '\n') {
        line.push_back(character);
    }
    return line;
}

bool ChildProgram::wait() {
    int status = -1;
    ::waitpid(process_, &status, 0);
    process_ = -1;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace tovrel::tests
