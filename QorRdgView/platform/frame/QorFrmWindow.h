#pragma once

#include "platform/dialog/QorDialog.h"
#include "platform/dialog/QorDlgNotifications.h"
#include "platform/frame/QorFrmEditor.h"

class QorViewer;

/// A window on a document, drawn by the host in the document area of the application frame, whose
/// child it usually is. Its events are dispatched by the layout's callback manager with the window
/// as publisher and a QorFrmWindowNotification.
class QorFrmWindow : public QorDialog {
    QorDeclareClass(QorFrmWindow)

    /// Joins the layout of \p iEditor, which is not null.
    QorFrmWindow(QorCommand* iFather, const QorString& iName, QorFrmEditor* iEditor);

    /// The window has left the layout; it and its viewer are still whole, and the layout's current
    /// window is already another one or none.
    static const QorEventName WINDOW_DELETED;
    /// The viewer of the window has become the one that a person works in.
    static const QorEventName VIEWER_ACTIVATED;

    [[nodiscard]] const char* GetKind() const override { return "document window"; }

    /// Null once the editor is gone.
    [[nodiscard]] QorFrmEditor* GetEditor() const { return editor; }

    /// The window's viewer, or null.
    [[nodiscard]] QorViewer* GetViewer() const { return viewer; }

    /// Gives the window its viewer, a child of it, or null; no reference is taken. In the current
    /// window a viewer is activated by it.
    void SetViewer(QorViewer* iViewer);

    /// Sent by the close box. Who receives it asks what there is to ask and closes the window.
    [[nodiscard]] QorNotification* GetWindCloseNotification() const { return close.Get(); }

    /// A person has pressed the close box.
    QorUserResult UserClose();
    /// A person has turned to the window: it becomes the current one.
    QorUserResult UserActivate();

protected:
    ~QorFrmWindow() override;

private:
    friend class QorFrmLayout;
    [[nodiscard]] QorFrmLayout* GetFrameLayout() const;

    QorFrmEditor* editor;
    QorViewer* viewer = nullptr;
    QorOwnNotification<QorDlgWindCloseNotification> close;
};

QorDeclareHandle(QorFrmWindow);

/// What comes with the events of windows.
class QorFrmWindowNotification : public QorNotification {
    QorDeclareClass(QorFrmWindowNotification)

    explicit QorFrmWindowNotification(QorFrmWindow* iWindow);

    [[nodiscard]] QorFrmWindow* GetWindow() const { return window.Get(); }

    /// The viewer that the window had when the event came, or null.
    [[nodiscard]] QorViewer* GetViewer() const { return viewer; }

protected:
    ~QorFrmWindowNotification() override;

private:
    QorFrmWindow_var window;
    QorViewer* viewer;
};
