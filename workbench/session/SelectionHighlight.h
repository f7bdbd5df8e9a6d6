#pragma once

#include "platform/frame/QorFrmEditor.h"
#include "workbench/session/NodeSelection.h"

namespace qor::session {

/// As long as it lives, the nodes in an editor's selection stand out in all viewers of its
/// document.
class SelectionHighlight : public QorEventSubscriber {
public:
    /// The document of \p editor is a Document.
    explicit SelectionHighlight(QorFrmEditor& editor);
    ~SelectionHighlight();
    SelectionHighlight(const SelectionHighlight&) = delete;
    SelectionHighlight& operator=(const SelectionHighlight&) = delete;

private:
    void modified(QorEventName event,
                  QorBaseUnknown* publisher,
                  QorNotification* notification,
                  QorSubscriberData data,
                  QorCallbackId cookie);
    void show(const Nodes& nodes);

    QorCSO_var selection_;
    std::vector<document::ProductNode_var> shown_;
};

} // namespace qor::session
