#include "workbench/desktop/viewer/gl/PlanePictures.h"

#include "platform/vis/QorViewpoint.h"
#include "workbench/paint/Strokes.h"

namespace qor::desktop {

namespace {

/// Walks a viewpoint as long as it finds nothing but upright pictures.
class Walk : public QorRepVisitor2D {
public:
    Walk(const Qor2DViewpoint& viewpoint, const paint::Surface& surface)
        : viewpoint_(viewpoint), surface_(surface) {}

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
        const QorPixelImage* image = iRep.GetImage();
        if (!iRep.IsShown() || image == nullptr || image->IsEmpty())
            return;
        const QRect target = paint::Strokes::pixels(
            QRectF(pixelOf(iRep.GetPosition()), pixelOf(iRep.GetPosition() + iRep.GetSize()))
                .normalized());
        const auto& [x, y, width, height] = iRep.GetSource();
        const int top = image->GetHeight() - y - height; // its rows are counted from the bottom
        const auto across = static_cast<float>(image->GetWidth());
        const auto down = static_cast<float>(image->GetHeight());
        const QRectF to(target);
        found.push_back(
            {image,
             {static_cast<float>(to.left()), static_cast<float>(to.top()),
              static_cast<float>(to.right()), static_cast<float>(to.bottom())},
             {static_cast<float>(x) / across, static_cast<float>(top) / down,
              static_cast<float>(x + width) / across, static_cast<float>(top + height) / down},
             target.size() == QSize(width, height),
             iRep.GetAlphaMode() == 0});
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
    const paint::Surface& surface_;
    QorMathPoint2D move_;
    QorMathPoint2D scale_{1.0, 1.0};
    bool simple_ = true;
};

} // namespace

std::optional<std::vector<PlacedPicture>> picturesOf(const Qor2DViewpoint& viewpoint,
                                                     const paint::Surface& surface) {
    Walk walk(viewpoint, surface);
    viewpoint.GetRoot().Accept(walk);
    if (!walk.isSimple())
        return std::nullopt;
    return std::move(walk.found);
}

} // namespace qor::desktop
