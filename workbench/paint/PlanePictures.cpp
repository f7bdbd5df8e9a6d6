#include "workbench/paint/PlanePictures.h"

#include "platform/vis/QorViewer.h"
#include "workbench/paint/Strokes.h"

#include <algorithm>
#include <cmath>

namespace qor::paint {

namespace {

/// Walks a viewpoint as long as it finds nothing but upright pictures.
class Walk : public QorRepVisitor2D {
public:
    Walk(const Qor2DViewpoint& viewpoint, const Surface& surface, PictureCache& pictures)
        : viewpoint_(viewpoint), surface_(surface), pictures_(pictures) {}

    void Visit(const Qor2DBagRep& iRep) override {
        if (!iRep.IsShown())
            return;
        const QorMathPoint2D outerMove = move_;
        const QorMathPoint2D outerScale = scale_;
        const auto& [a, b, c, d] = iRep.GetLinear();
        simple_ = simple_ && b == 0.0 && c == 0.0 && a > 0.0 && d > 0.0;
        move_ = toPlane(iRep.GetTranslation());
        scale_ = {scale_.x * a, scale_.y * d};
        for (const Qor2DRep_var& child : iRep.GetChildren())
            child->Accept(*this);
        move_ = outerMove;
        scale_ = outerScale;
    }

    void Visit(const Qor2DLineRep& iRep) override { other(iRep); }

    void Visit(const Qor2DPointRep& iRep) override { other(iRep); }

    void Visit(const Qor2DCustomRep& iRep) override { other(iRep); }

    void Visit(const Qor2DImagePixelRep& iRep) override {
        QorPixelImage* image = iRep.GetImage();
        if (!simple_ || !iRep.IsShown() || image == nullptr || image->IsEmpty())
            return;
        const QRect place = Strokes::pixels(
            QRectF(pixelOf(iRep.GetPosition()), pixelOf(iRep.GetPosition() + iRep.GetSize()))
                .normalized());
        const auto& [x, y, width, height] = iRep.GetSource();
        const int top = image->GetHeight() - y - height; // its rows are counted from the bottom
        const QRectF area(0.0, 0.0, static_cast<double>(surface_.width),
                          static_cast<double>(surface_.height));
        if (place.isEmpty() || !area.intersects(QRectF(place)))
            return;
        found.push_back(pictures_.placed({&viewpoint_, place}, *image, {x, top, width, height},
                                         iRep.GetAlphaMode() == 0, area.size()));
    }

    [[nodiscard]] bool isSimple() const { return simple_; }

    std::vector<PlacedPicture> found;

private:
    void other(const Qor2DRep& rep) { simple_ = simple_ && !rep.IsShown(); }

    [[nodiscard]] QorMathPoint2D toPlane(const QorMathPoint2D& point) const {
        return {move_.x + scale_.x * point.x, move_.y + scale_.y * point.y};
    }

    [[nodiscard]] QPointF pixelOf(const QorMathPoint2D& point) const {
        const QorMathPoint2D pixel =
            viewpoint_.ModelToPixel(toPlane(point), surface_.width, surface_.height, surface_.unit);
        return {pixel.x, pixel.y};
    }

    const Qor2DViewpoint& viewpoint_;
    const Surface& surface_;
    PictureCache& pictures_;
    QorMathPoint2D move_;
    QorMathPoint2D scale_{1.0, 1.0};
    bool simple_ = true;
};

/// Whether nothing shows through a viewpoint.
bool covers(const Plane& plane, const Surface& surface) {
    const QRect all(0, 0, static_cast<int>(std::lround(surface.width)),
                    static_cast<int>(std::lround(surface.height)));
    return plane.pictures && std::any_of(plane.pictures->begin(), plane.pictures->end(),
                                         [&](const PlacedPicture& one) {
                                             return one.picture && one.isOpaque &&
                                                    one.place.contains(all);
                                         });
}

} // namespace

std::optional<std::vector<PlacedPicture>>
picturesOf(const Qor2DViewpoint& viewpoint, const Surface& surface, PictureCache& pictures) {
    Walk walk(viewpoint, surface, pictures);
    viewpoint.GetRoot().Accept(walk);
    if (!walk.isSimple())
        return std::nullopt;
    return std::move(walk.found);
}

VisiblePlanes
visiblePlanesOf(const QorViewer& viewer, const Surface& surface, PictureCache& pictures) {
    VisiblePlanes visible;
    for (const QorVar<QorViewpoint>& one : viewer.GetAddedViewpoints()) {
        const auto* flat = dynamic_cast<const Qor2DViewpoint*>(one.Get());
        if (flat == nullptr)
            continue;
        Plane plane{flat, picturesOf(*flat, surface, pictures)};
        if (covers(plane, surface)) {
            visible.planes.clear();
            visible.hidesBackdrop = true;
            visible.hidesSpace = flat->GetPriority() >= 0;
        }
        visible.planes.push_back(std::move(plane));
    }
    return visible;
}

} // namespace qor::paint
