#pragma once

#include "platform/frame/QorFrmEditor.h"
#include "platform/vis/QorNavigation3DViewer.h"

namespace qor::session {

/// Lets clicks in a viewer change the selection of an editor: a click on a part selects it alone,
/// with Control or Shift held it adds the part or takes it out, and a click beside the product
/// selects nothing. Both outlive it.
class ClickSelection : public QorEventSubscriber {
public:
    ClickSelection(QorNavigation3DViewer& viewer, QorFrmEditor& editor);

private:
    void clicked(QorEventName event,
                 QorBaseUnknown* publisher,
                 QorNotification* notification,
                 QorSubscriberData data,
                 QorCallbackId cookie);

    QorFrmEditor& editor_;
};

} // namespace qor::session
