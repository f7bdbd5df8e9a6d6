#include "scenes/QorRdgSceneFrame.h"

QorImplementClass(QorRdgSceneFrame, QorDlgFrame)

QorRdgSceneFrame::QorRdgSceneFrame(QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle)
    : QorDlgFrame(iFather, iName, iStyle) {}

QorRdgSceneFrame::~QorRdgSceneFrame() = default;
