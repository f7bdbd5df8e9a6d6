#include "workbench/import/process/ImportProcess.h"

#include "workbench/document/product/ProductFile.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstring>
#include <vector>

namespace qor::import {

namespace {

constexpr int cannotStart = 127;
constexpr int pollStepMs = 50;

std::string numberText(double value) {
    std::array<char, 32> text{};
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), end};
}

std::vector<std::string> argumentsOf(const ImportRequest& request) {
    std::vector<std::string> words{request.program.string(), request.model.string(),
                                   request.target.string()};
    // A name that begins with a dash is a file all the same.
    for (std::size_t i = 1; i < words.size(); ++i)
        if (words[i].starts_with("-"))
            words[i].insert(0, "./");
    if (request.deflectionMm > 0)
        words.insert(words.end(), {"--deflection", numberText(request.deflectionMm)});
    if (request.angleDeg > 0)
        words.insert(words.end(), {"--angle", numberText(request.angleDeg)});
    return words;
}

void setLimit(int resource, rlim_t value) {
    const rlimit limit{value, value};
    setrlimit(static_cast<__rlimit_resource_t>(resource), &limit);
}

// Runs in the child between fork and exec, where only calls that are safe in a signal handler are
// allowed.
[[noreturn]] void
becomeChild(pid_t parent, char* const* arguments, int output, std::uint64_t memoryBytes) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) // gone before the line above
        _exit(cannotStart);
    dup2(output, STDOUT_FILENO);
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup2(nowhere, STDIN_FILENO);
    dup2(nowhere, STDERR_FILENO);
    setLimit(RLIMIT_CORE, 0);
    if (memoryBytes > 0)
        setLimit(RLIMIT_AS, memoryBytes);
    execv(arguments[0], arguments);
    _exit(cannotStart);
}

std::string crashClause(int signal, const std::string& stage) {
    return std::string("the import crashed (") + strsignal(signal) +
           (stage.empty() ? ")" : ") in the stage \"" + stage + "\"") + "; nothing was changed";
}

} // namespace

ImportProcess::~ImportProcess() {
    if (child_ > 0)
        stop(ImportEnd::Cancelled);
}

void ImportProcess::start(const ImportRequest& request) {
    request_ = request;
    start_ = std::chrono::steady_clock::now();
    std::vector<std::string> words = argumentsOf(request);
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    std::array<int, 2> pipe{};
    if (pipe2(pipe.data(), O_CLOEXEC) != 0)
        return finish(ImportEnd::Failed, std::string("no pipe: ") + std::strerror(errno));
    const pid_t self = getpid();
    child_ = fork();
    if (child_ == 0)
        becomeChild(self, arguments.data(), pipe[1], request.memoryBytes);
    close(pipe[1]);
    output_ = pipe[0];
    fcntl(output_, F_SETFL, O_NONBLOCK);
    if (child_ < 0)
        finish(ImportEnd::Failed,
               std::string("no process could be started: ") + std::strerror(errno));
}

bool ImportProcess::poll() {
    if (child_ <= 0)
        return false;
    drainOutput();
    if (isOverdue())
        stop(ImportEnd::TimedOut);
    else
        reap(false);
    return child_ > 0;
}

const ImportOutcome& ImportProcess::wait() {
    while (poll()) {
        pollfd ready{output_, POLLIN, 0};
        ::poll(&ready, 1, pollStepMs);
        // A pipe that its writer has closed is always ready; the child is about to die.
        if ((ready.revents & POLLIN) == 0 && (ready.revents & POLLHUP) != 0 && !isOverdue())
            reap(!killedFor_ && request_.timeout.count() == 0);
    }
    return *outcome_;
}

void ImportProcess::cancel() {
    if (child_ > 0)
        stop(ImportEnd::Cancelled);
}

bool ImportProcess::isOverdue() const {
    return request_.timeout.count() > 0 &&
           std::chrono::steady_clock::now() - start_ > request_.timeout;
}

void ImportProcess::drainOutput() {
    std::array<char, 4096> bytes{};
    ssize_t count = 0;
    while ((count = read(output_, bytes.data(), bytes.size())) > 0)
        parser_.feed({bytes.data(), static_cast<std::size_t>(count)},
                     [this](const ProgressLine& line) { take(line); });
}

void ImportProcess::take(const ProgressLine& line) {
    if (line.kind == ProgressKind::Done || line.kind == ProgressKind::Error) {
        last_ = line;
        return;
    }
    if (line.kind == ProgressKind::Progress)
        stage_ = line.stage;
    if (listener_)
        listener_(line);
}

void ImportProcess::stop(ImportEnd reason) {
    reap(false);
    if (child_ <= 0)
        return;
    killedFor_ = reason;
    kill(child_, SIGKILL);
    reap(true);
}

void ImportProcess::reap(bool block) {
    int status = 0;
    if (waitpid(child_, &status, block ? 0 : WNOHANG) != child_)
        return;
    child_ = -1;
    drainOutput();
    finish(status);
}

void ImportProcess::finish(int status) {
    const bool exited = WIFEXITED(status);
    const int code = exited ? WEXITSTATUS(status) : 0;
    if (exited && code == 0 && last_ && last_->kind == ProgressKind::Done)
        return finish(ImportEnd::Done, {});
    if (killedFor_ == ImportEnd::Cancelled)
        return finish(ImportEnd::Cancelled, "the import was cancelled");
    if (killedFor_ == ImportEnd::TimedOut)
        return finish(ImportEnd::TimedOut, "the import took longer than " +
                                               std::to_string(request_.timeout.count() / 1000) +
                                               " s and was stopped");
    if (last_ && last_->kind == ProgressKind::Error)
        return finish(ImportEnd::Failed, {});
    if (exited && code == cannotStart)
        return finish(ImportEnd::Failed,
                      "the program " + request_.program.string() + " could not be started");
    if (exited)
        return finish(ImportEnd::Crashed, "the import ended without a result (exit code " +
                                              std::to_string(code) + "); nothing was changed");
    finish(ImportEnd::Crashed, crashClause(WTERMSIG(status), stage_));
}

void ImportProcess::finish(ImportEnd end, const std::string& clause) {
    if (output_ >= 0)
        close(output_);
    output_ = -1;
    child_ = -1;
    ImportOutcome outcome;
    outcome.end = end;
    if (!clause.empty())
        outcome.text = request_.model.string() + ": " + clause;
    else if (end == ImportEnd::Failed)
        outcome.text = last_->text;
    if (end == ImportEnd::Done)
        outcome.summary = *last_;
    else
        document::removeAbandoned(request_.target);
    outcome_ = std::move(outcome);
}

} // namespace qor::import
