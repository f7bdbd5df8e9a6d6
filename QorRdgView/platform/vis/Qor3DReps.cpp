#include "platform/vis/Qor3DReps.h"

#include <algorithm>

QorImplementClass(Qor3DBagRep, Qor3DRep)
QorImplementClass(Qor3DMeshRep, Qor3DRep)
QorImplementClass(Qor3DLineRep, Qor3DRep)
QorImplementClass(Qor3DLightSourceRep, Qor3DRep)
QorImplementClass(QorRsc3DGroundRep, Qor3DRep)

namespace {

constexpr QorMathVector upwards{0.0, 0.0, 1.0};

/// Walks a tree and gathers every vertex in a frame of its own.
class BoxCollector : public QorRepVisitor3D {
public:
    explicit BoxCollector(const QorMathTransformation& iToFrame) : toFrame(iToFrame) {}

    void Visit(const Qor3DBagRep& iRep) override {
        if (!iRep.IsShown())
            return;
        const QorMathTransformation outer = toFrame;
        toFrame = outer * iRep.GetMatrix();
        for (const Qor3DRep_var& child : iRep.GetChildren())
            child->Accept(*this);
        toFrame = outer;
    }

    void Visit(const Qor3DMeshRep& iRep) override {
        if (!iRep.IsShown())
            return;
        // Most of what an assembly holds lies well inside of it.
        if (Holds(iRep.GetBoundingBox().Transformed(toFrame)))
            return;
        const std::vector<float>& positions = iRep.GetMesh()->GetData().positions;
        for (std::size_t i = 0; i + 2 < positions.size(); i += 3)
            box.Add(toFrame.Apply({positions[i], positions[i + 1], positions[i + 2]}));
    }

    void Visit(const Qor3DLineRep& iRep) override {
        if (!iRep.IsShown())
            return;
        for (const QorMathPoint& point : iRep.GetPoints())
            box.Add(toFrame.Apply(point));
    }

    void Visit(const Qor3DLightSourceRep& /*iRep*/) override {}

    void Visit(const QorRsc3DGroundRep& /*iRep*/) override {}

    [[nodiscard]] const Qor3DBoundingBox& GetBox() const { return box; }

private:
    [[nodiscard]] bool Holds(const Qor3DBoundingBox& iOther) const {
        return box.low.x <= iOther.low.x && box.low.y <= iOther.low.y &&
               box.low.z <= iOther.low.z && box.high.x >= iOther.high.x &&
               box.high.y >= iOther.high.y && box.high.z >= iOther.high.z;
    }

    QorMathTransformation toFrame;
    Qor3DBoundingBox box;
};

} // namespace

Qor3DBagRep::~Qor3DBagRep() {
    for (const Qor3DRep_var& child : children)
        child->RemoveWatcher(this);
}

void Qor3DBagRep::AddChild(Qor3DRep* iChild) {
    if (iChild == nullptr)
        return;
    const Qor3DRep_var child(iChild);
    if (child->IsWatchedBy(this))
        std::erase(children, child);
    else
        child->AddWatcher(this);
    children.push_back(child);
    Touched(QorRepChange::Extent);
}

void Qor3DBagRep::RemoveChild(Qor3DRep* iChild) {
    if (iChild == nullptr || !iChild->IsWatchedBy(this))
        return;
    const Qor3DRep_var child(iChild);
    child->RemoveWatcher(this);
    std::erase(children, child);
    Touched(QorRepChange::Extent);
}

void Qor3DBagRep::SetMatrix(const QorMathTransformation& iMatrix) {
    if (matrix == iMatrix)
        return;
    matrix = iMatrix;
    Touched(QorRepChange::Extent);
}

void Qor3DBagRep::Touched(QorRepChange iChange) {
    if (iChange == QorRepChange::Extent)
        boxIsKnown = false;
    Qor3DRep::Touched(iChange);
}

void Qor3DBagRep::RepChanged(QorRepChange iChange) {
    Touched(iChange);
}

Qor3DBoundingBox Qor3DBagRep::GetBoundingBox() const {
    if (boxIsKnown)
        return box;
    box = {};
    for (const Qor3DRep_var& child : children)
        if (child->IsShown())
            box.Add(child->GetBoundingBox().Transformed(matrix));
    boxIsKnown = true;
    return box;
}

