#pragma once

#include "platform/dialog/QorDlgDialog.h"
#include "platform/dialog/QorDlgNotifications.h"
#include "platform/frame/QorCmdContainer.h"

#include <optional>
#include <vector>

/// A person has dropped files on the main window.
QorDeclareNotification(QorFrmDropNotification);
/// A person wants the work that the status bar shows to be given up.
QorDeclareNotification(QorFrmCancelProgressNotification);

/// The program's main window as the library sees it: the father of all its dialogs, its menus and
/// tool bars and its status text. There is one while the program runs, with a display or without.
/// The host draws it.
class QorApplicationFrame : public QorDlgDialog {
    QorDeclareClass(QorApplicationFrame)

    QorApplicationFrame(const QorString& iName);

    [[nodiscard]] const char* GetKind() const override { return "application frame"; }

    /// The frame, or null.
    [[nodiscard]] static QorApplicationFrame* GetFrame();

    /// The dialog that toolbar-like dialogs and windows are children of.
    [[nodiscard]] QorDialog* GetApplicationDocument() { return this; }

    /// Menus of the menu bar and tool bars, filled by the program before the frame is shown.
    [[nodiscard]] QorCmdContainer* GetMenuBar() const { return menuBar; }

    [[nodiscard]] QorCmdContainer* GetToolBars() const { return toolBars; }

    /// Text of the status bar; stays until the next.
    void SetStatus(const QorUnicodeString& iText);

    [[nodiscard]] const QorUnicodeString& GetStatus() const { return status; }

    /// Facts about what is open, at the other end of the status bar; stay until the next.
    void SetFacts(const QorUnicodeString& iText);

    [[nodiscard]] const QorUnicodeString& GetFacts() const { return facts; }

    /// Long work that the status bar shows.
    struct Progress {
        QorUnicodeString text;
        double share = -1.0; ///< 0..1, negative while nobody knows
        bool cancellable = false;

        bool operator==(const Progress& iOther) const = default;
    };

    /// Nothing takes the bar away.
    void SetProgress(std::optional<Progress> iProgress);

    [[nodiscard]] const std::optional<Progress>& GetProgress() const { return progress; }

    [[nodiscard]] QorNotification* GetCancelProgressNotification() const {
        return cancelProgress.Get();
    }

    /// A person presses Cancel beside the progress; Insensitive while there is none that can be.
    QorUserResult UserCancelProgress();

    [[nodiscard]] QorNotification* GetDropNotification() const { return drop.Get(); }

    /// What was dropped last, absolute paths; for who receives the drop notification.
    [[nodiscard]] const std::vector<QorUnicodeString>& GetDroppedFiles() const { return dropped; }

    /// A person drops files on the window; Impossible without any.
    QorUserResult UserDropFiles(std::vector<QorUnicodeString> iPaths);

protected:
    ~QorApplicationFrame() override;

private:
    QorCmdContainer* menuBar;
    QorCmdContainer* toolBars;
    QorUnicodeString status;
    QorUnicodeString facts;
    std::optional<Progress> progress;
    std::vector<QorUnicodeString> dropped;
    QorOwnNotification<QorFrmDropNotification> drop;
    QorOwnNotification<QorFrmCancelProgressNotification> cancelProgress;
};
