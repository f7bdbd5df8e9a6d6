#include "quickrender/QorRdgPictureWriter.h"

#include "platform/dialog/QorDlgLabel.h"
#include "platform/dialog/QorDlgProgress.h"
#include "platform/system/QorApplication.h"
#include "platform/system/QorEventLoop.h"
#include "platform/system/QorTrace.h"
#include "platform/vis/QorPictureService.h"
#include "scenes/QorRdgWorkers.h"

#include <exception>

QorImplementClass(QorRdgPictureProgress, QorFrmDialog)

namespace {

using Work = QorRdgPictureProgress::Work;

constexpr std::chrono::milliseconds showInterval(100);
constexpr std::chrono::milliseconds patience(1000); ///< until the box of a smaller picture comes
constexpr int notDone = -1;

/// On a worker: 0, or a code and a reason.
int WriteOnWorker(Work& ioWork,
                  const QorPixelImage& iImage,
                  const QorString& iFormat,
                  const QorUnicodeString& iPath,
                  QorUnicodeString& oError) {
    const auto watch = [&ioWork](int iPercent) {
        ioWork.percent = iPercent;
        return !ioWork.stop;
    };
    try {
        return QorPictureService::Get().WriteWatched(iImage, iFormat, iPath, watch, oError);
    } catch (const std::exception& failure) { // memory is short
        oError = iPath + QorUnicodeString(std::string(": ") + failure.what());
        return notDone;
    }
}

/// What a worker does: writes, and leaves the outcome to be delivered.
QorRdgWorkers::Job MakeJob(std::shared_ptr<Work> iWork,
                           const QorPixelImage& iImage,
                           const QorString& iFormat,
                           const QorUnicodeString& iPath) {
    return [work = std::move(iWork), image = QorMake<QorPixelImage>(iImage), format = iFormat,
            path = iPath]() -> QorRdgWorkers::Delivery {
        QorUnicodeString error;
        const int result = WriteOnWorker(*work, *image, format, path, error);
        return [work, result, error] {
            work->result = result;
            work->error = error;
            work->done = true;
        };
    };
}

long long CountPixels(const QorPixelImage& iImage) {
    return static_cast<long long>(iImage.GetWidth()) * iImage.GetHeight();
}

int WriteBeside(QorCommand& iFather,
                const QorPixelImage& iImage,
                const QorString& iFormat,
                const QorUnicodeString& iPath,
                QorUnicodeString& oError) {
    const auto work = std::make_shared<Work>();
    work->result = notDone;
    const QorVar<QorRdgPictureProgress> box(
        new QorRdgPictureProgress(&iFather, "saveProgress", work));
    QorRdgWorkers::RunAside(MakeJob(work, iImage, iFormat, iPath));
    box->Wait(CountPixels(iImage) > QorRdgPictureWriter::largePixels ? std::chrono::milliseconds(0)
                                                                     : patience);
    box->RequestDelayedDestruction();
    if (!work->done || (work->stop && work->result != 0))
        return QorRdgPictureWriter::givenUp;
    oError = work->error;
    return work->result;
}

} // namespace

int QorRdgPictureWriter::Write(QorCommand& iFather,
                               const QorPixelImage& iImage,
                               const QorString& iFormat,
                               const QorUnicodeString& iPath,
                               QorUnicodeString& oError) {
    if (CountPixels(iImage) <= smallPixels)
        return iImage.WriteToFile(iFormat, iPath, &oError);
    return WriteBeside(iFather, iImage, iFormat, iPath, oError);
}

QorRdgPictureProgress::QorRdgPictureProgress(QorCommand* iFather,
                                             const QorString& iName,
                                             std::shared_ptr<Work> iWork)
    : QorFrmDialog(
          iFather, iName, QorDlgWndModal | QorDlgWndNoResize | QorDlgWndCANCEL | QorDlgGridLayout)
    , work(std::move(iWork)) {
    QorTrace(2, "(QorRdgPictureProgress::QorRdgPictureProgress) Constructor\n");
    (new QorDlgLabel(this, "writingLabel"))->SetGridConstraints(0, 0, 1, 1);
    progress = new QorDlgProgress(this, "writingProgress");
    progress->SetGridConstraints(1, 0, 1, 1);
    for (const QorNotification* end : std::initializer_list<const QorNotification*>{
             GetDiaCANCELNotification(), GetWindCloseNotification()})
        AddAnalyseNotificationCB(this, this, end, &QorRdgPictureProgress::CancelCB);
}

void QorRdgPictureProgress::Wait(std::chrono::milliseconds iHidden) {
    const QorApplication* application = QorApplication::MainApplication();
    if (application == nullptr || work->done)
        return;
    const QorVar<QorRdgPictureProgress> alive(this);
    QorEventLoop& loop = application->GetLoop();
    const bool wasDying = IsDying();
    QorTimerId opening = 0;
    if (iHidden.count() == 0)
        SetVisibility(QorDlgSHOW);
    else
        opening = loop.StartTimer(
            iHidden, [this] { SetVisibility(IsDying() ? QorDlgHIDE : QorDlgSHOW); }, false);
    QorTimerId timer = loop.StartTimer(
        showInterval, [this] { ShowPercent(); }, true);
    // One that nobody has seen has not been given up by closing what is around it.
    const auto isSeen = [this] {
        return GetVisibility() == QorDlgSHOW;
    };
    loop.RunNested([&] { return work->done || (IsDying() && !wasDying && isSeen()); });
    loop.StopTimer(timer);
    loop.StopTimer(opening);
    if (!work->done && isSeen())
        work->stop = true; // nobody waits any more
    SetVisibility(QorDlgHIDE);
}

void QorRdgPictureProgress::ShowPercent() {
    if (!IsDying()) // then its widgets go too
        progress->SetPos(work->percent);
}

void QorRdgPictureProgress::CancelCB(QorCommand* /*iCommand*/,
                                     QorNotification* /*iNotification*/,
                                     QorSubscriberData /*iData*/) {
    QorTrace(3, "(QorRdgPictureProgress::CancelCB) \n");
    work->stop = true;
}
