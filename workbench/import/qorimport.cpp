// qorimport MODEL OUT.qor [--deflection MM] [--angle DEG]: reads a model file into a document file.
// Progress, warnings and the result are JSON lines on the standard output (process/ProgressLine.h).
// The document appears under its name when it is whole. Exit codes: 0 done, 1 failed, 2 wrong
// usage.
#include "workbench/document/product/ProductFile.h"
#include "workbench/document/product/ProductQuery.h"
#include "workbench/import/model/CommandLine.h"
#include "workbench/import/model/CrashLine.h"
#include "workbench/import/model/ModelReader.h"
#include "workbench/import/process/ProgressLine.h"

#include <pthread.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <new>
#include <string>

namespace {

using namespace qor;
using import::CommandLine;
using import::CrashLine;
using import::ErrorKind;
using import::ImportReport;
using import::ProgressKind;
using import::ProgressLine;
using import::readModel;

enum ExitCode { done = 0, failed = 1, usage = 2 };

// Deeply nested assemblies recurse deeply in the libraries that read them; pages that are not used
// cost nothing.
constexpr std::size_t stackBytes = std::size_t{256} << 20;

// Progress lines go to the standard output as it was at the start; what libraries print there goes
// to the error output, so that it cannot tear a line apart.
class LineOutput {
public:
    LineOutput() : file_(fdopen(dup(STDOUT_FILENO), "w")) { dup2(STDERR_FILENO, STDOUT_FILENO); }

    ~LineOutput() { std::fclose(file_); }

    [[nodiscard]] int descriptor() const { return fileno(file_); }

    LineOutput(const LineOutput&) = delete;
    LineOutput& operator=(const LineOutput&) = delete;
    LineOutput(LineOutput&&) = delete;
    LineOutput& operator=(LineOutput&&) = delete;

    void write(const ProgressLine& line) {
        const std::string text = import::formatProgressLine(line) + "\n";
        std::fwrite(text.data(), 1, text.size(), file_);
        std::fflush(file_);
    }

private:
    std::FILE* file_;
};

ErrorKind errorKindOf(document::FaultKind kind) {
    if (kind == document::FaultKind::Input)
        return ErrorKind::Input;
    return kind == document::FaultKind::Machine ? ErrorKind::Machine : ErrorKind::Internal;
}

ProgressLine errorLine(const document::Failure& failure) {
    ProgressLine line;
    line.kind = ProgressKind::Error;
    line.error = errorKindOf(failure.kind);
    line.text = failure.text;
    return line;
}

ProgressLine doneLine(const document::Product& product,
                      const ImportReport& report,
                      std::chrono::steady_clock::time_point start) {
    ProgressLine line;
    line.kind = ProgressKind::Done;
    line.nodes = product.nodes.size();
    for (const document::Part& part : product.parts)
        line.parts += part.mesh != document::none ? 1 : 0;
    line.triangles = document::instancedTriangleCount(product);
    line.librarySeconds = report.librarySeconds();
    line.totalSeconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return line;
}

class Import {
public:
    explicit Import(CommandLine command) : command_(std::move(command)) {}

    int run() {
        document::Result<document::Product> product =
            readModel(command_.model, command_.settings, report_);
        if (!product)
            return fail(product.failure());
        report_.enter("write", writeFrom, 1);
        const auto written =
            document::writeProduct(command_.target, product.value(),
                                   [this](double fraction) { report_.advance(fraction); });
        if (!written)
            return fail(written.failure());
        output_.write(doneLine(product.value(), report_, start_));
        return done;
    }

private:
    static constexpr double writeFrom = 0.93;

    int fail(const document::Failure& failure) {
        output_.write(errorLine(failure));
        std::fprintf(stderr, "%s\n", failure.text.c_str());
        return failed;
    }

    void progress(const std::string& stage, double fraction) {
        ProgressLine line;
        line.stage = stage;
        line.fraction = fraction;
        output_.write(line);
        if (stage != stage_) {
            stage_ = stage;
            prepareForCrash();
        }
    }

    void warning(const std::string& text) {
        ProgressLine line;
        line.kind = ProgressKind::Warning;
        line.text = command_.model.string() + ": " + text;
        output_.write(line);
        lastWarning_ = text;
        prepareForCrash();
    }

    void prepareForCrash() {
        const std::string before = lastWarning_.empty() ? "it is damaged" : lastWarning_;
        const document::Failure failure{document::FaultKind::Input,
                                        command_.model.string() + ": " + before +
                                            "; what reads it crashed in the stage \"" + stage_ +
                                            "\""};
        crashLine_.set(import::formatProgressLine(errorLine(failure)) + "\n");
    }

    CommandLine command_;
    LineOutput output_;
    CrashLine crashLine_{output_.descriptor(), failed};
    std::string stage_;
    std::string lastWarning_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    ImportReport report_{
        [this](const std::string& stage, double fraction) { progress(stage, fraction); },
        [this](const std::string& text) {
            warning(text);
        }};
};

struct Task {
    CommandLine command;
    int exitCode = failed;
};

void* runTask(void* argument) {
    auto* task = static_cast<Task*>(argument);
    task->exitCode = Import(task->command).run();
    return nullptr;
}

// Runs the import on a thread with a large stack; on the main one if there is no memory for that.
int runWithLargeStack(Task& task) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, stackBytes);
    pthread_t thread = 0;
    if (pthread_create(&thread, &attributes, runTask, &task) == 0)
        pthread_join(thread, nullptr);
    else
        runTask(&task);
    pthread_attr_destroy(&attributes);
    return task.exitCode;
}

} // namespace

int main(int argc, char** argv) {
    const import::ParsedCommandLine parsed = import::parseCommandLine(argc, argv);
    if (!parsed.command) {
        std::fputs(parsed.message.c_str(), parsed.exitCode == 0 ? stdout : stderr);
        return parsed.exitCode == 0 ? done : usage;
    }
    Task task{*parsed.command};
    const int code = runWithLargeStack(task);
    // The libraries' own destructors take seconds on large models and free what the system frees
    // anyway.
    std::fflush(nullptr);
    _exit(code);
}
