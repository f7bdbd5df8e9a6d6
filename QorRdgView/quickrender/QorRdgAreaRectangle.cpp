#include "quickrender/QorRdgAreaRectangle.h"

#include <algorithm>

namespace {

constexpr QorGraphicAttributeSet lightLine{.color = {255, 255, 255, 255}, .thickness = 1.0F};
constexpr QorGraphicAttributeSet darkLine{.color = {0, 0, 0, 140}, .thickness = 3.0F};
constexpr QorGraphicAttributeSet mark{.color = {255, 255, 255, 255}, .pointSize = 7.0F};
constexpr QorGraphicAttributeSet darkMark{.color = {0, 0, 0, 140}, .pointSize = 9.0F};
constexpr QorGraphicAttributeSet smallMark{.color = {255, 255, 255, 255}, .pointSize = 5.0F};
constexpr QorGraphicAttributeSet darkSmallMark{.color = {0, 0, 0, 140}, .pointSize = 7.0F};
constexpr double roomForMarks = 40.0; ///< device-independent pixels along a side
constexpr QorGraphicAttributeSet outside{.color = {0, 0, 0, 70}};

using Points = std::array<QorMathPoint2D, 4>;

QorMathPoint2D Point(float iX, float iY) {
    return {static_cast<double>(iX), static_cast<double>(iY)};
}

/// Lower left, lower right, upper right, upper left.
Points CornersOf(const QorRdgAreaCorners& iArea) {
    return {Point(iArea.x1, iArea.y1), Point(iArea.x2, iArea.y1), Point(iArea.x2, iArea.y2),
            Point(iArea.x1, iArea.y2)};
}

/// Each edge goes from its corner to the next.
std::vector<QorMathPoint2D> EdgeOf(const Points& iCorners, std::size_t iEdge) {
    return {iCorners[iEdge], iCorners[(iEdge + 1) % 4]};
}

void AddPoint(Qor2DBagRep& ioBag,
              const QorMathPoint2D& iPoint,
              const QorGraphicAttributeSet& iLook) {
    const QorVar<Qor2DPointRep> point = QorMake<Qor2DPointRep>(iPoint);
    point->SetAttributes(iLook);
    ioBag.AddChild(point);
}

/// The middles of the edges and of the rectangle, of those for which there is room.
std::vector<QorMathPoint2D> MiddlesOf(const QorRdgAreaCorners& iArea, double iRoom) {
    const float x = 0.5F * (iArea.x1 + iArea.x2);
    const float y = 0.5F * (iArea.y1 + iArea.y2);
    const bool isWide = static_cast<double>(iArea.x2 - iArea.x1) >= iRoom;
    const bool isHigh = static_cast<double>(iArea.y2 - iArea.y1) >= iRoom;
    std::vector<QorMathPoint2D> middles;
    if (isWide)
        middles.insert(middles.end(), {Point(x, iArea.y1), Point(x, iArea.y2)});
    if (isHigh)
        middles.insert(middles.end(), {Point(iArea.x1, y), Point(iArea.x2, y)});
    if (isWide && isHigh)
        middles.push_back(Point(x, y));
    return middles;
}

/// The viewer around a rectangle, in four pieces: below, above, left, right.
Qor2DQuadStripGP Surroundings(const QorRdgAreaCorners& iArea, const QorRdgAreaCorners& iExtents) {
    const QorRdgAreaCorners hole{std::min(iArea.x1, iArea.x2), std::min(iArea.y1, iArea.y2),
                                 std::max(iArea.x1, iArea.x2), std::max(iArea.y1, iArea.y2)};
    const float bottom = std::max(hole.y1, iExtents.y1);
    const float top = std::min(hole.y2, iExtents.y2);
    Qor2DQuadStripGP strip;
    for (const QorRdgAreaCorners& piece :
         {QorRdgAreaCorners{iExtents.x1, iExtents.y1, iExtents.x2, hole.y1},
          QorRdgAreaCorners{iExtents.x1, hole.y2, iExtents.x2, iExtents.y2},
          QorRdgAreaCorners{iExtents.x1, bottom, hole.x1, top},
          QorRdgAreaCorners{hole.x2, bottom, iExtents.x2, top}})
        if (piece.x2 > piece.x1 && piece.y2 > piece.y1)
            strip.quads.push_back(CornersOf(piece));
    return strip;
}

} // namespace

