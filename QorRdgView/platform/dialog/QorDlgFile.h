#pragma once

#include "platform/dialog/QorDlgDialog.h"

/// A file dialog. OK only notifies: the path stays as typed, nothing is added or asked, and the
/// dialog stays open until it is destroyed.
class QorDlgFile : public QorDlgDialog {
    QorDeclareClass(QorDlgFile)

    /// With QorDlgFileSave it names a file to write, else one to read.
    QorDlgFile(QorCommand* iFather,
               const QorString& iName,
               QorDlgStyle iStyle = QorDlgDefaultStyle);

    [[nodiscard]] const char* GetKind() const override { return "file dialog"; }

    [[nodiscard]] bool IsSave() const { return (GetStyle() & QorDlgFileSave) != 0; }

    [[nodiscard]] QorNotification* GetFileSelectionOKNotification() const { return accepted.Get(); }

    [[nodiscard]] QorNotification* GetFileSelectionCancelNotification() const {
        return canceled.Get();
    }

    struct Filter {
        QorUnicodeString label;
        QorString pattern; ///< "*.tif"; several are separated by blanks
    };

    /// Replaces the filters; the first becomes active.
    void SetFilterStrings(const QorUnicodeString* iLabels, const QorString* iPatterns, int iCount);

    [[nodiscard]] const std::vector<Filter>& GetFilters() const { return filters; }

    /// From 0; 0 without filters.
    [[nodiscard]] int GetActiveFilterIndex() const { return activeFilter; }

    /// An index that is no filter is ignored.
    void SetActiveFilterIndex(int iIndex);

    /// The selected path as typed, made absolute with the directory shown; empty without one.
    [[nodiscard]] const QorUnicodeString& GetSelection() const { return selection; }

    /// A relative path is taken from the directory; an empty one takes the selection away.
    void SetSelection(const QorUnicodeString& iPath);

    /// The directory shown, an absolute path; at first the process's own.
    [[nodiscard]] const QorUnicodeString& GetDirectory() const { return directory; }

    /// An empty one is ignored.
    void SetDirectory(const QorUnicodeString& iDirectory);

    /// A person's OK with \p iPath; relative paths are taken from the directory. An empty path is
    /// Impossible.
    QorUserResult UserAccept(const QorUnicodeString& iPath);
    /// A person turns to another directory or filter.
    QorUserResult UserSetDirectory(const QorUnicodeString& iDirectory);
    QorUserResult UserSetFilter(int iIndex);
    /// Sends the file dialog's own Cancel notification.
    QorUserResult UserCancel() override;
    /// OK with the selection as it stands.
    QorUserResult UserOK() override;

protected:
    ~QorDlgFile() override = default;

private:
    [[nodiscard]] bool IsFilter(int iIndex) const;
    [[nodiscard]] QorUnicodeString MakeAbsolute(const QorUnicodeString& iPath) const;

    std::vector<Filter> filters;
    int activeFilter = 0;
    QorUnicodeString selection;
    QorUnicodeString directory;
    QorOwnNotification<QorDlgFileSelectionOKNotification> accepted;
    QorOwnNotification<QorDlgFileSelectionCancelNotification> canceled;
};

/// A file dialog that knows extensions.
class QorDlgStdFile : public QorDlgFile {
    QorDeclareClass(QorDlgStdFile)

    /// \p iExtensions without dots.
    QorDlgStdFile(QorCommand* iFather,
                  const QorString& iName,
                  QorDlgStyle iStyle,
                  std::vector<QorString> iExtensions = {});

    [[nodiscard]] const std::vector<QorString>& GetExtensions() const { return extensions; }

protected:
    ~QorDlgStdFile() override = default;

private:
    std::vector<QorString> extensions;
};