void Qor3DBagRep::Accept(QorRepVisitor3D& ioVisitor) const {
    ioVisitor.Visit(*this);
}

Qor3DMeshRep::Qor3DMeshRep(QorMesh* iMesh, QorGraphicMaterial* iMaterial)
    : mesh(iMesh), material(iMaterial) {}

void Qor3DMeshRep::SetMaterial(QorGraphicMaterial* iMaterial) {
    if (material.Get() == iMaterial)
        return;
    material = iMaterial;
    Touched(QorRepChange::Look);
}

void Qor3DMeshRep::Accept(QorRepVisitor3D& ioVisitor) const {
    ioVisitor.Visit(*this);
}

Qor3DLineRep::Qor3DLineRep(std::vector<QorMathPoint> iPoints) : points(std::move(iPoints)) {}

Qor3DBoundingBox Qor3DLineRep::GetBoundingBox() const {
    Qor3DBoundingBox box;
    for (const QorMathPoint& point : points)
        box.Add(point);
    return box;
}

void Qor3DLineRep::Accept(QorRepVisitor3D& ioVisitor) const {
    ioVisitor.Visit(*this);
}

Qor3DLightSourceRep::Qor3DLightSourceRep(QorLightType iType,
                                         QorLightMode iMode,
                                         const QorMathPoint& iPosition,
                                         const QorMathVector& iDirection,
                                         float iAngle)
    : type(iType), mode(iMode), position(iPosition), direction(iDirection), angle(iAngle) {}

void Qor3DLightSourceRep::SetLocationParameters(const QorMathPoint& iPosition,
                                                const QorMathVector& iDirection) {
    position = iPosition;
    direction = iDirection;
    Touched(QorRepChange::Look);
}

void Qor3DLightSourceRep::SetColorParameters(const float iAmbient[4],
                                             const float iDiffuse[4],
                                             const float iSpecular[4]) {
    std::copy_n(iAmbient, 4, ambient);
    std::copy_n(iDiffuse, 4, diffuse);
    std::copy_n(iSpecular, 4, specular);
    Touched(QorRepChange::Look);
}

void Qor3DLightSourceRep::GetColorParameters(float oAmbient[4],
                                             float oDiffuse[4],
                                             float oSpecular[4]) const {
    std::copy_n(ambient, 4, oAmbient);
    std::copy_n(diffuse, 4, oDiffuse);
    std::copy_n(specular, 4, oSpecular);
}

void Qor3DLightSourceRep::Accept(QorRepVisitor3D& ioVisitor) const {
    ioVisitor.Visit(*this);
}

QorRsc3DGroundRep::QorRsc3DGroundRep(const QorMathPoint& iOrigin,
                                     const QorMathVector& iVertical,
                                     double iSize)
    : origin(iOrigin), vertical(iVertical.NormalizedOr(upwards)), size(iSize) {}

void QorRsc3DGroundRep::Translate(double iDistance) {
    origin = origin + vertical * iDistance;
    Touched(QorRepChange::Extent);
}

void QorRsc3DGroundRep::SetTransparency(float iValue) {
    transparency = std::clamp(iValue, 0.0F, 1.0F);
    Touched(QorRepChange::Look);
}

void QorRsc3DGroundRep::SetReflectivity(float iValue) {
    reflectivity = std::clamp(iValue, 0.0F, 1.0F);
    Touched(QorRepChange::Look);
}

Qor3DBoundingBox QorRsc3DGroundRep::GetBoundingBox() const {
    const QorMathTransformation frame = QorMathTransformation::FromZTo(vertical);
    Qor3DBoundingBox box;
    for (const double x : {-0.5, 0.5})
        for (const double y : {-0.5, 0.5})
            box.Add(origin + frame.ApplyToVector({x * size, y * size, 0.0}));
    return box;
}

void QorRsc3DGroundRep::Accept(QorRepVisitor3D& ioVisitor) const {
    ioVisitor.Visit(*this);
}

Qor3DBoundingBox Qor3DBoundingBoxRender::Render(const Qor3DBagRep& iBag) const {
    BoxCollector collector(toFrame);
    iBag.Accept(collector);
    return collector.GetBox();
}
