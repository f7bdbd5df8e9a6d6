#include "scenes/QorRdgIconReps.h"

#include <algorithm>

namespace {

constexpr double boxSide = 94.0;
constexpr double middle = 47.0;
constexpr double titleTop = -97.0;
constexpr double titleHeight = 15.0;
/// Neither the edge of the view nor the title of the next icon is touched; and a white title stays
/// on the plate of the highlight.
constexpr double longestTitle = 2.0 * (middle + QorRdgIconReps::margin);
constexpr int topCentre = 7;
constexpr QorColor boxColor{212, 208, 200};
constexpr QorColor highlightColor{10, 36, 106};
constexpr QorColor white{255, 255, 255};

/// A wide guess, for the width of a text is the painter's.
double TitleWidth(const QorUnicodeString& iTitle) {
    return static_cast<double>(iTitle.CountCharacters()) * titleHeight / 2.5;
}

QorVar<Qor2DCustomRep> MakeTitle(const QorUnicodeString& iTitle) {
    auto title = QorMake<Qor2DCustomRep>();
    title->AddPrimitive(
        Qor2DAnnotationTextGP{.position = {middle, titleTop},
                              .text = iTitle,
                              .anchor = topCentre,
                              .height = titleHeight,
                              .maxWidth = std::min(TitleWidth(iTitle), longestTitle)});
    const double half = TitleWidth(iTitle) / 2.0;
    Qor2DBoundingBox box;
    box.Add(QorMathPoint2D{middle - half, titleTop - titleHeight});
    box.Add(QorMathPoint2D{middle + half, titleTop});
    title->SetBoundingBox(box); // so that a click on the title hits the icon
    return title;
}

QorVar<Qor2DCustomRep> MakeBox() {
    auto box = QorMake<Qor2DCustomRep>();
    box->AddPrimitive(Qor2DRectangleGP{{0.0, -boxSide}, {boxSide - 1.0, -1.0}});
    box->SetAttributes({.color = boxColor});
    return box;
}

std::array<QorMathPoint2D, 4> Bar(double iLeft, double iRight, double iBottom, double iTop) {
    return {{{iLeft, iBottom}, {iRight, iBottom}, {iRight, iTop}, {iLeft, iTop}}};
}

} // namespace

QorMathPoint2D QorRdgIconReps::CellOrigin(int i, int iColumns) {
    return {static_cast<double>(i % iColumns) * cellWidth + margin,
            -margin - static_cast<double>(i / iColumns) * cellHeight};
}

QorVar<Qor2DBagRep> QorRdgIconReps::MakeIcon(const QorUnicodeString& iTitle) {
    auto icon = QorMake<Qor2DBagRep>();
    icon->AddChild(MakeBox());
    icon->AddChild(MakeTitle(iTitle));
    return icon;
}

void QorRdgIconReps::AddThumbnail(Qor2DBagRep& ioIcon, QorPixelImage* iThumbnail) {
    const double width = iThumbnail->GetWidth();
    const double height = iThumbnail->GetHeight();
    const QorMathPoint2D position{(boxSide - width) * 0.5, -height - (boxSide - height) * 0.5};
    const auto image = QorMake<Qor2DImagePixelRep>(position, iThumbnail);
    const std::vector<Qor2DRep_var> others = ioIcon.GetChildren();
    ioIcon.AddChild(image);
    for (const Qor2DRep_var& other : others)
        ioIcon.AddChild(other); // goes behind the thumbnail in the order of drawing
}

QorVar<Qor2DBagRep> QorRdgIconReps::MakeHighlight(const QorUnicodeString& iTitle) {
    const double half = TitleWidth(iTitle) / 2.0;
    auto bars = QorMake<Qor2DCustomRep>();
    bars->AddPrimitive(Qor2DQuadStripGP{{Bar(-1.0, 95.0, -2.0, 1.0), Bar(-1.0, 95.0, -95.0, -92.0),
                                         Bar(-1.0, 2.0, -95.0, 1.0), Bar(92.0, 95.0, -95.0, 1.0),
                                         Bar(middle - half, middle + half, -113.0, -98.0)}});
    bars->SetAttributes({.color = highlightColor});
    auto title = MakeTitle(iTitle);
    title->SetAttributes({.color = white});
    auto highlight = QorMake<Qor2DBagRep>();
    highlight->AddChild(bars);
    highlight->AddChild(title);
    highlight->SetPickable(false); // a click on the selected icon hits the icon below
    return highlight;
}
