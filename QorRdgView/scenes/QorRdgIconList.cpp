#include "scenes/QorRdgIconList.h"

#include "platform/dialog/QorDlgScrollBar.h"
#include "platform/system/QorTrace.h"
#include "scenes/QorRdgIconReps.h"
#include "scenes/QorRdgIconViewer.h"

#include <algorithm>

QorImplementClass(QorRdgIconList, QorDlgFrame)

QorRdgIconList::QorRdgIconList(
    QorCommand* iFather, const QorString& iName, float iWidth, float iHeight, QorDlgStyle iStyle)
    : QorDlgFrame(iFather, iName, iStyle)
    , thumbnails([this](int iRequest, const QorPixelImage_var& iThumbnail) {
        ThumbnailReady(iRequest, iThumbnail);
    }) {
    QorTrace(2, "(QorRdgIconList::QorRdgIconList) Constructor\n");
    SetStackOrientation(QorOrientation::Horizontal);
    BuildViewer(iWidth, iHeight);
    BuildScrollBar(iHeight);
    Subscribe();
    SetTop(0.0, true);
}

QorRdgIconList::~QorRdgIconList() {
    QorTrace(2, "(QorRdgIconList::~QorRdgIconList) Destructor\n");
    CleanUp();
}

void QorRdgIconList::BuildViewer(float iWidth, float iHeight) {
    viewer = new QorRdgIconViewer(this, "viewer", iWidth, iHeight);
    viewer->SetBackgroundColor({255, 255, 255, 255});
    viewer->SetAttachment(QorSideAll); // up to the scroll bar
    root = QorMake<Qor2DBagRep>();
    viewer->AddRep(root);
    manipulator = new Qor2DManipulator(this, "manipulator", viewer, viewer->GetMain2DViewpoint());
    manipulator->SetRep(root);
    manipulator->SetTakesRest(true); // a click beside the icons takes the selection away
    manipulator->SetCursor(QorCursor::Arrow);
}

void QorRdgIconList::BuildScrollBar(float iHeight) {
    scrollbar = new QorDlgScrollBar(this, "scrollbar", QorDlgVertical);
    scrollbar->SetAttachment(QorSideRight | QorSideTop | QorSideBottom);
    scrollbar->SetVisibility(QorDlgHIDE);
    scrollbar->SetScrollRange(0, 0);
    scrollbar->SetScrollBoxSize(static_cast<int>(iHeight));
    scrollbar->SetScrollPos(0);
}

void QorRdgIconList::Subscribe() {
    destroyedId = viewer->GetCallbackManager()->AddCallback(this, QorViewer::VIEWER_DESTROYED,
                                                            &QorRdgIconList::ViewerDestroyedCB);
    modifiedId = viewer->GetMain2DViewpoint()->GetCallbackManager()->AddCallback(
        this, QorViewpoint::VIEWPOINT_MODIFIED, &QorRdgIconList::ViewpointModifiedCB);
    resizeId = viewer->GetSupport()->GetCallbackManager()->AddCallback(
        this, QorGraphicWindow::GRAPHICWINDOW_RESIZE, &QorRdgIconList::ResizeCB);
    activateId = AddAnalyseNotificationCB(this, manipulator, manipulator->GetActivate(),
                                          &QorRdgIconList::ActivateCB);
    editId = AddAnalyseNotificationCB(this, manipulator, manipulator->GetEdit(),
                                      &QorRdgIconList::EditCB);
    AddAnalyseNotificationCB(this, scrollbar, scrollbar->GetScrollBarModifyNotification(),
                             &QorRdgIconList::ScrollCB);
    AddAnalyseNotificationCB(this, scrollbar, scrollbar->GetScrollBarDragNotification(),
                             &QorRdgIconList::ScrollCB);
}

void QorRdgIconList::CleanUp() {
    QorTrace(4, "(QorRdgIconList::CleanUp) \n");
    if (viewer == nullptr)
        return;
    RemoveAnalyseNotificationCB(manipulator, activateId);
    RemoveAnalyseNotificationCB(manipulator, editId);
    manipulator->Detach();
    manipulator->RequestDelayedDestruction();
    manipulator = nullptr;
    viewer->RemoveRep(root);
    root.Reset();
    highlight.Reset();
    waiting.clear();
    viewer->GetCallbackManager()->RemoveCallback(destroyedId);
    viewer->GetMain2DViewpoint()->GetCallbackManager()->RemoveCallback(modifiedId);
    viewer->GetSupport()->GetCallbackManager()->RemoveCallback(resizeId);
    viewer = nullptr;
}

void QorRdgIconList::ViewerDestroyedCB(QorEventName /*iEvent*/,
                                       QorBaseUnknown* /*iPublisher*/,
                                       QorNotification* /*iNotification*/,
                                       QorSubscriberData /*iData*/,
                                       QorCallbackId /*iCookie*/) {
    QorTrace(4, "(QorRdgIconList::ViewerDestroyedCB) \n");
    CleanUp();
}

QorVar<Qor2DBagRep> QorRdgIconList::BuildIconRep(const QorUnicodeString& iImage,
                                                 const QorUnicodeString& iTitle) {
    QorTrace(4, "(QorRdgIconList::BuildIconRep) \n");
    QorVar<Qor2DBagRep> iconRep = QorRdgIconReps::MakeIcon(iTitle);
    if (!iImage.IsNull()) {
        thumbnails.Request(static_cast<int>(waiting.size()), iImage);
        waiting.push_back(iconRep);
    }
    return iconRep;
}

