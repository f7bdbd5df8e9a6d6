#pragma once

#include "platform/vis/QorViewer.h"

/// The icon list's drawing area: the wheel moves what is visible up and down.
class QorRdgIconViewer : public Qor2DViewer {
    QorDeclareClass(QorRdgIconViewer)

    QorRdgIconViewer(QorCommand* iFather, const QorString& iName, float iWidth, float iHeight);

protected:
    ~QorRdgIconViewer() override;
    bool Navigate(const QorMouseEvent& iMouse) override;
};
