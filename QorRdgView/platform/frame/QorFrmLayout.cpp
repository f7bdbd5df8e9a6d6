#include "platform/frame/QorFrmLayout.h"

#include "platform/frame/QorFrmWindow.h"

#include <algorithm>
#include <utility>

namespace {

QorFrmLayout* theLayout = nullptr;

template <class T>
bool Contains(const std::vector<T*>& iList, const T* iOne) {
    return std::find(iList.begin(), iList.end(), iOne) != iList.end();
}

} // namespace

QorFrmLayout::QorFrmLayout(QorCommand* iFather, const QorString& iName)
    : QorCommand(iFather, iName) {
    theLayout = this;
}

QorFrmLayout::~QorFrmLayout() {
    for (QorFrmWindow* window : windows)
        window->editor = nullptr;
    for (QorFrmEditor* editor : editors)
        editor->layout = nullptr;
    if (theLayout == this)
        theLayout = nullptr;
}

QorFrmLayout* QorFrmLayout::GetCurrentLayout() {
    return theLayout;
}

std::vector<QorFrmWindow*> QorFrmLayout::GetWindowsOf(const QorFrmEditor* iEditor) const {
    std::vector<QorFrmWindow*> found;
    std::copy_if(windows.begin(), windows.end(), std::back_inserter(found),
                 [&](const QorFrmWindow* iWindow) { return iWindow->editor == iEditor; });
    return found;
}

void QorFrmLayout::SetCurrentWindow(QorFrmWindow* iWindow) {
    if (iWindow != currentWindow && Contains(windows, iWindow))
        Enter(iWindow->editor, iWindow);
}

void QorFrmLayout::SetCurrentEditor(QorFrmEditor* iEditor) {
    if (iEditor == currentEditor || (iEditor != nullptr && !Contains(editors, iEditor)))
        return;
    const std::vector<QorFrmWindow*> ofEditor = GetWindowsOf(iEditor);
    Enter(iEditor, ofEditor.empty() ? nullptr : ofEditor.front());
}

void QorFrmLayout::Enter(QorFrmEditor* iEditor, QorFrmWindow* iWindow) {
    const QorFrmEditor_var editor(iEditor);
    const QorFrmWindow_var window(iWindow);
    const QorFrmEditor_var left(currentEditor);
    const bool changesEditor = left != editor;
    if (changesEditor && left)
        Dispatch(QorFrmEditor::EDITOR_DEACTIVATED, *left);
    // A callback may have closed what was to be entered.
    currentEditor = Contains(editors, iEditor) ? iEditor : nullptr;
    currentWindow = Contains(windows, iWindow) ? iWindow : nullptr;
    if (changesEditor && currentEditor != nullptr)
        Dispatch(QorFrmEditor::EDITOR_ACTIVATED, *currentEditor);
    if (currentWindow != nullptr && currentWindow == iWindow)
        ActivateViewer(*currentWindow);
}

void QorFrmLayout::CloseWindow(QorFrmWindow* iWindow) {
    if (!Contains(windows, iWindow))
        return;
    std::vector<QorFrmWindow*> sisters = GetWindowsOf(iWindow->editor);
    if (sisters.size() == 1) {
        CloseEditor(iWindow->editor);
        return;
    }
    if (iWindow == currentWindow) {
        const auto place = std::find(sisters.begin(), sisters.end(), iWindow);
        const auto next = sisters.erase(place);
        currentWindow = next != sisters.end() ? *next : sisters.back();
    }
    DeleteWindow(*iWindow);
}

void QorFrmLayout::CloseEditor(QorFrmEditor* iEditor) {
    if (!Contains(editors, iEditor) || std::exchange(iEditor->closing, true))
        return;
    const QorFrmEditor_var alive(iEditor);
    const bool wasCurrent = iEditor == currentEditor;
    if (wasCurrent)
        Dispatch(QorFrmEditor::EDITOR_DEACTIVATED, *iEditor);
    if (iEditor == currentEditor) {
        currentEditor = nullptr;
        currentWindow = nullptr;
    }
    for (QorFrmWindow* window : GetWindowsOf(iEditor))
        DeleteWindow(*window);
    const auto place = std::find(editors.begin(), editors.end(), iEditor);
    const auto next = editors.erase(place);
    QorFrmEditor* neighbour =
        next != editors.end() ? *next : (editors.empty() ? nullptr : editors.back());
    Dispatch(QorFrmEditor::EDITOR_CLOSE_ENDED, *iEditor);
    iEditor->layout = nullptr;
    iEditor->RequestDelayedDestruction();
    if (wasCurrent && currentEditor == nullptr)
        SetCurrentEditor(neighbour);
}

void QorFrmLayout::DeleteWindow(QorFrmWindow& iWindow) {
    if (std::erase(windows, &iWindow) == 0)
        return;
    const QorFrmWindow_var alive(&iWindow);
    Dispatch(QorFrmWindow::WINDOW_DELETED, iWindow);
    iWindow.editor = nullptr;
    iWindow.RequestDelayedDestruction();
}

void QorFrmLayout::ActivateViewer(QorFrmWindow& iWindow) {
    if (iWindow.viewer != nullptr)
        Dispatch(QorFrmWindow::VIEWER_ACTIVATED, iWindow);
}

void QorFrmLayout::Dispatch(QorEventName iEvent, QorFrmEditor& iEditor) {
    const auto notification = QorMake<QorFrmEditorNotification>(&iEditor);
    GetCallbackManager()->DispatchCallbacks(iEvent, &iEditor, notification.Get());
}

void QorFrmLayout::Dispatch(QorEventName iEvent, QorFrmWindow& iWindow) {
    const auto notification = QorMake<QorFrmWindowNotification>(&iWindow);
    GetCallbackManager()->DispatchCallbacks(iEvent, &iWindow, notification.Get());
}

void QorFrmLayout::Join(QorFrmEditor& iEditor) {
    editors.push_back(&iEditor);
}

void QorFrmLayout::Join(QorFrmWindow& iWindow) {
    windows.push_back(&iWindow);
}

void QorFrmLayout::Leave(QorFrmEditor& iEditor) {
    for (QorFrmWindow* window : GetWindowsOf(&iEditor)) {
        Leave(*window);
        window->editor = nullptr;
    }
    std::erase(editors, &iEditor);
    if (currentEditor == &iEditor)
        currentEditor = nullptr;
}

void QorFrmLayout::Leave(QorFrmWindow& iWindow) {
    std::erase(windows, &iWindow);
    if (currentWindow == &iWindow)
        currentWindow = nullptr;
}

QorImplementClass(QorFrmLayout, QorCommand)
