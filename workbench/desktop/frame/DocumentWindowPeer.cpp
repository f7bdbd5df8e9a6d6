#include "workbench/desktop/frame/DocumentWindowPeer.h"

#include "platform/vis/QorNavigation3DViewer.h"
#include "workbench/desktop/frame/DocumentArea.h"
#include "workbench/desktop/frame/ProductTreePanel.h"
#include "workbench/document/Document.h"

#include <QSplitter>

namespace qor::desktop {

using document::Document;

DocumentWindowPeer::DocumentWindowPeer(QorDialog& widget)
    : ContainerPeer(widget), parts_(new QSplitter(parentFor(widget))) {
    parts_->setChildrenCollapsible(false);
    parts_->setHandleWidth(1);
    auto* around = new QWidget(parts_);
    parts_->addWidget(around);
    setControl(parts_);
    setInside(around);
    listen();
}

void DocumentWindowPeer::listen() {
    if (auto* viewer = dynamic_cast<QorNavigation3DViewer*>(my().GetViewer()))
        for (const QorEventName& event :
             {Qor3DViewer::TREE_DISPLAY_ON, Qor3DViewer::TREE_DISPLAY_OFF})
            viewer->GetCallbackManager()->AddCallback(this, event,
                                                      &DocumentWindowPeer::treeChanged);
    QorFrmEditor* editor = my().GetEditor();
    if (auto* document =
            editor != nullptr ? dynamic_cast<Document*>(editor->GetDocument()) : nullptr)
        document->GetCallbackManager()->AddCallback(this, Document::DOCUMENT_TREE_MODIFIED,
                                                    &DocumentWindowPeer::treeChanged);
}

bool DocumentWindowPeer::isEmpty() const {
    QorFrmEditor* editor = my().GetEditor();
    const auto* document =
        editor != nullptr ? dynamic_cast<const Document*>(editor->GetDocument()) : nullptr;
    return document == nullptr || document->product().nodes().empty();
}

void DocumentWindowPeer::draw(QorAspects aspects) {
    ContainerPeer::draw(aspects);
    if ((aspects & QorAspectChildren) != 0) {
        listen();
        showTree();
    }
    if ((aspects & QorAspectTitle) != 0)
        if (auto* area = dynamic_cast<DocumentArea*>(parentFor(widget())))
            area->refresh();
}

/// Which page is seen is the area's to say.
void DocumentWindowPeer::drawVisibility() {}

void DocumentWindowPeer::showTree() {
    constexpr int treeWidth = 280;
    const auto* viewer = dynamic_cast<QorNavigation3DViewer*>(my().GetViewer());
    const bool on = viewer != nullptr && viewer->IsTreeDisplayed() && !isEmpty();
    if (!on && tree_)
        tree_->hide();
    if (!on)
        return;
    if (!tree_) {
        tree_ = new ProductTreePanel(*my().GetEditor(), parts_);
        tree_->setMinimumWidth(treeWidth / 2);
        parts_->insertWidget(0, tree_);
        parts_->setStretchFactor(0, 0);
        parts_->setStretchFactor(1, 1);
        parts_->setSizes({treeWidth, std::max(parts_->width() - treeWidth, treeWidth)});
    }
    tree_->show();
}

void DocumentWindowPeer::treeChanged(QorEventName /*event*/,
                                     QorBaseUnknown* /*publisher*/,
                                     QorNotification* /*notification*/,
                                     QorSubscriberData /*data*/,
                                     QorCallbackId /*cookie*/) {
    showTree();
    if (wasEmpty_ == isEmpty())
        return;
    wasEmpty_ = isEmpty();
    if (auto* area = dynamic_cast<DocumentArea*>(parentFor(widget())))
        area->refresh();
}

} // namespace qor::desktop
