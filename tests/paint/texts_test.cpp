// Texts: how high they are and how their anchors hold them.
#include "tests/paint/PaintTest.h"

#include <cmath>

namespace qor::paint {

namespace {

class PaintedTexts : public PaintTest {
protected:
    PaintedTexts() {
        surface.width = 200.0F;
        surface.height = 100.0F;
    }

    [[nodiscard]] QImage paintText(int anchor, double height, double zoom = 1.0) {
        return paintText({.position = {}, .text = "Hxgj", .anchor = anchor, .height = height},
                         zoom);
    }

    [[nodiscard]] QImage paintText(const Qor2DAnnotationTextGP& text, double zoom = 1.0) {
        const auto rep = QorMake<Qor2DCustomRep>();
        rep->AddPrimitive(text);
        rep->SetAttributes(inRed);
        const Qor2DViewpoint_var viewpoint = makeViewpoint();
        viewpoint->SetView({0, 0}, zoom / static_cast<double>(surface.unit));
        viewpoint->AddRep(rep);
        return paint(*viewpoint);
    }
};

TEST_F(PaintedTexts, AreHeldAtNineAnchors) {
    struct Row {
        int anchor;
        double x; // where the middle of the text lies, in halves of its size
        double y; // upwards
    };

    const Row rows[] = {{1, 1, 1},  {2, 0, 1},  {3, -1, 1},  {4, 1, 0}, {5, 0, 0},
                        {6, -1, 0}, {7, 0, -1}, {8, -1, -1}, {9, 1, -1}};
    constexpr double height = 30.0;
    for (const Row& row : rows) {
        const QRect ink = inked(paintText(row.anchor, height));
        const double halfWidth = 0.5 * ink.width();
        EXPECT_NEAR(ink.x() + halfWidth, 100.0 + row.x * halfWidth, 4.0) << row.anchor;
        // Ink of "Hxgj" is about the line without a little above the H.
        EXPECT_NEAR(ink.y() + 0.5 * ink.height(), 50.0 - row.y * 0.5 * height, 4.0) << row.anchor;
    }
}

TEST_F(PaintedTexts, AreAsHighAsAskedInModelUnits) {
    for (const double zoom : {0.5, 1.0, 2.0}) {
        const QRect ink = inked(paintText(5, 20.0, zoom));
        EXPECT_LE(ink.height(), static_cast<int>(20.0 * zoom) + 1);
        EXPECT_GE(ink.height(), static_cast<int>(0.6 * 20.0 * zoom));
    }
}

TEST_F(PaintedTexts, AreSmoothAndOfOneColour) {
    const QImage image = paintText(5, 30.0);
    EXPECT_GT(count(image, red), 20);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            ASSERT_EQ(qGreen(image.pixel(x, y)), 0); // no colour fringes
            ASSERT_EQ(qBlue(image.pixel(x, y)), 0);
        }
}

TEST_F(PaintedTexts, AreAboutAsWideAsWhoeverPlacesThemReckons) {
    const std::string title = "Studio soft box of the year";
    const QRect ink =
        inked(paintText({.position = {}, .text = title, .anchor = 5, .height = 15.0}));
    EXPECT_NEAR(ink.width(), 6.0 * static_cast<double>(title.size()), 15.0);
}

TEST_F(PaintedTexts, KeepToTheirLargestWidthNarrowerThenShortened) {
    const Qor2DAnnotationTextGP whole{
        .position = {}, .text = "Catalogue white for data sheets", .anchor = 5, .height = 15.0};
    const double natural = inked(paintText(whole)).width();
    for (const double maxWidth : {1000.0, 0.85 * natural, 0.5 * natural, 20.0})
        for (const double zoom : {1.0, 2.0}) {
            if (zoom * std::min(maxWidth, natural) > 195.0)
                continue; // wider than the picture
            Qor2DAnnotationTextGP text = whole;
            text.maxWidth = maxWidth;
            const QRect ink = inked(paintText(text, zoom));
            EXPECT_LE(ink.width(), zoom * maxWidth + 1.0);
            EXPECT_GT(ink.width(), 5) << maxWidth;
            EXPECT_NEAR(ink.x() + 0.5 * ink.width(), 100.0, 6.0) << "still held in the middle";
        }
}

TEST_F(PaintedTexts, WithoutHeightOrOfEnormousHeightDoNoHarm) {
    EXPECT_TRUE(inked(paintText(5, 0.0)).isEmpty());
    EXPECT_TRUE(inked(paintText(5, std::nan(""))).isEmpty());
    EXPECT_FALSE(inked(paintText(5, 1.0e9)).isEmpty());
    EXPECT_FALSE(inked(paintText(99, 20.0)).isEmpty()); // as anchor 1
}

} // namespace

} // namespace qor::paint
