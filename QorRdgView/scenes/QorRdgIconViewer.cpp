#include "scenes/QorRdgIconViewer.h"

#include "scenes/QorRdgIconReps.h"

QorRdgIconViewer::QorRdgIconViewer(QorCommand* iFather,
                                   const QorString& iName,
                                   float iWidth,
                                   float iHeight)
    : Qor2DViewer(iFather, iName, QorDlgDefaultStyle, iWidth, iHeight) {}

QorRdgIconViewer::~QorRdgIconViewer() {
    AnnounceEnd();
}

bool QorRdgIconViewer::Navigate(const QorMouseEvent& iMouse) {
    if (iMouse.action != QorMouseEvent::Action::Wheel || iMouse.wheelSteps == 0.0)
        return false;
    constexpr double perStep = QorRdgIconReps::cellHeight / 2.0;
    double left = 0.0;
    double right = 0.0;
    double bottom = 0.0;
    double top = 0.0;
    GetViewBox(left, right, bottom, top);
    const double by = iMouse.wheelSteps * perStep;
    SetViewBox(left, right, bottom + by, top + by);
    return true;
}
