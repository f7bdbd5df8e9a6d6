#pragma once

#include "platform/component/QorHandle.h"
#include "platform/vis/QorViewpoint.h"

/// A viewer that may show one product from several viewpoints side by side.
class QorI3DMultiViewpointViewer : public QorInterface {
    QorDeclareInterface(QorI3DMultiViewpointViewer)

    /// Whether it shows more than one now.
    [[nodiscard]] virtual bool HasSeveralViewpoints() = 0;
    /// All that it shows, the main one included.
    [[nodiscard]] virtual std::vector<QorVar<QorViewpoint>> GetViewpoints() = 0;
};

QorDeclareHandle(QorI3DMultiViewpointViewer);
