#include "scenes/QorRdgScenePredefinedFrame.h"

#include "platform/dialog/QorDlgDialog.h"
#include "platform/system/QorTrace.h"
#include "scenes/QorRdgIconList.h"
#include "scenes/QorRdgSceneManager.h"

QorImplementClass(QorRdgScenePredefinedFrame, QorRdgSceneFrame)

namespace {

constexpr float listWidth = 232.0F;
constexpr float listHeight = 523.0F;

} // namespace

QorRdgScenePredefinedFrame::QorRdgScenePredefinedFrame(QorCommand* iFather,
                                                       const QorString& iName,
                                                       QorDlgStyle iStyle)
    : QorRdgSceneFrame(iFather, iName, iStyle | QorDlgGridLayout) {
    QorTrace(2, "(QorRdgScenePredefinedFrame::QorRdgScenePredefinedFrame) Constructor\n");
    iconList = new QorRdgIconList(this, "iconList", listWidth, listHeight,
                                  QorDlgFraNoTitle | QorDlgFraNoFrame);
    Attach4Sides(iconList);
    AddAnalyseNotificationCB(this, iconList, iconList->GetSelectNotification(),
                             &QorRdgScenePredefinedFrame::SelectCB);
    AddAnalyseNotificationCB(this, iconList, iconList->GetActivateNotification(),
                             &QorRdgScenePredefinedFrame::ActivateCB);
    Init();
}

QorRdgScenePredefinedFrame::~QorRdgScenePredefinedFrame() {
    QorTrace(2, "(QorRdgScenePredefinedFrame::~QorRdgScenePredefinedFrame) Destructor\n");
    CleanUp();
}

void QorRdgScenePredefinedFrame::Init() {
    QorTrace(4, "(QorRdgScenePredefinedFrame::Init) \n");
    QorRdgSceneManager* manager = QorRdgSceneManager::GetManager();
    const int count = manager->GetPredefinedSceneCount();
    if (count <= 0)
        return;
    std::vector<QorUnicodeString> titles;
    std::vector<QorUnicodeString> images;
    for (int i = 0; i < count; ++i) {
        const QorRdgScene* scene = manager->GetPredefinedScene(i);
        titles.push_back(scene != nullptr ? scene->title : QorUnicodeString());
        images.emplace_back(scene != nullptr ? scene->backgroundImage.Str() : std::string());
    }
    iconList->SetIcons(titles.data(), images.data(), count, -1, QorRdgIconList::appendMode);
    const int chosen = manager->GetPredefinedSceneIndex();
    iconList->Select(chosen, QorDlgNoNotify);
    iconList->ScrollToRow(chosen / iconList->GetColumnCount());
    manager->SetScene(manager->GetPredefinedScene(chosen));
}

void QorRdgScenePredefinedFrame::ApplySelection() {
    int selected = 0;
    QorRdgSceneManager* manager = QorRdgSceneManager::GetManager();
    if (iconList != nullptr && iconList->GetSelection(selected) != 0)
        manager->SetScene(manager->GetPredefinedScene(selected));
}

void QorRdgScenePredefinedFrame::SelectCB(QorCommand* /*iSender*/,
                                          QorNotification* /*iNotification*/,
                                          QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgScenePredefinedFrame::SelectCB) \n");
    ApplySelection();
}

void QorRdgScenePredefinedFrame::ActivateCB(QorCommand* /*iSender*/,
                                            QorNotification* /*iNotification*/,
                                            QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgScenePredefinedFrame::ActivateCB) \n");
    ApplySelection();
    if (auto* dialog = dynamic_cast<QorDlgDialog*>(GetWindow()))
        dialog->SendNotification(dialog, dialog->GetDiaOKNotification());
}

void QorRdgScenePredefinedFrame::Commit() {
    QorTrace(4, "(QorRdgScenePredefinedFrame::Commit) \n");
    int selected = 0; // the first scene when nothing is selected, not the choice before: meant
    if (iconList != nullptr)
        iconList->GetSelection(selected);
    QorRdgSceneManager::GetManager()->SetPredefinedScene(selected);
    CleanUp();
}

void QorRdgScenePredefinedFrame::Rollback() {
    QorTrace(4, "(QorRdgScenePredefinedFrame::Rollback) \n");
    CleanUp();
}

void QorRdgScenePredefinedFrame::CleanUp() {
    QorTrace(4, "(QorRdgScenePredefinedFrame::CleanUp) \n");
    iconList = nullptr; // the widget goes with the frame
}
