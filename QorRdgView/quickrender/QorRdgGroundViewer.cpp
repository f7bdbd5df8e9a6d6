#include "quickrender/QorRdgGroundViewer.h"

#include "platform/frame/QorCommandHeader.h"
#include "platform/system/QorTrace.h"
#include "scenes/QorRdgSceneViewer.h"

#include <algorithm>

QorImplementClass(QorRdgGroundManipulator, Qor3DManipulator)
QorImplementClass(QorRdgGroundViewer, QorRdgViewerAdapter)

QorDefineBOA(QorIRdgGround, QorRdgGroundViewer)

    namespace {

    constexpr double sizeByExtent = 1.5;

    /// The frame in which the product is measured: the vertical is its third axis, the first lies
    /// as near to the x axis as that allows, or to the y axis when the vertical is x.
    QorMathTransformation FrameAlong(const QorMathVector& iVertical) {
        QorMathVector across = iVertical ^ QorMathVector { 1.0, 0.0, 0.0 };
        if (across == QorMathVector{})
            across = iVertical ^ QorMathVector { 0.0, 1.0, 0.0 };
        QorMathTransformation frame;
        frame.axes = {{(across ^ iVertical).Normalized(), across.Normalized(), iVertical}};
        return frame;
    }

    /// The ground's middle and vertical, where the manipulator is shown.
    QorMathAxis AxesOf(const QorRsc3DGroundRep& iGround) {
        QorMathTransformation axes = FrameAlong(iGround.GetVertical());
        axes.origin = iGround.GetOrigin();
        return QorMathAxis(axes);
    }

    QorRsc3DGroundRep_var MakeGround(Qor3DViewer & iViewer) {
        const QorMathVector& vertical = iViewer.GetVertical();
        const QorMathTransformation frame = FrameAlong(vertical);
        const Qor3DBoundingBox box =
            Qor3DBoundingBoxRender(frame.Inverse()).Render(iViewer.GetMain3DViewpoint()->GetRoot());
        if (box.IsEmpty())
            return QorMake<QorRsc3DGroundRep>(QorMathPoint{}, vertical, 0.0);
        const QorMathPoint middle = box.Center();
        const QorMathVector extent = box.Extent();
        return QorMake<QorRsc3DGroundRep>(frame.Apply({middle.x, middle.y, box.low.z}), vertical,
                                          sizeByExtent * std::max(extent.x, extent.y));
    }

    /// The command "Ground" shows whether the current viewer has one.
    void TellCommand(const Qor3DViewer& iViewer) {
        QorCommandHeader* header = QorCommandHeader::GetHeaderFromList("Ground", 1);
        if (header != nullptr && QorRdgSceneViewer::GetCurrent() == &iViewer)
            header->SetCheckState(iViewer.GetGround() != nullptr ? QorDlgCheck : QorDlgUncheck,
                                  QorDlgNoNotify);
    }

} // namespace

QorRdgGroundManipulator::QorRdgGroundManipulator(QorCommand* iFather,
                                                 const QorString& iName,
                                                 QorViewer* iViewer,
                                                 QorRsc3DGroundRep* iGround)
    : Qor3DManipulator(iFather, iName, iViewer, iGround, AxesOf(*iGround)), ground(iGround) {}

QorMathPoint QorRdgGroundManipulator::PointUnder(const QorMouseEvent& iMouse,
                                                 const QorMathPoint& iPoint,
                                                 const QorMathVector& iNormal) const {
    float width = 0.0F;
    float height = 0.0F;
    GetViewer()->GetGraphicSize(width, height);
    QorMathPoint near;
    QorMathPoint far;
    held->ComputeModelFromDeviceEvent(iMouse.pixel, width, height, near, far);
    const QorMathVector direction = (far - near).Normalized();
    const double slope = iNormal * direction;
    return slope == 0.0 ? iPoint : near + direction * ((iNormal * (iPoint - near)) / slope);
}

void QorRdgGroundManipulator::BeginDrag(const QorMouseEvent& iMouse,
                                        const std::vector<QorVar<QorRep>>& /*iPath*/) {
    held = GetViewer()->Get3DViewpointAt(iMouse.pixel);
    picked = PointUnder(iMouse, ground->GetOrigin(), ground->GetVertical());
}

void QorRdgGroundManipulator::Drag(const QorMouseEvent& iMouse) {
    const QorMathPoint now = PointUnder(iMouse, picked, held->GetSight());
    ground->Translate((now - picked) * ground->GetVertical());
    SetPosition(AxesOf(*ground));
    GetViewer()->Draw();
    picked = now;
}

QorRdgGroundViewer::QorRdgGroundViewer(QorBaseUnknown* iOwner) : QorImplements(iOwner) {
    QorTrace(2, "(QorRdgGroundViewer::QorRdgGroundViewer) Constructor\n");
}

QorRdgGroundViewer::~QorRdgGroundViewer() {
    QorTrace(2, "(QorRdgGroundViewer::~QorRdgGroundViewer) Destructor\n");
    CleanUp();
    QorTrace(2, "(QorRdgGroundViewer::~QorRdgGroundViewer) Done\n");
}

void QorRdgGroundViewer::DoInit(Qor3DViewer& /*iViewer*/) {
    QorTrace(4, "(QorRdgGroundViewer::Init) \n");
}

void QorRdgGroundViewer::DoCleanUp(Qor3DViewer& iViewer) {
    QorTrace(4, "(QorRdgGroundViewer::CleanUp) \n");
    RemoveGround(iViewer);
    QorTrace(4, "(QorRdgGroundViewer::CleanUp) Done\n");
}

QorResult QorRdgGroundViewer::SetGroundOn(int iOn) {
    if (!Init())
        return E_FAIL;
    if (iOn == 1 && !ground)
        AddGround(*GetViewer());
    else if (iOn == 0 && ground)
        RemoveGround(*GetViewer());
    return S_OK;
}

QorResult QorRdgGroundViewer::SetGroundVisible(bool iVisible) {
    return SetGroundOn(iVisible ? 1 : 0);
}

void QorRdgGroundViewer::AddGround(Qor3DViewer& ioViewer) {
    ground = MakeGround(ioViewer);
    ioViewer.SetGround(ground);
    manipulator = QorMake<QorRdgGroundManipulator>(nullptr, "groundManipulator", &ioViewer, ground);
    ioViewer.Draw();
    TellCommand(ioViewer);
}

void QorRdgGroundViewer::RemoveGround(Qor3DViewer& ioViewer) {
    if (!ground)
        return;
    manipulator->Detach();
    manipulator.Reset();
    ioViewer.SetGround(nullptr);
    ground.Reset();
    ioViewer.Draw();
    TellCommand(ioViewer);
}

QorResult QorRdgGroundViewer::SetTransparency(float iValue) {
    if (!Init() || !ground)
        return E_FAIL;
    ground->SetTransparency(iValue);
    GetViewer()->Draw();
    return S_OK;
}

QorResult QorRdgGroundViewer::SetReflectivity(float iValue) {
    if (!Init() || !ground)
        return E_FAIL;
    ground->SetReflectivity(iValue);
    GetViewer()->Draw();
    return S_OK;
}
