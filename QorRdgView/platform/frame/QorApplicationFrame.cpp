#include "platform/frame/QorApplicationFrame.h"

namespace {

QorApplicationFrame* theFrame = nullptr;

} // namespace

QorApplicationFrame::QorApplicationFrame(const QorString& iName)
    : QorDlgDialog(nullptr, iName)
    , menuBar(new QorCmdContainer(this, "menuBar"))
    , toolBars(new QorCmdContainer(this, "toolBars")) {
    theFrame = this;
}

QorApplicationFrame::~QorApplicationFrame() {
    if (theFrame == this)
        theFrame = nullptr;
}

QorApplicationFrame* QorApplicationFrame::GetFrame() {
    return theFrame;
}

void QorApplicationFrame::SetStatus(const QorUnicodeString& iText) {
    if (status == iText)
        return;
    status = iText;
    Changed(QorAspectValue);
}

QorImplementClass(QorApplicationFrame, QorDlgDialog)
