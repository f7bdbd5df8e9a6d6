#include "platform/vis/Qor2DReps.h"

#include <algorithm>

QorImplementClass(Qor2DBagRep, Qor2DRep)
QorImplementClass(Qor2DLineRep, Qor2DRep)
QorImplementClass(Qor2DPointRep, Qor2DRep)
QorImplementClass(Qor2DImagePixelRep, Qor2DRep)
QorImplementClass(Qor2DCustomRep, Qor2DRep)

namespace {

Qor2DBoundingBox BoxOf(const std::vector<QorMathPoint2D>& iPoints) {
    Qor2DBoundingBox box;
    for (const QorMathPoint2D& point : iPoints)
        box.Add(point);
    return box;
}

} // namespace

void Qor2DBagRep::AddChild(Qor2DRep* iChild) {
    if (iChild == nullptr)
        return;
    const Qor2DRep_var child(iChild);
    RemoveChild(iChild);
    children.push_back(child);
}

void Qor2DBagRep::RemoveChild(Qor2DRep* iChild) {
    std::erase_if(children, [&](const Qor2DRep_var& iOne) { return iOne.Get() == iChild; });
}

void Qor2DBagRep::SetMatrix(const std::array<double, 4>& iLinear,
                            const QorMathPoint2D& iTranslation) {
    linear = iLinear;
    translation = iTranslation;
}

void Qor2DBagRep::SetTranslation(const QorMathPoint2D& iTranslation) {
    translation = iTranslation;
}

Qor2DBoundingBox Qor2DBagRep::ComputeBox() const {
    Qor2DBoundingBox box;
    for (const Qor2DRep_var& child : children) {
        const Qor2DBoundingBox inner = child->GetBoundingBox();
        if (inner.IsEmpty())
            continue;
        for (const double x : {inner.low.x, inner.high.x})
            for (const double y : {inner.low.y, inner.high.y})
                box.Add(QorMathPoint2D{linear[0] * x + linear[2] * y + translation.x,
                                       linear[1] * x + linear[3] * y + translation.y});
    }
    return box;
}

void Qor2DBagRep::Accept(QorRepVisitor2D& ioVisitor) const {
    ioVisitor.Visit(*this);
}

Qor2DLineRep::Qor2DLineRep(std::vector<QorMathPoint2D> iPoints) : points(std::move(iPoints)) {}

Qor2DBoundingBox Qor2DLineRep::ComputeBox() const {
    return BoxOf(points);
}

void Qor2DLineRep::Accept(QorRepVisitor2D& ioVisitor) const {
    ioVisitor.Visit(*this);
}

Qor2DPointRep::Qor2DPointRep(const QorMathPoint2D& iPoint) : point(iPoint) {}

Qor2DBoundingBox Qor2DPointRep::ComputeBox() const {
    return BoxOf({point});
}

void Qor2DPointRep::Accept(QorRepVisitor2D& ioVisitor) const {
    ioVisitor.Visit(*this);
}

Qor2DImagePixelRep::Qor2DImagePixelRep(
    const QorMathPoint2D& iPosition, QorPixelImage* iImage, int iX, int iY, int iWidth, int iHeight)
    : position(iPosition), image(iImage), source{iX, iY, iWidth, iHeight} {
    if (image == nullptr)
        return;
    if (iWidth == 0)
        source[2] = image->GetWidth() - iX;
    if (iHeight == 0)
        source[3] = image->GetHeight() - iY;
}

void Qor2DImagePixelRep::SetZoom(double iX, double iY) {
    zoomX = iX;
    zoomY = iY;
}

QorMathPoint2D Qor2DImagePixelRep::GetSize() const {
    return {source[2] * zoomX, source[3] * zoomY};
}

Qor2DBoundingBox Qor2DImagePixelRep::ComputeBox() const {
    return BoxOf({position, position + GetSize()});
}

void Qor2DImagePixelRep::Accept(QorRepVisitor2D& ioVisitor) const {
    ioVisitor.Visit(*this);
}

const char* Qor2DCustomRep::GetKind() const {
    if (!rectangles.empty())
        return "rectangle";
    return quads.empty() ? "text" : "quads";
}

Qor2DBoundingBox Qor2DCustomRep::ComputeBox() const {
    Qor2DBoundingBox box;
    for (const Qor2DRectangleGP& rectangle : rectangles) {
        box.Add(rectangle.low);
        box.Add(rectangle.high);
    }
    for (const Qor2DQuadStripGP& strip : quads)
        for (const auto& quad : strip.quads)
            for (const QorMathPoint2D& corner : quad)
                box.Add(corner);
    for (const Qor2DAnnotationTextGP& text : texts)
        box.Add(
            text.position); // the width of a text is the painter's; whoever picks texts gives a box
    return box;
}

void Qor2DCustomRep::Accept(QorRepVisitor2D& ioVisitor) const {
    ioVisitor.Visit(*this);
}
