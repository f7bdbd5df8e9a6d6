#include "workbench/session/ClickSelection.h"

#include "platform/vis/QorViewerClickNotification.h"
#include "workbench/session/NodeSelection.h"

namespace qor::session {

using document::Document;
using document::ProductNode;

ClickSelection::ClickSelection(QorNavigation3DViewer& viewer, QorFrmEditor& editor)
    : editor_(editor) {
    for (const QorEventName& event : {QorNavigation3DViewer::VIEWER_PART_CLICKED,
                                      QorNavigation3DViewer::VIEWER_NOTHING_CLICKED})
        viewer.GetCallbackManager()->AddCallback(this, event, &ClickSelection::clicked);
}

void ClickSelection::clicked(QorEventName /*event*/,
                             QorBaseUnknown* /*publisher*/,
                             QorNotification* notification,
                             QorSubscriberData /*data*/,
                             QorCallbackId /*cookie*/) {
    const auto* click = dynamic_cast<QorViewerClickNotification*>(notification);
    auto* document = dynamic_cast<Document*>(editor_.GetDocument());
    if (click == nullptr || document == nullptr)
        return;
    const bool adds = click->GetMouse().control || click->GetMouse().shift;
    ProductNode* node = document->product().nodeOn(click->GetPickPath());
    if (node != nullptr && adds)
        toggleNode(*editor_.GetCSO(), *document, *node);
    else if (node != nullptr)
        selectNodes(*editor_.GetCSO(), *document, {node});
    else if (!adds)
        editor_.GetCSO()->Empty();
}

} // namespace qor::session
