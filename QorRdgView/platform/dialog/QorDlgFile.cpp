#include "platform/dialog/QorDlgFile.h"

#include <filesystem>

QorImplementClass(QorDlgFile, QorDlgDialog)
QorImplementClass(QorDlgStdFile, QorDlgFile)

namespace {

QorUnicodeString CurrentDirectory() {
    std::error_code failed;
    const std::filesystem::path directory = std::filesystem::current_path(failed);
    return failed ? "/" : directory.string();
}

} // namespace

QorDlgFile::QorDlgFile(QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle)
    : QorDlgDialog(iFather, iName, iStyle | QorDlgWndOKCancel), directory(CurrentDirectory()) {}

void QorDlgFile::SetFilterStrings(const QorUnicodeString* iLabels,
                                  const QorString* iPatterns,
                                  int iCount) {
    filters.clear();
    activeFilter = 0;
    if (iLabels != nullptr && iPatterns != nullptr)
        for (int i = 0; i < iCount; ++i)
            filters.push_back({.label = iLabels[i], .pattern = iPatterns[i]});
    Changed(QorAspectLines | QorAspectSelection);
}

bool QorDlgFile::IsFilter(int iIndex) const {
    return iIndex >= 0 && static_cast<std::size_t>(iIndex) < filters.size();
}

void QorDlgFile::SetActiveFilterIndex(int iIndex) {
    if (!IsFilter(iIndex))
        return;
    activeFilter = iIndex;
    Changed(QorAspectSelection);
}

QorUnicodeString QorDlgFile::MakeAbsolute(const QorUnicodeString& iPath) const {
    const std::string& path = iPath.Str();
    if (path.starts_with('/'))
        return iPath;
    const std::string& base = directory.Str();
    return base.ends_with('/') ? base + path : base + "/" + path;
}

void QorDlgFile::SetSelection(const QorUnicodeString& iPath) {
    selection = iPath.IsNull() ? iPath : MakeAbsolute(iPath);
    Changed(QorAspectValue);
}

void QorDlgFile::SetDirectory(const QorUnicodeString& iDirectory) {
    if (iDirectory.IsNull())
        return;
    directory = MakeAbsolute(iDirectory);
    Changed(QorAspectValue);
}

QorUserResult QorDlgFile::UserAccept(const QorUnicodeString& iPath) {
    if (!CanAct())
        return QorUserResult::Insensitive;
    if (iPath.IsNull())
        return QorUserResult::Impossible;
    SetSelection(iPath);
    return UserSend(accepted.Get());
}

QorUserResult QorDlgFile::UserSetDirectory(const QorUnicodeString& iDirectory) {
    if (!CanAct())
        return QorUserResult::Insensitive;
    if (iDirectory.IsNull())
        return QorUserResult::Impossible;
    SetDirectory(iDirectory);
    return QorUserResult::Done;
}

QorUserResult QorDlgFile::UserSetFilter(int iIndex) {
    if (!CanAct())
        return QorUserResult::Insensitive;
    if (!IsFilter(iIndex))
        return QorUserResult::OutOfRange;
    SetActiveFilterIndex(iIndex);
    return QorUserResult::Done;
}

QorUserResult QorDlgFile::UserCancel() {
    return UserSend(canceled.Get());
}

QorUserResult QorDlgFile::UserOK() {
    return UserAccept(QorUnicodeString(selection));
}

QorDlgStdFile::QorDlgStdFile(QorCommand* iFather,
                             const QorString& iName,
                             QorDlgStyle iStyle,
                             std::vector<QorString> iExtensions)
    : QorDlgFile(iFather, iName, iStyle), extensions(std::move(iExtensions)) {}
