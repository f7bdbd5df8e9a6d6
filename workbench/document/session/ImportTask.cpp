#include "workbench/document/session/ImportTask.h"

#include "platform/system/QorPaths.h"
#include "workbench/import/process/ImportProcess.h"

#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <cstring>
#include <utility>
#include <vector>

namespace qor::document {

namespace fs = std::filesystem;

namespace {

using import::ImportEnd;
using import::ImportOutcome;
using import::ImportProcess;
using import::ImportRequest;
using import::ProgressKind;
using import::ProgressLine;

constexpr int waitMs = 20;
constexpr std::size_t mostWarnings = 1000; ///< a model can be wrong in any number of places
constexpr int percentOfImport = 90;        ///< the rest is reading what it made
constexpr std::string_view folderPrefix = "qor-import-";

/// A folder for the file that an import makes, removed with it.
class ImportFolder {
public:
    ImportFolder() {
        std::string name = (fs::path(QorGetTempDirectory().Str()) /
                            (std::string(folderPrefix) + std::to_string(getpid()) + "-XXXXXX"))
                               .string();
        removeAbandonedFolders(fs::path(name).parent_path());
        if (mkdtemp(name.data()) != nullptr)
            path_ = name;
    }

    ~ImportFolder() {
        std::error_code ignored;
        if (!path_.empty())
            fs::remove_all(path_, ignored);
    }

    ImportFolder(const ImportFolder&) = delete;
    ImportFolder& operator=(const ImportFolder&) = delete;
    ImportFolder(ImportFolder&&) = delete;
    ImportFolder& operator=(ImportFolder&&) = delete;

    /// Empty when there is none.
    [[nodiscard]] const fs::path& path() const { return path_; }

private:
    /// A program that died in the middle of an import could not clean up.
    static void removeAbandonedFolders(const fs::path& parent) {
        std::error_code error;
        for (const auto& entry : fs::directory_iterator(parent, error)) {
            const std::string name = entry.path().filename().string();
            if (!name.starts_with(folderPrefix))
                continue;
            const int process = std::atoi(name.c_str() + folderPrefix.size());
            std::error_code ignored;
            if (process > 0 && kill(process, 0) != 0 && errno == ESRCH)
                fs::remove_all(entry.path(), ignored);
        }
    }

    fs::path path_;
};

ImportRequest
requestFor(const fs::path& model, const fs::path& target, const ImportOptions& options) {
    ImportRequest request;
    request.program = options.program;
    request.model = model;
    request.target = target;
    request.deflectionMm = options.deflectionMm;
    request.angleDeg = options.angleDeg;
    request.timeout = options.timeLimit;
    request.memoryBytes = options.memoryLimit;
    return request;
}

/// What a process has said and how it ended.
struct Run {
    ImportOutcome outcome;
    std::vector<std::string> warnings;
};

/// Runs the process to its end, or to a cancel.
Run runProcess(const ImportRequest& request, const WorkContext& context) {
    Run run;
    ImportProcess process([&](const ProgressLine& line) {
        if (line.kind == ProgressKind::Progress)
            context.report(static_cast<int>(std::lround(line.fraction * percentOfImport)),
                           line.stage);
        else if (line.kind == ProgressKind::Warning && run.warnings.size() < mostWarnings)
            run.warnings.push_back(line.text);
    });
    process.start(request);
    while (process.poll()) {
        pollfd ready{process.descriptor(), POLLIN, 0};
        if (::poll(&ready, 1, waitMs) > 0 && (ready.revents & POLLIN) == 0)
            usleep(1000); // the pipe is closed; the child is about to die
        if (context.stop().stop_requested())
            process.cancel();
    }
    run.outcome = *process.outcome();
    return run;
}

Result<LoadedDocument>
readImported(const fs::path& file, const fs::path& model, const WorkContext& context) {
    ReadDocumentOptions options;
    options.quickCheck = false; // the import has just written it
    options.stop = context.stop();
    options.progress = [&context](double fraction) {
        context.report(percentOfImport + static_cast<int>(fraction * (100 - percentOfImport)),
                       "open");
    };
    Result<LoadedDocument> loaded = readDocument(file, options);
    if (!loaded)
        return Failure{loaded.failure().kind,
                       model.string() +
                           ": what the import made cannot be read: " + loaded.failure().text};
    loaded.value().info.title = model.stem().string();
    return loaded;
}

/// A fault of the temporary file that the import makes is one of the model's import, too.
std::string naming(const fs::path& model, const std::string& text) {
    return text.starts_with(model.string()) ? text : model.string() + ": " + text;
}

} // namespace

Result<LoadedDocument>
importModel(const fs::path& model, const ImportOptions& options, const WorkContext& context) {
    const ImportFolder folder;
    if (folder.path().empty())
        return Failure{FaultKind::Machine,
                       model.string() + ": no folder for temporary files: " + std::strerror(errno)};
    const fs::path target = folder.path() / "import.qor";
    Run run = runProcess(requestFor(model, target, options), context);
    if (run.outcome.end == ImportEnd::Cancelled)
        return Failure{FaultKind::Input, cancelledText};
    if (run.outcome.end != ImportEnd::Done)
        return Failure{FaultKind::Input, naming(model, run.outcome.text)};
    Result<LoadedDocument> loaded = readImported(target, model, context);
    if (loaded)
        loaded.value().warnings = std::move(run.warnings);
    return loaded;
}

std::uint64_t memoryOfComputer() {
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long size = sysconf(_SC_PAGE_SIZE);
    return pages > 0 && size > 0
               ? static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(size)
               : 0;
}

} // namespace qor::document
