#include "quickrender/QorRdgBackgroundViewer.h"

#include "platform/system/QorPaths.h"
#include "platform/system/QorTrace.h"

#include <algorithm>

QorImplementClass(QorRdgBackgroundViewer, QorRdgViewerAdapter)

QorDefineBOA(QorIRdgBackground, QorRdgBackgroundViewer)

    namespace {

    constexpr int behindTheModel = -1;

} // namespace

QorRdgBackgroundViewer::QorRdgBackgroundViewer(QorBaseUnknown* iOwner) : QorImplements(iOwner) {
    QorTrace(2, "(QorRdgBackgroundViewer::QorRdgBackgroundViewer) Constructor\n");
}

QorRdgBackgroundViewer::~QorRdgBackgroundViewer() {
    QorTrace(2, "(QorRdgBackgroundViewer::~QorRdgBackgroundViewer) Destructor\n");
    CleanUp();
    QorTrace(2, "(QorRdgBackgroundViewer::~QorRdgBackgroundViewer) Done\n");
}

void QorRdgBackgroundViewer::DoInit(Qor3DViewer& iViewer) {
    QorTrace(4, "(QorRdgBackgroundViewer::Init) \n");
    if (QorSupport* support = iViewer.GetSupport()) {
        viewpoint = MakePixelViewpoint(iViewer, behindTheModel);
        iViewer.AddViewpoint(viewpoint);
        support->GetCallbackManager()->AddCallback(this, QorGraphicWindow::GRAPHICWINDOW_RESIZE,
                                                   &QorRdgBackgroundViewer::ChangedCB);
    }
    for (const QorEventName& event : {Qor3DViewer::TREE_DISPLAY_ON, Qor3DViewer::TREE_DISPLAY_OFF})
        iViewer.GetCallbackManager()->AddCallback(this, event, &QorRdgBackgroundViewer::ChangedCB);
}

void QorRdgBackgroundViewer::DoCleanUp(Qor3DViewer& iViewer) {
    QorTrace(4, "(QorRdgBackgroundViewer::CleanUp) \n");
    if (QorSupport* support = iViewer.GetSupport())
        support->GetCallbackManager()->RemoveCallbacks(this,
                                                       QorGraphicWindow::GRAPHICWINDOW_RESIZE);
    for (const QorEventName& event : {Qor3DViewer::TREE_DISPLAY_ON, Qor3DViewer::TREE_DISPLAY_OFF})
        iViewer.GetCallbackManager()->RemoveCallbacks(this, event);
    iViewer.RemoveViewpoint(viewpoint);
    bag.Reset();
    viewpoint.Reset();
    picture.Reset();
    name = {};
    file.reset();
    QorTrace(4, "(QorRdgBackgroundViewer::CleanUp) Done\n");
}

QorResult QorRdgBackgroundViewer::SetBackground(const QorString& iImage, bool iStretch) {
    if (!Init() || !viewpoint)
        return E_FAIL;
    stretch = iStretch;
    if (!(iImage == name)) {
        picture.Reset();
        file.reset();
        name = iImage.Strip();
        Load();
    }
    Rebuild();
    return S_OK;
}

void QorRdgBackgroundViewer::Load() {
    if (name.IsNull())
        return;
    picture = QorAdopt(QorPixelImage::CreateFromFile(QorGetImagePathName(name.Str())));
    if (picture)
        file = std::make_unique<QorRdgTemporaryPicture>(*picture);
}

QorResult QorRdgBackgroundViewer::GetBackground(QorString& oImage, bool& oStretch) {
    if (!Init() || name.IsNull())
        return E_FAIL;
    oImage = name;
    oStretch = stretch;
    return S_OK;
}

QorResult QorRdgBackgroundViewer::RemoveBackground() {
    if (!Init())
        return E_FAIL;
    name = {};
    picture.Reset();
    file.reset();
    Rebuild();
    return S_OK;
}

void QorRdgBackgroundViewer::RemovePictureRep() {
    if (bag)
        viewpoint->RemoveRep(bag);
    bag.Reset();
}

void QorRdgBackgroundViewer::Rebuild() {
    RemovePictureRep();
    if (picture) {
        float width = 0.0F;
        float height = 0.0F;
        GetViewer()->GetGraphicSize(width, height);
        double across = static_cast<double>(width) / picture->GetWidth();
        double upwards = static_cast<double>(height) / picture->GetHeight();
        if (!stretch) // its own proportions, large enough to cover the viewer
            across = upwards = std::max(across, upwards);
        const QorMathPoint2D size{picture->GetWidth() * across, picture->GetHeight() * upwards};
        const QorVar<Qor2DImagePixelRep> rep = QorMake<Qor2DImagePixelRep>(
            QorMathPoint2D{-0.5 * size.x, -0.5 * size.y}, picture.Get(), 0, 0, 0, 0);
        rep->SetZoom(across, upwards);
        bag = QorMake<Qor2DBagRep>();
        bag->SetPickable(false);
        bag->AddChild(rep);
        viewpoint->AddRep(bag);
    }
    GetViewer()->Draw();
}

void QorRdgBackgroundViewer::ChangedCB(QorEventName /*iEvent*/,
                                       QorBaseUnknown* /*iPublisher*/,
                                       QorNotification* /*iNotification*/,
                                       QorSubscriberData /*iData*/,
                                       QorCallbackId /*iCookie*/) {
    if (GetViewer() != nullptr && picture)
        Rebuild();
}

QorUnicodeString QorRdgBackgroundViewer::GetTemporaryFile() const {
    return file ? file->GetPath() : QorUnicodeString();
}
