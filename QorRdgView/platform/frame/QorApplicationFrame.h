#pragma once

#include "platform/dialog/QorDlgDialog.h"
#include "platform/frame/QorCmdContainer.h"

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

protected:
    ~QorApplicationFrame() override;

private:
    QorCmdContainer* menuBar;
    QorCmdContainer* toolBars;
    QorUnicodeString status;
};
