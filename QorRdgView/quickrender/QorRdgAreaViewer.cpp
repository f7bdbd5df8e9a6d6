#include "quickrender/QorRdgAreaViewer.h"

#include "platform/system/QorTrace.h"

#include <utility>

QorImplementClass(QorRdgAreaViewer, QorRdgViewerAdapter)

QorDefineBOA(QorIRdgArea, QorRdgAreaViewer)

    QorRdgAreaViewer::QorRdgAreaViewer(QorBaseUnknown* iOwner)
    : QorImplements(iOwner), publisher(std::make_unique<QorCallbackManager>()) {
    QorTrace(2, "(QorRdgAreaViewer::QorRdgAreaViewer) Constructor\n");
}

QorRdgAreaViewer::~QorRdgAreaViewer() {
    QorTrace(2, "(QorRdgAreaViewer::~QorRdgAreaViewer) Destructor\n");
    CleanUp();
    QorTrace(2, "(QorRdgAreaViewer::~QorRdgAreaViewer) Done\n");
}

void QorRdgAreaViewer::DoInit(Qor3DViewer& /*iViewer*/) {
    QorTrace(4, "(QorRdgAreaViewer::Init) \n");
    for (const QorEventName event :
         {QorEventName(QorRdgAreaSelectorBEGIN_AREAEvt::ClassName()), GetEndAreaEvent()})
        selectorEvents.AddCallback(this, event, &QorRdgAreaViewer::AreaCB);
}

void QorRdgAreaViewer::DoCleanUp(Qor3DViewer& /*iViewer*/) {
    QorTrace(4, "(QorRdgAreaViewer::CleanUp) \n");
    RemoveSelector();
    publisher.reset();
    QorTrace(4, "(QorRdgAreaViewer::CleanUp) Done\n");
}

void QorRdgAreaViewer::RemoveSelector() {
    if (!selector)
        return;
    const QorVar<QorRdgAreaSelector> last = std::move(selector);
    selector.Reset();
    last->CleanUp();
}

QorResult QorRdgAreaViewer::SetAreaMode(bool iOn) {
    if (!Init() || GetViewer()->GetSupport() == nullptr)
        return E_FAIL;
    if (!iOn) {
        RemoveSelector();
    } else if (!selector) {
        selector = QorMake<QorRdgAreaSelector>(GetViewer(), &selectorEvents);
        selector->StartDrawing();
    }
    return S_OK;
}

QorResult QorRdgAreaViewer::GetAreaMode(int& oOn) {
    Init();
    oOn = selector ? 1 : 0;
    return S_OK;
}

QorResult QorRdgAreaViewer::SetArea(int iX1, int iY1, int iX2, int iY2) {
    if (!Init() || !selector)
        return E_FAIL;
    selector->SetArea(iX1, iY1, iX2, iY2);
    return S_OK;
}

QorResult QorRdgAreaViewer::GetArea(int& oX1, int& oY1, int& oX2, int& oY2) {
    if (!Init() || !selector || !selector->GetArea(oX1, oY1, oX2, oY2))
        return E_FAIL;
    return oX1 == 0 && oY1 == 0 && oX2 == 0 && oY2 == 0 ? E_FAIL : S_OK;
}

QorCallbackManager* QorRdgAreaViewer::GetAreaPublisher() {
    Init();
    return publisher.get();
}

QorEventName QorRdgAreaViewer::GetEndAreaEvent() {
    return QorRdgAreaSelectorEND_AREAEvt::ClassName();
}

void QorRdgAreaViewer::AreaCB(QorEventName iEvent,
                              QorBaseUnknown* /*iPublisher*/,
                              QorNotification* iNotification,
                              QorSubscriberData /*iData*/,
                              QorCallbackId /*iCookie*/) {
    if (publisher)
        publisher->DispatchCallbacks(iEvent, this, iNotification);
}
