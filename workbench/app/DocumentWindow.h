#pragma once

#include "platform/frame/QorFrmWindow.h"
#include "platform/vis/QorNavigation3DViewer.h"
#include "workbench/app/DocumentEditor.h"
#include "workbench/session/ClickSelection.h"

#include <functional>

namespace qor::app {

/// A window on a document: a viewer of its product, first seen whole from a corner.
class DocumentWindow : public QorFrmWindow {
    QorDeclareClass(DocumentWindow)

    /// \p onClose is called when a person presses the close box.
    DocumentWindow(QorCommand* owner,
                   const QorString& itsName,
                   DocumentEditor& edited,
                   std::function<void(DocumentWindow& window)> onClose);

    [[nodiscard]] QorNavigation3DViewer& viewer() const { return *viewer_; }

    /// Shows all of the product from a corner, at once.
    void showWhole();

protected:
    ~DocumentWindow() override = default;

private:
    void closeCB(QorCommand* sender, QorNotification* notification, QorSubscriberData data);
    void resized(QorEventName event,
                 QorBaseUnknown* publisher,
                 QorNotification* notification,
                 QorSubscriberData data,
                 QorCallbackId cookie);

    std::function<void(DocumentWindow& window)> onClose_;
    QorNavigation3DViewer* viewer_; ///< a child
    session::ClickSelection clicks_;
    QorView whole_; ///< the look that showWhole made
};

} // namespace qor::app
