#pragma once

#include "platform/frame/QorCSO.h"
#include "platform/frame/QorDocument.h"
#include "platform/system/QorCommand.h"

class QorFrmLayout;

/// A document that is open: the document, its selection and, in the layout, its windows. An editor
/// belongs to its layout. Its events are dispatched by the layout's callback manager with the
/// editor as publisher and a QorFrmEditorNotification.
class QorFrmEditor : public QorCommand {
    QorDeclareClass(QorFrmEditor)

    /// \p iLayout is not null. The editor holds a reference on \p iDocument, which may be null.
    QorFrmEditor(QorFrmLayout* iLayout, const QorString& iName, QorDocument* iDocument);

    /// The editor has become the current one.
    static const QorEventName EDITOR_ACTIVATED;
    /// The editor, still the current one, ceases to be it.
    static const QorEventName EDITOR_DEACTIVATED;
    /// The editor has left the layout, its windows before it; it is still whole.
    static const QorEventName EDITOR_CLOSE_ENDED;

    /// The current editor of the current layout, or null.
    [[nodiscard]] static QorFrmEditor* GetCurrentEditor();

    [[nodiscard]] QorFrmLayout* GetLayout() const { return layout; }

    /// May be null. No reference added.
    [[nodiscard]] QorDocument* GetDocument() const { return document.Get(); }

    /// The selection; never null. No reference added.
    [[nodiscard]] QorCSO* GetCSO() const { return selection.Get(); }

protected:
    ~QorFrmEditor() override;

private:
    friend class QorFrmLayout;

    QorFrmLayout* layout; ///< null once closed
    QorDocument_var document;
    QorCSO_var selection;
    bool closing = false;
};

QorDeclareHandle(QorFrmEditor);

/// What comes with the events of editors.
class QorFrmEditorNotification : public QorNotification {
    QorDeclareClass(QorFrmEditorNotification)

    explicit QorFrmEditorNotification(QorFrmEditor* iEditor);

    [[nodiscard]] QorFrmEditor* GetEditor() const { return editor.Get(); }

protected:
    ~QorFrmEditorNotification() override;

private:
    QorFrmEditor_var editor;
};
