#pragma once

#include "platform/system/QorCommand.h"

#include <vector>

class QorFrmEditor;
class QorFrmWindow;

/// The open documents and their windows, and which of them is current. The layout's callback
/// manager dispatches the events of all editors and windows, so that whoever subscribes there sees
/// those to come as well.
class QorFrmLayout : public QorCommand {
    QorDeclareClass(QorFrmLayout)

    /// A new layout is the current one from now on.
    QorFrmLayout(QorCommand* iFather, const QorString& iName);

    /// The layout in use, or null.
    [[nodiscard]] static QorFrmLayout* GetCurrentLayout();

    /// Null while no window is open, and between the leaving of a closed document and the entering
    /// of the next.
    [[nodiscard]] QorFrmWindow* GetCurrentWindow() const { return currentWindow; }

    [[nodiscard]] QorFrmEditor* GetCurrentEditor() const { return currentEditor; }

    /// In the order of their making.
    [[nodiscard]] const std::vector<QorFrmWindow*>& GetWindows() const { return windows; }

    [[nodiscard]] const std::vector<QorFrmEditor*>& GetEditors() const { return editors; }

    /// How many editors are left.
    [[nodiscard]] int GetEditorCount() const { return static_cast<int>(editors.size()); }

    /// The windows of one editor, in the order of their making.
    [[nodiscard]] std::vector<QorFrmWindow*> GetWindowsOf(const QorFrmEditor* iEditor) const;

    /// Makes a window of this layout the current one: EDITOR_DEACTIVATED of the editor that is
    /// left and EDITOR_ACTIVATED of the one that is entered, if they differ, then VIEWER_ACTIVATED
    /// if the window has a viewer. Nothing happens for the current window.
    void SetCurrentWindow(QorFrmWindow* iWindow);
    /// The same for an editor: with the first of its windows, if it has any; null leaves all.
    void SetCurrentEditor(QorFrmEditor* iEditor);

    /// Closes one of several windows of an editor, with WINDOW_DELETED alone; if it was current,
    /// its next sister is. The last window of an editor closes the editor.
    void CloseWindow(QorFrmWindow* iWindow);
    /// Closes an editor: EDITOR_DEACTIVATED if it is current, WINDOW_DELETED for each of its
    /// windows, EDITOR_CLOSE_ENDED, and then, if it was current, another editor is entered.
    /// Window and editor objects are destroyed later (delayed destruction).
    void CloseEditor(QorFrmEditor* iEditor);

protected:
    ~QorFrmLayout() override;

private:
    friend class QorFrmEditor;
    friend class QorFrmWindow;

    /// Joining and leaving as objects are made and destroyed; no events.
    void Join(QorFrmEditor& iEditor);
    void Join(QorFrmWindow& iWindow);
    void Leave(QorFrmEditor& iEditor);
    void Leave(QorFrmWindow& iWindow);

    void Enter(QorFrmEditor* iEditor, QorFrmWindow* iWindow);
    void DeleteWindow(QorFrmWindow& iWindow);
    void ActivateViewer(QorFrmWindow& iWindow);
    void Dispatch(QorEventName iEvent, QorFrmEditor& iEditor);
    void Dispatch(QorEventName iEvent, QorFrmWindow& iWindow);

    std::vector<QorFrmEditor*> editors;
    std::vector<QorFrmWindow*> windows;
    QorFrmEditor* currentEditor = nullptr;
    QorFrmWindow* currentWindow = nullptr;
};

QorDeclareHandle(QorFrmLayout);
