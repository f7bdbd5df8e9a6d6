#pragma once

#include "platform/scene/QorIRscCamera.h"
#include "platform/system/QorQueueLoop.h"
#include "tests/document/product/SampleProduct.h"
#include "tests/support/QorTestApplication.h"
#include "workbench/document/session/DocumentStore.h"

#include <sys/resource.h>

#include <csignal>
#include <fstream>
#include <optional>

namespace qor::document::testing {

/// A document of the sample product, as an import gives it.
inline Document_var sampleDocument() {
    return QorMake<Document>(LoadedDocument{ProductReps(sampleProduct()), {}, {}});
}

/// Adds an object of the scene.
inline void addObject(Document& document, const char* kind, const char* name = "") {
    EXPECT_TRUE(document.scene()->CreateObject(kind, name));
}

/// Lets every write beyond a size fail, as on a full disk, while it lives.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, SIG_DFL);
    }

    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    FileSizeLimit(FileSizeLimit&&) = delete;
    FileSizeLimit& operator=(FileSizeLimit&&) = delete;

private:
    rlimit before_{};
};

/// A program with a loop that workers can wake, and folders of its own for settings, recovery and
/// files.
class DocumentTest : public QorTestApplicationOn<QorQueueLoop> {
protected:
    [[nodiscard]] std::filesystem::path file(const std::string& name) const {
        return directory.GetPath(name);
    }

    [[nodiscard]] StoreOptions options() const {
        StoreOptions made;
        const char* program = std::getenv("QOR_IMPORT_PROGRAM");
        made.import.program = program != nullptr ? program : "qorimport";
        made.recoveryFolder = file("recovery");
        return made;
    }

    /// Turns the loop until \p done; false after half a minute.
    template <typename Done>
    bool runUntil(const Done& done) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!done())
            if (!loop.RunOneTurn(std::chrono::milliseconds(50)) &&
                std::chrono::steady_clock::now() > end)
                return false;
        return true;
    }

    /// The outcome of long work.
    template <typename T, typename Begin>
    Result<T> wait(const Begin& begin) {
        auto outcome = std::make_shared<std::optional<Result<T>>>();
        begin([outcome](Result<T> result) { outcome->emplace(std::move(result)); });
        if (!runUntil([&] { return outcome->has_value(); }))
            return Failure{FaultKind::Internal, "no outcome came"};
        return std::move(**outcome);
    }

    Result<Document_var> open(DocumentStore& store, const std::filesystem::path& path) {
        return wait<Document_var>(
            [&](DocumentStore::Opened done) { store.openAsync(path, {}, std::move(done)); });
    }

    Result<Done> save(DocumentStore& store, Document& document, const std::filesystem::path& path) {
        return wait<Done>([&](DocumentStore::Finished done) {
            store.saveAsync(document, path, {}, std::move(done));
        });
    }

    /// Writes the sample product as a document file, with a camera of the scene.
    std::filesystem::path writeSample(const std::string& name) const {
        const Document_var document = sampleDocument();
        const Result<Done> written = writeDocument(file(name), document->takeSnapshot());
        EXPECT_TRUE(written) << written.failure().text;
        return file(name);
    }

    /// A model of one triangle.
    std::filesystem::path writeStl(const std::string& name) const {
        return directory.Write(name, "solid one\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\n"
                                     "vertex 10 0 0\nvertex 0 20 0\nendloop\nendfacet\n"
                                     "endsolid one\n");
    }

private:
    QorScopedVariable data{"XDG_DATA_HOME", directory.GetPath("data")};
};

} // namespace qor::document::testing
