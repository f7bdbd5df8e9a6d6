#include "tests/app/ChildProgram.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <stdexcept>

namespace {

struct Pipe {
    Pipe() {
        if (pipe2(ends, O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe");
    }

    int ends[2] = {-1, -1};
};

void setVariables(const std::vector<std::string>& variables) {
    for (const std::string& one : variables) {
        const auto equals = one.find('=');
        if (equals == std::string::npos)
            unsetenv(one.c_str());
        else
            setenv(one.substr(0, equals).c_str(), one.substr(equals + 1).c_str(), 1);
    }
}

} // namespace

ChildProgram::ChildProgram(const std::string& program,
                           const std::vector<std::string>& arguments,
                           const std::vector<std::string>& environment) {
    const Pipe out;
    const Pipe err;
    std::vector<char*> list{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments)
        list.push_back(const_cast<char*>(argument.c_str()));
    list.push_back(nullptr);
    process_ = fork();
    if (process_ < 0)
        throw std::runtime_error("cannot fork");
    if (process_ == 0) {
        dup2(out.ends[1], STDOUT_FILENO);
        dup2(err.ends[1], STDERR_FILENO);
        setVariables(environment);
        execv(program.c_str(), list.data());
        _exit(127);
    }
    close(out.ends[1]);
    close(err.ends[1]);
    outputEnd_ = out.ends[0];
    errorEnd_ = err.ends[0];
}

ChildProgram::~ChildProgram() {
    if (process_ > 0) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    for (const int end : {outputEnd_, errorEnd_})
        if (end >= 0)
            close(end);
}

void ChildProgram::send(int signal) const {
    kill(process_, signal);
}

void ChildProgram::readAll() {
    constexpr int patienceMs = 30'000;
    pollfd ends[] = {{outputEnd_, POLLIN, 0}, {errorEnd_, POLLIN, 0}};
    std::string* const texts[] = {&output_, &errors_};
    while (ends[0].fd >= 0 || ends[1].fd >= 0) {
        if (poll(ends, 2, patienceMs) == 0)
            throw std::runtime_error("the program neither prints nor ends");
        for (int i = 0; i < 2; ++i) {
            if (ends[i].fd < 0 || ends[i].revents == 0)
                continue;
            char bytes[4096];
            const ssize_t count = read(ends[i].fd, bytes, sizeof bytes);
            if (count > 0)
                texts[i]->append(bytes, static_cast<std::size_t>(count));
            else if (count == 0 || errno != EINTR)
                ends[i].fd = -1;
        }
    }
}

int ChildProgram::wait() {
    readAll();
    int status = 0;
    waitpid(process_, &status, 0);
    process_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}
