// The quick render's tool bar: saving the picture that it holds.
#include "platform/frame/QorFrmNotify.h"
#include "platform/system/QorPaths.h"
#include "platform/system/QorTrace.h"
#include "platform/text/QorMsgCatalog.h"
#include "platform/vis/QorRdgPictureFormats.h"
#include "quickrender/QorRdgEasyRenderDialog.h"
#include "quickrender/QorRdgPictureWriter.h"

#include <new>

namespace {

constexpr const char* texts = "QorRdgEasyRenderDialog";
constexpr const char* fileBox = "fileBox";

/// The child dialog of that name that a person sees; null when there is none.
QorDlgDialog* FindShown(const QorCommand& iFather, const char* iName) {
    for (QorDlgDialog* one : QorDlgDialog::GetAll())
        if (one->GetFather() == &iFather && one->GetName() == iName && one->CanAct())
            return one;
    return nullptr;
}

QorUnicodeString CommonText(const char* iKey) {
    return QorMsgCatalog::BuildMessage("QorRscScene", iKey);
}

/// The part of \p iImage that was rendered; null when nothing is, or memory is short.
QorPixelImage_var Cut(const QorPixelImage& iImage, const QorRdgWindow& iRegion) {
    try {
        return QorAdopt(iImage.ExtractRegion(iRegion.x1, iRegion.y1, iRegion.x2, iRegion.y2));
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

} // namespace

void QorRdgEasyRenderDialog::SaveCB(QorCommand* /*iCommand*/,
                                    QorNotification* /*iNotification*/,
                                    QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgEasyRenderDialog::SaveCB) \n");
    if (QorDlgDialog* open = FindShown(*this, fileBox)) {
        open->SetVisibility(QorDlgSHOW);
        return;
    }
    auto* dialog = new QorDlgStdFile(this, fileBox, QorDlgFileSave | QorDlgWndModal,
                                     QorRdgPictureFormats::GetExtensions());
    dialog->SetTitle(QorMsgCatalog::BuildMessage("QorFMNotify", "SaveAsTitle"));
    QorRdgPictureFormats::SetFilters(*dialog);
    AddAnalyseNotificationCB(this, dialog, dialog->GetFileSelectionOKNotification(),
                             &QorRdgEasyRenderDialog::SaveOKCB);
    for (const QorNotification* end :
         {dialog->GetFileSelectionCancelNotification(), dialog->GetWindCloseNotification()})
        AddAnalyseNotificationCB(this, dialog, end, &QorRdgEasyRenderDialog::SaveCancelCB);
    dialog->SetVisibility(QorDlgSHOW);
}

void QorRdgEasyRenderDialog::SaveCancelCB(QorCommand* iCommand,
                                          QorNotification* /*iNotification*/,
                                          QorSubscriberData /*iData*/) {
    QorTrace(3, "(QorRdgEasyRenderDialog::SaveCancelCB) \n");
    if (iCommand != nullptr)
        iCommand->RequestDelayedDestruction();
}

void QorRdgEasyRenderDialog::SaveOKCB(QorCommand* iCommand,
                                      QorNotification* /*iNotification*/,
                                      QorSubscriberData /*iData*/) {
    QorTrace(3, "(QorRdgEasyRenderDialog::SaveOKCB) File has been selected\n");
    const QorVar<QorDlgFile> dialog(dynamic_cast<QorDlgFile*>(iCommand));
    if (!dialog || !image)
        return;
    const int filter = dialog->GetActiveFilterIndex();
    QorUnicodeString path = QorRdgPictureFormats::AddExtension(dialog->GetSelection(), filter);
    const int code = filter + 1;
    QorTrace(3, "(QorRdgEasyRenderDialog::SaveOKCB) frameFmt=%d\n", code);
    if (MayWrite(*dialog, path))
        WriteImage(*dialog, path, code);
    dialog->RequestDelayedDestruction();
}

/// Whether there is no such file, or the person wants it to be replaced.
bool QorRdgEasyRenderDialog::MayWrite(QorDlgFile& iDialog, const QorUnicodeString& iPath) const {
    QorFileInfo there;
    if (QorGetFileInfo(iPath, &there) != 0 || there.isDirectory)
        return true; // a folder cannot be replaced: writing will say so
    const QorVar<QorFrmNotify> box(
        new QorFrmNotify(&iDialog, "errNotify", QorNotifyKind::Warning, QorNotifyButtons::YesNo));
    const int answer =
        box->DisplayBlocked(QorMsgCatalog::BuildMessage(texts, "ImageOverwriteWarning", {iPath}),
                            CommonText("WarningStr"));
    box->RequestDelayedDestruction();
    return answer == QorNotifyConfirm;
}

void QorRdgEasyRenderDialog::WriteImage(QorDlgFile& iDialog, QorUnicodeString& iPath, int iCode) {
    if (!image)
        return; // a new render has begun while the question was open
    const QorPixelImage_var part = Cut(*image, imageRegion);
    if (!part)
        return;
    part->SetPixelsPerInch(imageDensity);
    iDialog.SetVisibility(QorDlgHIDE); // it is closed in any case, and writing may take a while
    const int result = SaveImage(part, iPath, iCode);
    if (result == 0 || result == QorRdgPictureWriter::givenUp)
        return;
    QorTrace(3, "(QorRdgEasyRenderDialog::SaveOKCB) ERROR:%d\n", result);
    const QorVar<QorFrmNotify> box(new QorFrmNotify(&iDialog, "errNotify", QorNotifyKind::Error));
    box->DisplayBlocked(QorMsgCatalog::BuildMessage(texts, "ImageSaveError", {iPath, saveError}),
                        CommonText("ErrorStr"));
    box->RequestDelayedDestruction();
}

int QorRdgEasyRenderDialog::SaveImage(QorPixelImage* iImage,
                                      QorUnicodeString& iFileName,
                                      int iCode) {
    QorTrace(4, "(QorRdgEasyRenderDialog::SaveImage) image=%x filename='%s' fmt=%d\n",
             QorTraceId(iImage), iFileName.CastToCharPtr(), iCode);
    if (iImage == nullptr)
        return -1;
    const char* keyword = QorRdgPictureFormats::GetKeyword(iCode);
    QorTrace(4, "(QorRdgEasyRenderDialog::SaveImage) format=%s\n", keyword);
    saveError = QorUnicodeString();
    const int result = QorRdgPictureWriter::Write(*this, *iImage, keyword, iFileName, saveError);
    QorTrace(4, "(QorRdgEasyRenderDialog::SaveImage) filename='%s' rc=%d\n",
             iFileName.CastToCharPtr(), result);
    return result;
}
