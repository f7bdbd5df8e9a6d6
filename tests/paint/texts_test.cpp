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
        const auto rep = QorMake<Qor2DCustomRep>();
        rep->AddPrimitive(Qor2DAnnotationTextGP{
            .position = {0, 0}, .text = "Hxgj", .anchor = anchor, .height = height});
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

TEST_F(PaintedTexts, WithoutHeightOrOfEnormousHeightDoNoHarm) {
    EXPECT_TRUE(inked(paintText(5, 0.0)).isEmpty());
    EXPECT_TRUE(inked(paintText(5, std::nan(""))).isEmpty());
    EXPECT_FALSE(inked(paintText(5, 1.0e9)).isEmpty());
    EXPECT_FALSE(inked(paintText(99, 20.0)).isEmpty()); // as anchor 1
}

} // namespace

} // namespace qor::paint
