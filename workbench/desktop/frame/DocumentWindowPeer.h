#pragma once

#include "platform/frame/QorFrmWindow.h"
#include "workbench/desktop/peers/ContainerPeer.h"

class QSplitter;

namespace qor::desktop {

/// A document window in the middle of the main window: the viewer, and the product tree beside it
/// while the viewer says so.
class DocumentWindowPeer
    : public ContainerPeer
    , public QorEventSubscriber {
public:
    explicit DocumentWindowPeer(QorDialog& widget);

    /// Whether its document has no part to look at.
    [[nodiscard]] bool isEmpty() const;

protected:
    void draw(QorAspects aspects) override;
    void drawVisibility() override;

private:
    [[nodiscard]] QorFrmWindow& my() const { return static_cast<QorFrmWindow&>(widget()); }

    void listen();
    void showTree();
    void treeChanged(QorEventName event,
                     QorBaseUnknown* publisher,
                     QorNotification* notification,
                     QorSubscriberData data,
                     QorCallbackId cookie);

    QSplitter* parts_;
    QPointer<QWidget> tree_;
    bool wasEmpty_ = true;
};

} // namespace qor::desktop
