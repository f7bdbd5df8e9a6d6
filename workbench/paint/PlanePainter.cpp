#include "workbench/paint/PlanePainter.h"

#include "platform/vis/QorViewpoint.h"
#include "workbench/paint/PictureCache.h"
#include "workbench/paint/Strokes.h"
#include "workbench/paint/Texts.h"

#include <QPaintDevice>
#include <QPainter>
#include <QTransform>

#include <cmath>

namespace qor::paint {

namespace {

QPointF toQt(const QorMathPoint2D& point) {
    return {point.x, point.y};
}

/// From the plane of a viewpoint to device pixels.
QTransform planeToPixels(const Qor2DViewpoint& viewpoint, const Surface& surface) {
    const auto pixel = [&](double x, double y) {
        return toQt(viewpoint.ModelToPixel({x, y}, surface.width, surface.height, surface.unit));
    };
    const double scale = viewpoint.GetScale() * static_cast<double>(surface.unit);
    const QPointF origin = pixel(0.0, 0.0);
    return {scale, 0.0, 0.0, -scale, origin.x(), origin.y()};
}

class Painter : public QorRepVisitor2D {
public:
    Painter(QPainter& painter,
            const Qor2DViewpoint& viewpoint,
            const Surface& surface,
            PictureCache& pictures)
        : painter_(painter)
        , viewpoint_(viewpoint)
        , toPixels_(planeToPixels(viewpoint, surface))
        , area_(0.0, 0.0, static_cast<double>(surface.width), static_cast<double>(surface.height))
        , strokes_(painter, area_, surface.ratio)
        , pictures_(pictures) {}

    void Visit(const Qor2DBagRep& iRep) override {
        if (!iRep.IsShown())
            return;
        const QTransform outer = toPixels_;
        const auto& [a, b, c, d] = iRep.GetLinear();
        toPixels_ =
            QTransform(a, b, c, d, iRep.GetTranslation().x, iRep.GetTranslation().y) * outer;
        for (const Qor2DRep_var& child : iRep.GetChildren())
            child->Accept(*this);
        toPixels_ = outer;
    }

    void Visit(const Qor2DLineRep& iRep) override {
        if (iRep.IsShown())
            strokes_.line(map(iRep.GetPoints()), iRep.GetAttributes());
    }

    void Visit(const Qor2DPointRep& iRep) override {
        if (iRep.IsShown())
            strokes_.mark(toPixels_.map(toQt(iRep.GetPoint())), iRep.GetAttributes());
    }

    void Visit(const Qor2DImagePixelRep& iRep) override;

    void Visit(const Qor2DCustomRep& iRep) override {
        if (!iRep.IsShown())
            return;
        for (const Qor2DRectangleGP& rectangle : iRep.GetRectangles())
            outline(rectangle, iRep.GetAttributes());
        for (const Qor2DQuadStripGP& strip : iRep.GetQuads())
            for (const auto& quad : strip.quads)
                strokes_.fill(map(quad), iRep.GetAttributes());
        for (const Qor2DAnnotationTextGP& text : iRep.GetTexts())
            write(text, iRep.GetAttributes().color);
    }

private:
    template <class Points>
    [[nodiscard]] QPolygonF map(const Points& points) const {
        QPolygonF mapped;
        for (const QorMathPoint2D& point : points)
            mapped << toPixels_.map(toQt(point));
        return mapped;
    }

    /// Whether upright rectangles of the plane are upright in the picture.
    [[nodiscard]] bool isUpright() const {
        return toPixels_.m12() == 0.0 && toPixels_.m21() == 0.0;
    }

    void outline(const Qor2DRectangleGP& rectangle, const QorGraphicAttributeSet& look) {
        const QRectF box = QRectF(toQt(rectangle.low), toQt(rectangle.high));
        if (isUpright())
            strokes_.outline(toPixels_.mapRect(box), look);
        else
            strokes_.line(toPixels_.map(QPolygonF(box)), look);
    }

    void write(const Qor2DAnnotationTextGP& text, const QorColor& color) {
        const double scale = std::sqrt(std::abs(toPixels_.determinant()));
        drawText(painter_, QString::fromStdString(text.text.Str()),
                 toPixels_.map(toQt(text.position)), text.height * scale, text.anchor,
                 {color.red, color.green, color.blue, color.alpha}, text.maxWidth * scale);
    }

    void drawUpright(const Qor2DImagePixelRep& rep, const QRect& source, const QRect& target);

    QPainter& painter_;
    const Qor2DViewpoint& viewpoint_;
    QTransform toPixels_;
    QRectF area_;
    Strokes strokes_;
    PictureCache& pictures_;
};

void Painter::Visit(const Qor2DImagePixelRep& iRep) {
    if (!iRep.IsShown() || iRep.GetImage() == nullptr || iRep.GetImage()->IsEmpty())
        return;
    const auto& [x, y, width, height] = iRep.GetSource();
    // Its rows are counted from the bottom, those of a QImage from the top.
    const QRect source(x, iRep.GetImage()->GetHeight() - y - height, width, height);
    const QRectF box(toQt(iRep.GetPosition()), QSizeF(iRep.GetSize().x, iRep.GetSize().y));
    if (isUpright() && toPixels_.m11() > 0.0 && toPixels_.m22() < 0.0) {
        drawUpright(iRep, source, Strokes::pixels(toPixels_.mapRect(box)));
        return;
    }
    // From the box, its lower left at the origin and a unit wide, to the plane.
    const QTransform place(box.width(), 0.0, 0.0, box.height(), box.x(), box.y());
    const QTransform flip(1.0, 0.0, 0.0, -1.0, 0.0, 1.0);
    painter_.save();
    painter_.setTransform(flip * place * toPixels_, true);
    painter_.setRenderHint(QPainter::SmoothPixmapTransform, true);
    painter_.drawImage(QRectF(0.0, 0.0, 1.0, 1.0),
                       pictures_.whole(*iRep.GetImage(), iRep.GetAlphaMode() == 0), source);
    painter_.restore();
}

void Painter::drawUpright(const Qor2DImagePixelRep& rep, const QRect& source, const QRect& target) {
    const bool ignoresAlpha = rep.GetAlphaMode() == 0;
    if (target.isEmpty() || source.isEmpty() || !area_.intersects(QRectF(target)))
        return;
    const PlacedPicture drawn = pictures_.placed({&viewpoint_, target}, *rep.GetImage(), source,
                                                 ignoresAlpha, area_.size());
    if (!drawn.picture)
        return;
    const QImage& image = pictures_.whole(*drawn.picture, ignoresAlpha || drawn.isOpaque);
    if (drawn.isExact()) {
        painter_.drawImage(target.topLeft(), image, drawn.source);
        return;
    }
    painter_.setRenderHint(QPainter::SmoothPixmapTransform, true);
    painter_.drawImage(target, image, drawn.source);
}

} // namespace

void paintPlane(QPainter& painter,
                const Qor2DViewpoint& viewpoint,
                const Surface& surface,
                PictureCache& pictures) {
    painter.save();
    const double ratio = painter.device()->devicePixelRatio();
    painter.scale(1.0 / ratio, 1.0 / ratio);
    painter.setClipRect(
        QRectF(0.0, 0.0, static_cast<double>(surface.width), static_cast<double>(surface.height)),
        Qt::IntersectClip);
    Painter walk(painter, viewpoint, surface, pictures);
    viewpoint.GetRoot().Accept(walk);
    painter.restore();
}

} // namespace qor::paint
