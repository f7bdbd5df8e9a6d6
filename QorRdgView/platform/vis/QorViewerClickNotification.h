#pragma once

#include "platform/vis/QorManipulator.h"
#include "platform/vis/QorPicker.h"

/// A click in a viewer: press and release of a button at one place.
class QorViewerClickNotification : public QorNotification {
    QorDeclareClass(QorViewerClickNotification)

    QorViewerClickNotification(QorPickPath iPath, const QorMouseEvent& iMouse);

    /// From the viewpoint's root to the representation that was clicked; empty for nothing.
    [[nodiscard]] const QorPickPath& GetPickPath() const { return path; }

    /// The release, with the keys held.
    [[nodiscard]] const QorMouseEvent& GetMouse() const { return mouse; }

protected:
    ~QorViewerClickNotification() override = default;

private:
    QorPickPath path;
    QorMouseEvent mouse;
};