void QorRdgIconList::ThumbnailReady(int iRequest, const QorPixelImage_var& iThumbnail) {
    const auto place = static_cast<std::size_t>(iRequest);
    if (place >= waiting.size() || !waiting[place])
        return;
    QorRdgIconReps::AddThumbnail(*waiting[place], iThumbnail);
    waiting[place].Reset();
    if (viewer != nullptr)
        viewer->Draw();
}

int QorRdgIconList::SetIcons(const QorUnicodeString* iTitles,
                             const QorUnicodeString* iImages,
                             int iCount,
                             int iPosition,
                             int iMode) {
    QorTrace(4, "(QorRdgIconList::SetIcons) iCount=%d\n", iCount);
    if (iTitles == nullptr || iImages == nullptr || iCount <= 0)
        return -1;
    int count = 0;
    bulkUpdate = true;
    for (int k = 0; k < iCount; ++k)
        if (AddIcon(iTitles[k], iImages[k], iPosition, iMode) != 0)
            ++count;
    bulkUpdate = false;
    thumbnails.Start();
    if (count != 0 && viewer != nullptr) {
        Relayout();
        viewer->Draw();
    }
    return count;
}

int QorRdgIconList::AddIcon(const QorUnicodeString& iTitle,
                            const QorUnicodeString& iImage,
                            int iPosition,
                            int iMode) {
    QorTrace(4, "(QorRdgIconList::AddIcon) iPosition=%d\n", iPosition);
    const int count = IconCount();
    if (!root || iPosition < -1 || iPosition > count)
        return -1;
    const bool append = iPosition == -1 || iPosition == count;
    const bool replace = !append && iMode == replaceMode;
    const auto place = static_cast<std::size_t>(append ? count : iPosition);
    const QorVar<Qor2DBagRep> iconRep = BuildIconRep(iImage, iTitle);

    // Those that come after it are put behind it again.
    const std::vector<Qor2DRep_var>& icons = root->GetChildren();
    const std::vector<Qor2DRep_var> after(icons.begin() + static_cast<std::ptrdiff_t>(place),
                                          icons.begin() + count);
    if (replace)
        root->RemoveChild(after.front());
    root->AddChild(iconRep);
    for (std::size_t i = replace ? 1U : 0U; i < after.size(); ++i)
        root->AddChild(after[i]);
    RaiseHighlight();

    const auto named = titles.begin() + static_cast<std::ptrdiff_t>(place);
    if (replace)
        *named = iTitle;
    else
        titles.insert(named, iTitle);
    PlaceIcons(place);
    if (!bulkUpdate) {
        thumbnails.Start();
        viewer->Draw();
    }
    return append ? count + 1 : iPosition;
}

void QorRdgIconList::PlaceIcons(std::size_t iFirst) {
    const std::vector<Qor2DRep_var>& icons = root->GetChildren();
    for (std::size_t i = iFirst; i < titles.size(); ++i)
        static_cast<Qor2DBagRep*>(icons[i].Get())
            ->SetTranslation(QorRdgIconReps::CellOrigin(static_cast<int>(i), columns));
}

void QorRdgIconList::RaiseHighlight() {
    if (highlight)
        root->AddChild(highlight);
}

void QorRdgIconList::RemoveHighlight() {
    if (!highlight)
        return;
    root->RemoveChild(highlight);
    highlight.Reset();
}

int QorRdgIconList::Select(int i, QorDlgNotifyFlag iNotify) {
    QorTrace(4, "(QorRdgIconList::Select) i=%d\n", i);
    if (!root)
        return 0;
    RemoveHighlight();
    const bool valid = i >= 0 && i < IconCount();
    if (valid) {
        selected = i;
        highlight = QorRdgIconReps::MakeHighlight(titles[static_cast<std::size_t>(i)]);
        highlight->SetTranslation(QorRdgIconReps::CellOrigin(i, columns));
        root->AddChild(highlight);
        viewer->Draw();
    }
    if (iNotify == QorDlgDoNotify)
        SendNotification(GetFather(), selectNotification.Get());
    return valid ? 1 : 0;
}

int QorRdgIconList::GetSelection(int& oI) const {
    if (selected < 0 || selected >= IconCount())
        return 0;
    oI = selected;
    return 1;
}

bool QorRdgIconList::SelectPicked(const QorNotification* iNotification) {
    const auto* picked = dynamic_cast<const QorManipulatorNotification*>(iNotification);
    if (picked == nullptr || picked->GetPickPath().size() <= 2 || !root)
        return false;
    const std::vector<Qor2DRep_var>& icons = root->GetChildren();
    const auto found = std::find_if(icons.begin(), icons.end(), [&](const Qor2DRep_var& iOne) {
        return static_cast<QorRep*>(iOne.Get()) == picked->GetPickPath()[1].Get();
    });
    if (found == icons.end())
        return false;
    Select(static_cast<int>(found - icons.begin()), QorDlgNoNotify);
    return true;
}

void QorRdgIconList::ActivateCB(QorCommand* /*iSender*/,
                                QorNotification* iNotification,
                                QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgIconList::ActivateCB) \n");
    if (!SelectPicked(iNotification) && root) {
        selected = -1;
        RemoveHighlight();
        viewer->Draw();
    }
    SendNotification(GetFather(), selectNotification.Get());
}

void QorRdgIconList::EditCB(QorCommand* /*iSender*/,
                            QorNotification* iNotification,
                            QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgIconList::EditCB) \n");
    if (!SelectPicked(iNotification) && root) {
        selected = -1;
        RemoveHighlight();
        viewer->Draw();
    }
    SendNotification(GetFather(), activateNotification.Get());
}
