#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

/// A program that runs as a child with its output caught; killed at the end if it still runs.
class ChildProgram {
public:
    /// Starts \p program with \p arguments, and with the variables "NAME=VALUE" set besides the
    /// test's own environment; "NAME" alone unsets one.
    ChildProgram(const std::string& program,
                 const std::vector<std::string>& arguments,
                 const std::vector<std::string>& environment = {});
    ~ChildProgram();
    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;

    void send(int signal) const;

    /// Waits for its end and gives the exit code, or minus the signal that killed it. Throws after
    /// half a minute.
    int wait();

    /// All that it printed; after wait.
    [[nodiscard]] const std::string& output() const { return output_; }

    [[nodiscard]] const std::string& errors() const { return errors_; }

private:
    void readAll();

    pid_t process_ = -1;
    int outputEnd_ = -1;
    int errorEnd_ = -1;
    std::string output_;
    std::string errors_;
};