QorRdgAreaRectangle::QorRdgAreaRectangle(Qor2DViewpoint& iViewpoint) : viewpoint(&iViewpoint) {
    for (QorVar<Qor2DLineRep>& edge : edges) {
        edge = QorMake<Qor2DLineRep>(std::vector<QorMathPoint2D>());
        edge->SetAttributes(lightLine);
    }
    for (QorVar<Qor2DPointRep>& corner : corners) {
        corner = QorMake<Qor2DPointRep>(QorMathPoint2D());
        corner->SetAttributes(mark);
    }
}

QorRdgAreaRectangle::~QorRdgAreaRectangle() {
    Hide();
}

void QorRdgAreaRectangle::Move(const QorRdgAreaCorners& iCorners,
                               const QorRdgAreaCorners& iExtents) {
    const Points points = CornersOf(iCorners);
    shade = QorMake<Qor2DBagRep>();
    shade->SetPickable(false);
    const QorVar<Qor2DCustomRep> dimmed = QorMake<Qor2DCustomRep>();
    dimmed->AddPrimitive(Surroundings(iCorners, iExtents));
    dimmed->SetAttributes(outside);
    shade->AddChild(dimmed);
    for (std::size_t i = 0; i < edges.size(); ++i) {
        edges[i]->SetPoints(EdgeOf(points, i));
        corners[i]->SetPoint(points[i]);
        const QorVar<Qor2DLineRep> dark = QorMake<Qor2DLineRep>(EdgeOf(points, i));
        dark->SetAttributes(darkLine);
        shade->AddChild(dark);
    }
}

void QorRdgAreaRectangle::Mark(const QorRdgAreaCorners& iCorners, float iPixelRatio) {
    marks = QorMake<Qor2DBagRep>();
    marks->SetPickable(false);
    for (const QorMathPoint2D& corner : CornersOf(iCorners))
        AddPoint(*shade, corner, darkMark);
    for (const QorMathPoint2D& middle :
         MiddlesOf(iCorners, roomForMarks * static_cast<double>(iPixelRatio))) {
        AddPoint(*shade, middle, darkSmallMark);
        AddPoint(*marks, middle, smallMark);
    }
}

void QorRdgAreaRectangle::Show(const QorRdgAreaCorners& iCorners,
                               const QorRdgAreaCorners& iExtents,
                               QorRdgAreaMarks iMarks,
                               float iPixelRatio) {
    Hide();
    Move(iCorners, iExtents);
    const bool marked = iMarks == QorRdgAreaMarks::All;
    if (marked)
        Mark(iCorners, iPixelRatio);
    viewpoint->AddRep(shade);
    for (const QorVar<Qor2DLineRep>& edge : edges)
        viewpoint->AddRep(edge);
    if (marked) {
        for (const QorVar<Qor2DPointRep>& corner : corners)
            viewpoint->AddRep(corner);
        viewpoint->AddRep(marks);
    }
    shown = true;
}

void QorRdgAreaRectangle::Hide() {
    if (!std::exchange(shown, false))
        return;
    viewpoint->RemoveRep(shade);
    shade.Reset();
    for (const QorVar<Qor2DLineRep>& edge : edges)
        viewpoint->RemoveRep(edge);
    for (const QorVar<Qor2DPointRep>& corner : corners)
        viewpoint->RemoveRep(corner);
    viewpoint->RemoveRep(marks);
    marks.Reset();
}
