#include "platform/vis/QorViewerClickNotification.h"

#include <utility>

QorImplementClass(QorViewerClickNotification, QorNotification)

QorViewerClickNotification::QorViewerClickNotification(QorPickPath iPath,
                                                       const QorMouseEvent& iMouse)
    : path(std::move(iPath)), mouse(iMouse) {}
