// The custom frame's handlers of background and ground.
#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgEditor.h"
#include "platform/dialog/QorDlgSlider.h"
#include "platform/frame/QorFrmFile.h"
#include "platform/frame/QorFrmNotify.h"
#include "platform/system/QorPaths.h"
#include "platform/system/QorTrace.h"
#include "platform/text/QorMsgCatalog.h"
#include "scenes/QorRdgSceneCustomFrame.h"
#include "scenes/QorRdgSceneManager.h"

#include <utility>

namespace {

constexpr const char* commonCatalog = "QorRscScene";

struct Filter {
    const char* label;
    const char* pattern;
};

constexpr Filter filters[] = {
    {"allLabel", "*.bmp *.jpg *.pic *.png *.psd *.rgb *.tga *.tif"},
    {"bmpLabel", "*.bmp"},
    {"jpgLabel", "*.jpg"},
    {"picLabel", "*.pic"},
    {"pngLabel", "*.png"},
    {"psdLabel", "*.psd"},
    {"rgbLabel", "*.rgb"},
    {"tgaLabel", "*.tga"},
    {"tifLabel", "*.tif"},
};

void SetFilters(QorFrmFile& ioBox) {
    std::vector<QorUnicodeString> labels;
    std::vector<QorString> patterns;
    for (const Filter& filter : filters) {
        labels.push_back(QorMsgCatalog::BuildMessage("QorRdgSceneCustomFrame", filter.label));
        patterns.emplace_back(filter.pattern);
    }
    ioBox.SetFilterStrings(labels.data(), patterns.data(), static_cast<int>(labels.size()));
}

} // namespace

void QorRdgSceneCustomFrame::ApplyBackground() {
    const QorUnicodeString image = backgroundEditor->GetText().Strip();
    QorRdgSceneManager::GetManager()->SetBackground(
        QorString(image.Str()), backgroundStretchCheck->GetState() == QorDlgCheck);
}

void QorRdgSceneCustomFrame::BackgroundOnCB(QorCommand* /*iSender*/,
                                            QorNotification* /*iNotification*/,
                                            QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgSceneCustomFrame::BackgroundOnCB) \n");
    const bool isOn = backgroundCheck->GetState() == QorDlgCheck;
    if (isOn)
        ApplyBackground();
    else
        QorRdgSceneManager::GetManager()->SetBackground();
    backgroundFrame->SetSensitivity(isOn ? QorDlgENABLE : QorDlgDISABLE);
}

void QorRdgSceneCustomFrame::BackgroundModifiedCB(QorCommand* /*iSender*/,
                                                  QorNotification* /*iNotification*/,
                                                  QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgSceneCustomFrame::BackgroundModifiedCB) \n");
    if (!backgroundEditor->GetText().Strip().IsNull()) {
        ApplyBackground();
        return;
    }
    const QorVar<QorFrmNotify> box(new QorFrmNotify(this, "errNotify", QorNotifyKind::Error));
    box->DisplayBlocked(QorMsgCatalog::BuildMessage(commonCatalog, "EmptyFilenameError"),
                        QorMsgCatalog::BuildMessage(commonCatalog, "ErrorStr"));
    box->RequestDelayedDestruction();
}

void QorRdgSceneCustomFrame::DisplayModifiedCB(QorCommand* /*iSender*/,
                                               QorNotification* /*iNotification*/,
                                               QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgSceneCustomFrame::DisplayModifiedCB) \n");
    if (!backgroundEditor->GetText().Strip().IsNull())
        ApplyBackground();
}

void QorRdgSceneCustomFrame::BackgroundBrowseCB(QorCommand* /*iSender*/,
                                                QorNotification* /*iNotification*/,
                                                QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgSceneCustomFrame::BackgroundBrowseCB) \n");
    if (fileBox != nullptr) {
        fileBox->SetVisibility(QorDlgSHOW); // raised
        return;
    }
    fileBox = new QorFrmFile(this, "fileBox");
    SetFilters(*fileBox);
    QorUnicodeString directory;
    QorUnicodeString fileName;
    QorSplitPath(QorGetImagePathName(backgroundEditor->GetText().Strip()), directory, fileName);
    fileBox->SetDirectory(directory);
    AddAnalyseNotificationCB(this, fileBox, fileBox->GetFileSelectionOKNotification(),
                             &QorRdgSceneCustomFrame::BackgroundBrowseOKCB);
    for (const QorNotification* end :
         {fileBox->GetFileSelectionCancelNotification(), fileBox->GetWindCloseNotification()})
        AddAnalyseNotificationCB(this, fileBox, end,
                                 &QorRdgSceneCustomFrame::BackgroundBrowseCancelCB);
    fileBox->SetVisibility(QorDlgSHOW);
}

void QorRdgSceneCustomFrame::BackgroundBrowseOKCB(QorCommand* iSender,
                                                  QorNotification* iNotification,
                                                  QorSubscriberData iData) {
    QorTrace(3, "(QorRdgSceneCustomFrame::BackgroundBrowseOKCB) \n");
    if (fileBox == nullptr)
        return;
    backgroundEditor->SetText(fileBox->GetSelection());
    ApplyBackground();
    BackgroundBrowseCancelCB(iSender, iNotification, iData);
}

void QorRdgSceneCustomFrame::BackgroundBrowseCancelCB(QorCommand* /*iSender*/,
                                                      QorNotification* /*iNotification*/,
                                                      QorSubscriberData /*iData*/) {
    QorTrace(3, "(QorRdgSceneCustomFrame::BackgroundBrowseCancelCB) \n");
    if (fileBox != nullptr)
        std::exchange(fileBox, nullptr)->RequestDelayedDestruction();
}

void QorRdgSceneCustomFrame::GroundOnCB(QorCommand* /*iSender*/,
                                        QorNotification* /*iNotification*/,
                                        QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgSceneCustomFrame::GroundOnCB) \n");
    const bool isOn = groundCheck->GetState() == QorDlgCheck;
    QorRdgSceneManager* manager = QorRdgSceneManager::GetManager();
    if (isOn)
        manager->SetGround(static_cast<float>(pairs[Transparency].GetValue()),
                           static_cast<float>(pairs[Reflectivity].GetValue()));
    else
        manager->SetGround();
    groundFrame->SetSensitivity(isOn ? QorDlgENABLE : QorDlgDISABLE);
}

void QorRdgSceneCustomFrame::GroundModifiedCB(QorCommand* iSender,
                                              QorNotification* /*iNotification*/,
                                              QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgSceneCustomFrame::GroundModifiedCB) \n");
    // The viewer shows the new value with the next switch of the ground or Commit: meant.
    for (const Pair pair : {Transparency, Reflectivity})
        if (pairs[pair].slider == iSender)
            pairs[pair].ShowSlider();
}
