#include "platform/frame/QorApplicationFrame.h"

#include <utility>

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

void QorApplicationFrame::SetFacts(const QorUnicodeString& iText) {
    if (facts == iText)
        return;
    facts = iText;
    Changed(QorAspectValue);
}

void QorApplicationFrame::SetProgress(std::optional<Progress> iProgress) {
    if (progress == iProgress)
        return;
    progress = std::move(iProgress);
    Changed(QorAspectRange);
}

QorUserResult QorApplicationFrame::UserCancelProgress() {
    if (!CanAct() || !progress || !progress->cancellable)
        return QorUserResult::Insensitive;
    Notify(cancelProgress.Get());
    return QorUserResult::Done;
}

QorUserResult QorApplicationFrame::UserDropFiles(std::vector<QorUnicodeString> iPaths) {
    if (!CanAct())
        return QorUserResult::Insensitive;
    if (iPaths.empty())
        return QorUserResult::Impossible;
    dropped = std::move(iPaths);
    Notify(drop.Get());
    return QorUserResult::Done;
}

QorImplementClass(QorApplicationFrame, QorDlgDialog)
QorImplementNotification(QorFrmDropNotification)
QorImplementNotification(QorFrmCancelProgressNotification)
