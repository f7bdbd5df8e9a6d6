#include "platform/text/QorCatalogs.h"

#include "platform/text/QorCatalogLanguages.h"
#include "platform/text/QorCatalogStore.h"
#include "platform/text/QorMsgCatalog.h"
#include "platform/text/QorPathList.h"
#include "platform/text/QorRscCatalog.h"

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

QorCatalogStore& Messages() {
    static QorCatalogStore store(&ListMessageFiles, false);
    return store;
}

QorCatalogStore& Resources() {
    static QorCatalogStore store(&ListResourceFiles, true);
    return store;
}

template <class Text>
int BuildValue(const QorString& iCatalog, const QorString& iKey, Text& oValue) {
    const std::string* value = Resources().Find(iCatalog.Str(), iKey.Str());
    if (value == nullptr)
        return 0;
    oValue = Text(*value);
    return 1;
}

/// The text with its parameters in place.
QorUnicodeString Substitute(std::string_view iText, const QorMsgParameters& iParameters) {
    std::string result;
    for (std::size_t i = 0; i < iText.size(); ++i) {
        const auto isMark = [&](std::size_t iAt) {
            return iAt + 2 < iText.size() && iText[iAt] == '/' && iText[iAt + 1] == 'P' &&
                   iText[iAt + 2] >= '1' && iText[iAt + 2] <= '9';
        };
        const bool escaped = iText[i] == '/' && isMark(i + 1);
        if (escaped) {
            result += iText.substr(i + 1, 3);
            i += 3;
        } else if (isMark(i)) {
            const auto number = static_cast<std::size_t>(iText[i + 2] - '1');
            if (number < iParameters.size())
                result += iParameters[number].Str();
            i += 2;
        } else {
            result += iText[i];
        }
    }
    return QorUnicodeString(std::move(result));
}

} // namespace

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
    Messages().Clear();
    Resources().Clear();
}

const std::string* QorMsgCatalog::FindMessage(std::string_view iCatalog, std::string_view iKey) {
    return Messages().Find(iCatalog, iKey);
}

QorUnicodeString QorMsgCatalog::BuildMessage(const QorString& iCatalog,
                                             const QorString& iKey,
                                             const QorMsgParameters& iParameters) {
    const std::string* text = FindMessage(iCatalog.Str(), iKey.Str());
    return text != nullptr ? Substitute(*text, iParameters) : QorUnicodeString(iKey.Str());
}

QorUnicodeString QorMsgCatalog::BuildMessage(const QorString& iCatalog,
                                             const QorString& iKey,
                                             const QorMsgParameters& iParameters,
                                             const QorUnicodeString& iDefault) {
    const std::string* text = FindMessage(iCatalog.Str(), iKey.Str());
    return Substitute(text != nullptr ? *text : iDefault.Str(), iParameters);
}

int QorRscCatalog::BuildResource(const QorString& iCatalog,
                                 const QorString& iKey,
                                 QorString& oValue) {
    return BuildValue(iCatalog, iKey, oValue);
}

int QorRscCatalog::BuildResource(const QorString& iCatalog,
                                 const QorString& iKey,
                                 QorUnicodeString& oValue) {
    return BuildValue(iCatalog, iKey, oValue);
}
