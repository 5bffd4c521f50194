#pragma once

#include <csignal>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

namespace tovrel::tests {

/// A program that runs beside the test and is killed with this object.
class ChildProgram {
public:
    /// Starts a program, found as a shell would, with `input` to read and these additions to the environment.
    explicit ChildProgram(const std::vector<std::string>& command, const std::string& input = {},
                          const std::vector<std::pair<std::string, std::string>>& environment = {});
    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;
    ~ChildProgram();

    void signal(int number) const;
    /// Kills it and waits for its end.
    void kill();
    /// What it wrote up to its end, and whether that was a good one.
    std::pair<std::string, bool> finish();
    /// The next line that it writes.
    std::string readLine();

private:
    bool wait();

    pid_t process_ = -1;
    int output_ = -1;
};

} // namespace tovrel::tests
