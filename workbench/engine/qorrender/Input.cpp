#include "workbench/engine/qorrender/Input.h"

#include "workbench/document/product/ProductFile.h"
#include "workbench/engine/qorrender/Failure.h"
#include "workbench/engine/qorrender/Interrupt.h"
#include "workbench/import/process/ImportProcess.h"

#include <poll.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>

namespace qor::render {

namespace {

namespace fs = std::filesystem;

using import::ImportEnd;
using import::ImportProcess;
using import::ImportRequest;
using import::ProgressKind;
using import::ProgressLine;

/// A folder of our own, removed with all that is in it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::error_code error;
        const char* const asked = std::getenv("TMPDIR");
        const fs::path parent = asked != nullptr ? asked : fs::temp_directory_path(error);
        std::string name = (parent / "qorrender-XXXXXX").string();
        if (error || mkdtemp(name.data()) == nullptr)
            throw Failure("no temporary folder can be made: " + name + ": " +
                          (error ? error.message() : std::strerror(errno)));
        path_ = name;
    }

    ~TemporaryFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    TemporaryFolder(TemporaryFolder&&) = delete;
    TemporaryFolder& operator=(TemporaryFolder&&) = delete;

    const fs::path& path() const { return path_; }

private:
    fs::path path_;
};

/// Documents begin as every SQLite file does.
bool isDocument(const fs::path& file) {
    constexpr std::string_view signature = "SQLite format 3";
    std::string head(signature.size(), '\0');
    std::ifstream(file, std::ios::binary)
        .read(head.data(), static_cast<std::streamsize>(head.size()));
    return head == signature;
}

fs::path importProgram() {
    std::error_code error;
    const fs::path self = fs::read_symlink("/proc/self/exe", error);
    if (error)
        throw Failure("the program cannot find its own folder: " + error.message());
    return self.parent_path() / "qorimport";
}

document::Product readDocument(const fs::path& file, Progress& progress) {
    document::ReadOptions options;
    options.progress = [&progress](double fraction) {
        checkInterrupt();
        progress.show("read", fraction);
    };
    document::Result<document::Product> product = document::readProduct(file, options);
    checkInterrupt();
    if (!product)
        throw Failure(product.failure().text);
    return std::move(product.value());
}

void importModel(const fs::path& model, const fs::path& target, Progress& progress) {
    constexpr int turnMs = 50;
    ImportProcess child([&progress](const ProgressLine& line) {
        if (line.kind == ProgressKind::Warning)
            progress.warn(line.text);
        else
            progress.show("import", line.fraction);
    });
    ImportRequest request;
    request.program = importProgram();
    request.model = model;
    request.target = target;
    child.start(request);
    while (child.poll()) {
        pollfd waiting{child.descriptor(), POLLIN, 0};
        ::poll(&waiting, 1, turnMs);
        checkInterrupt(); // the child dies with its object
    }
    checkInterrupt();
    if (child.wait().end != ImportEnd::Done)
        throw Failure(child.wait().text);
}

} // namespace

document::Product readInput(const fs::path& file, Progress& progress) {
    std::error_code error;
    if (!fs::is_regular_file(file, error))
        throw Failure(file.string() + ": " + (error ? error.message() : "this is no file"));
    if (isDocument(file))
        return readDocument(file, progress);
    const TemporaryFolder folder;
    const fs::path document = folder.path() / "model.qor";
    importModel(file, document, progress);
    return readDocument(document, progress);
}

} // namespace qor::render
