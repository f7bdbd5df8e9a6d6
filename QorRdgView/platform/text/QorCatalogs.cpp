#include "platform/text/QorCatalogs.h"

#include "platform/text/QorCatalogLanguages.h"
#include "platform/text/QorCatalogStore.h"
#include "platform/text/QorPathList.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace {

struct State {
    QorUnicodeString programDirectory;
    std::string path;
    std::uint64_t count = 1;
};

State& TheState() {
    static State state;
    return state;
}

std::string GetResourcePath(const std::string& iDirectory, const std::string& iName) {
    return iDirectory + "/resources/" + iName + ".QorRsc";
}

std::vector<std::string> ListResourceFiles(const std::string& iName) {
    std::vector<std::string> files;
    for (const std::string& directory : QorSplitPathList(QorGetCatalogPath()))
        files.push_back(GetResourcePath(directory, iName));
    return files;
}

/// Adds the messages of some directories: a translation in any of them before the plain text.
void AddMessageFiles(std::vector<std::string>& ioFiles,
                     const std::vector<std::string>& iDirectories,
                     const std::string& iName) {
    std::vector<std::string> folders = QorFindCatalogLanguages();
    for (std::string& folder : folders)
        folder = "/messages/" + folder + "/";
    folders.emplace_back("/messages/");
    for (const std::string& folder : folders)
        for (const std::string& directory : iDirectories)
            ioFiles.push_back(directory + folder + iName + ".QorMsg");
}

bool HasResource(const std::string& iName) {
    for (const std::string& file : ListResourceFiles(iName))
        if (access(file.c_str(), F_OK) == 0)
            return true;
    return false;
}

std::vector<std::string> ListMessageFiles(const std::string& iName) {
    std::vector<std::string> files;
    AddMessageFiles(files, QorSplitPathList(QorGetCatalogPath()), iName);
    const std::string& program = QorCatalogs::GetProgramDirectory().Str();
    if (!program.empty() && !HasResource(iName))
        AddMessageFiles(files, {program}, iName);
    return files;
}

} // namespace

QorCatalogStore& QorGetMessageStore() {
    static QorCatalogStore store(&ListMessageFiles, false);
    return store;
}

QorCatalogStore& QorGetResourceStore() {
    static QorCatalogStore store(&ListResourceFiles, true);
    return store;
}

std::uint64_t QorGetCatalogState() {
    State& state = TheState();
    const char* path = std::getenv("QorStartupPath");
    const std::string_view now = path != nullptr ? path : "";
    if (now != state.path) {
        state.path = now;
        ++state.count;
    }
    return state.count;
}

const std::string& QorGetCatalogPath() {
    return TheState().path;
}

void QorCatalogs::SetProgramDirectory(const QorUnicodeString& iDirectory) {
    TheState().programDirectory = iDirectory;
    Refresh();
}

const QorUnicodeString& QorCatalogs::GetProgramDirectory() {
    return TheState().programDirectory;
}

void QorCatalogs::Refresh() {
    ++TheState().count;
}

void QorCatalogs::Clear() {
    QorGetMessageStore().Clear();
    QorGetResourceStore().Clear();
}
