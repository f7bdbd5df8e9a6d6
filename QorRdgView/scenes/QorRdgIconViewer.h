#pragma once

#include "platform/vis/QorViewer.h"

/// The icon list's drawing area: the wheel moves what is visible up and down. For everybody else it
/// is a Qor2DViewer, without a class name of its own.
class QorRdgIconViewer : public Qor2DViewer {
public:
    QorRdgIconViewer(QorCommand* iFather, const QorString& iName, float iWidth, float iHeight);

protected:
    ~QorRdgIconViewer() override;
    bool Navigate(const QorMouseEvent& iMouse) override;
};
