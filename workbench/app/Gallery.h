#pragma once

#include "platform/frame/QorFrmDialog.h"

namespace qor::app {

/// Every kind of widget in each of its states, for those who draw widgets or look for one. A line
/// at the bottom tells of the last notification. Texts are in the message catalog "GalleryDialog".
class GalleryDialog : public QorFrmDialog {
    QorDeclareClass(GalleryDialog)

    GalleryDialog(QorCommand* owner, const QorString& itsName);

protected:
    ~GalleryDialog() override = default;

private:
    void addColumns();
    void addEventLine();
    void subscribeAll(QorDialog& widget);
    void eventCB(QorCommand* sender, QorNotification* notification, QorSubscriberData data);
    void windowCB(QorCommand* sender, QorNotification* notification, QorSubscriberData data);
    void windowEndCB(QorCommand* sender, QorNotification* notification, QorSubscriberData data);
    void watchWindow(QorDlgDialog& window);
    void tell(const QorCommand& sender, const std::string& what);

    QorDialog* eventLine_ = nullptr; ///< a child
};

} // namespace qor::app
