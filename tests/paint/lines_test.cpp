// Lines, marks, rectangles and filled areas: which pixels they cover.
#include "tests/paint/PaintTest.h"

#include <cmath>
#include <limits>

namespace qor::paint {

namespace {

class PaintedLines : public PaintTest {
protected:
    [[nodiscard]] QImage paintRep(Qor2DRep& rep, const QorGraphicAttributeSet& attributes) {
        rep.SetAttributes(attributes);
        const Qor2DViewpoint_var viewpoint = makeViewpoint();
        viewpoint->AddRep(&rep);
        return paint(*viewpoint);
    }

    [[nodiscard]] QImage paintLine(std::vector<QorMathPoint2D> points,
                                   const QorGraphicAttributeSet& attributes = inRed) {
        return paintRep(*QorMake<Qor2DLineRep>(std::move(points)), attributes);
    }
};

TEST_F(PaintedLines, LevelOnesAreOnePixelWideWithoutShades) {
    // From pixel column 10 to 30, five pixels above the middle.
    const QImage image = paintLine({{-10, 5}, {10, 5}});
    EXPECT_EQ(inked(image), QRect(10, 10, 21, 1));
    EXPECT_EQ(count(image, red), 21);
}

TEST_F(PaintedLines, AreAsWideAsTheScaleOfTheDisplayAsks) {
    struct Row {
        float thickness;
        float ratio;
        int pixels;
    };

    for (const Row& row :
         {Row{1.0F, 1.0F, 1}, Row{1.0F, 1.25F, 1}, Row{1.0F, 1.5F, 2}, Row{1.0F, 2.0F, 2},
          Row{3.0F, 1.0F, 3}, Row{3.0F, 1.5F, 4}, Row{3.0F, 2.0F, 6}, Row{0.1F, 1.0F, 1}}) {
        surface.ratio = row.ratio;
        const QImage image =
            paintLine({{0, -10}, {0, 10}}, {.color = {255, 0, 0, 255}, .thickness = row.thickness});
        EXPECT_EQ(inked(image).width(), row.pixels) << row.thickness << " at " << row.ratio;
        EXPECT_EQ(count(image, red), inked(image).width() * inked(image).height());
    }
}

TEST_F(PaintedLines, OfAnOddWidthLieAroundTheSameMiddleAtEveryScale) {
    for (const float ratio : {1.0F, 1.25F, 1.5F, 2.0F}) {
        surface.ratio = ratio;
        const auto across = [&](float thickness) {
            const QRect ink = inked(
                paintLine({{0, -5}, {0, 5}}, {.color = {255, 0, 0, 255}, .thickness = thickness}));
            return ink.left() + ink.right();
        };
        EXPECT_EQ(across(3.0F), across(1.0F)) << ratio;
        EXPECT_EQ(across(7.0F), across(1.0F)) << ratio;
    }
}

TEST_F(PaintedLines, StayCrispInAViewerOfAnOddSize) {
    surface.width = 41.0F;
    surface.height = 31.0F;
    // Whole coordinates lie in the middle of pixels there.
    const QImage image = paintLine({{0, -10}, {0, 10}});
    EXPECT_EQ(inked(image).width(), 1);
    EXPECT_EQ(count(image, red), inked(image).height());
}

TEST_F(PaintedLines, SlantedOnesAreSmoothAndLieOnTheirPoints) {
    const QImage image =
        paintLine({{-10, -10}, {10, 5}}, {.color = {255, 0, 0, 255}, .thickness = 2.0F});
    EXPECT_GT(qRed(image.pixel(20, 17)), 200); // the middle: (0, -2.5)
    EXPECT_EQ(image.pixel(12, 12), black);
    EXPECT_GT(count(image, black), 0);
    bool hasShades = false;
    for (int x = 0; x < image.width(); ++x)
        hasShades = hasShades || (qRed(image.pixel(x, 17)) > 20 && qRed(image.pixel(x, 17)) < 200);
    EXPECT_TRUE(hasShades);
}

TEST_F(PaintedLines, DashedOnesHaveGaps) {
    const QImage image =
        paintLine({{-18, 0}, {18, 0}}, {.color = {255, 0, 0, 255}, .dashed = true});
    EXPECT_EQ(inked(image).height(), 1);
    EXPECT_GT(count(image, red), 10);
    EXPECT_LT(count(image, red), 30);
}

TEST_F(PaintedLines, FarTooLongOnesAndThoseThatAreNoNumbersDoNoHarm) {
    const double infinite = std::numeric_limits<double>::infinity();
    const QImage image = paintLine({{-1.0e12, 5}, {1.0e12, 5}});
    EXPECT_EQ(inked(image), QRect(0, 10, 40, 1));
    const QImage slanted = paintLine({{-1.0e12, -1.0e12}, {1.0e12, 1.0e12}});
    EXPECT_GT(qRed(slanted.pixel(20, 14)) + qRed(slanted.pixel(20, 15)), 100);
    EXPECT_TRUE(inked(paintLine({{-infinite, 5}, {0, 5}})).isEmpty());
    EXPECT_TRUE(inked(paintLine({{std::nan(""), 5}, {0, 5}})).isEmpty());
    EXPECT_TRUE(inked(paintLine({{100, 5}, {200, 5}})).isEmpty());
    EXPECT_TRUE(inked(paintLine({{0, 0}})).isEmpty());
}

TEST_F(PaintedLines, MarksAreSquaresAroundTheirPointAtEveryScale) {
    for (const float ratio : {1.0F, 1.5F, 2.0F}) {
        surface.ratio = ratio;
        const QImage image = paintRep(*QorMake<Qor2DPointRep>(QorMathPoint2D{4, 3}),
                                      {.color = {255, 0, 0, 255}, .pointSize = 5.0F});
        const int side = static_cast<int>(std::lround(5.0F * ratio));
        EXPECT_EQ(inked(image), QRect(24 - side / 2, 12 - side / 2, side, side));
        EXPECT_EQ(count(image, red), side * side);
    }
}

TEST_F(PaintedLines, AnOutlineLiesInsideItsRectangle) {
    const QorVar<Qor2DCustomRep> rep = QorMake<Qor2DCustomRep>();
    rep->AddPrimitive(Qor2DRectangleGP{{-10, -5}, {10, 5}});
    const QImage image = paintRep(*rep, inRed);
    EXPECT_EQ(inked(image), QRect(10, 10, 20, 10));
    EXPECT_EQ(count(image, red), 2 * 20 + 2 * 8);
    EXPECT_EQ(image.pixel(11, 11), black);
    // One as large as the viewer is seen on all its sides.
    const QorVar<Qor2DCustomRep> whole = QorMake<Qor2DCustomRep>();
    whole->AddPrimitive(Qor2DRectangleGP{{-20, -15}, {20, 15}});
    EXPECT_EQ(count(paintRep(*whole, inRed), red), 2 * 40 + 2 * 28);
}

TEST_F(PaintedLines, AreasThatTouchNeitherOverlapNorLeaveAGap) {
    surface.width = 41.0F;
    const QorVar<Qor2DCustomRep> rep = QorMake<Qor2DCustomRep>();
    Qor2DQuadStripGP strip;
    for (double left = -10.0; left < 10.0; left += 2.5)
        strip.quads.push_back({QorMathPoint2D{left, -5}, QorMathPoint2D{left + 2.5, -5},
                               QorMathPoint2D{left + 2.5, 5}, QorMathPoint2D{left, 5}});
    rep->AddPrimitive(strip);
    const QImage image = paintRep(*rep, {.color = {255, 0, 0, 128}});
    EXPECT_EQ(inked(image), QRect(11, 10, 20, 10));
    EXPECT_EQ(count(image, image.pixel(15, 12)), 200); // one shade everywhere
}

TEST_F(PaintedLines, TurnedAreasAreSmoothed) {
    const QorVar<Qor2DCustomRep> rep = QorMake<Qor2DCustomRep>();
    rep->AddPrimitive(Qor2DQuadStripGP{{{QorMathPoint2D{0, -10}, QorMathPoint2D{10, 0},
                                         QorMathPoint2D{0, 10}, QorMathPoint2D{-10, 0}}}});
    const QImage image = paintRep(*rep, inRed);
    EXPECT_EQ(image.pixel(20, 15), red);
    EXPECT_EQ(image.pixel(11, 6), black);
    EXPECT_NEAR(qRed(image.pixel(15, 10)) + qRed(image.pixel(14, 9)), 255, 140);
}

TEST_F(PaintedLines, BagsMoveTheirChildrenAndHiddenOnesAreLeftOut) {
    const QorVar<Qor2DBagRep> bag = QorMake<Qor2DBagRep>();
    const QorVar<Qor2DLineRep> line =
        QorMake<Qor2DLineRep>(std::vector<QorMathPoint2D>{{0, 0}, {5, 0}});
    line->SetAttributes(inRed);
    bag->AddChild(line);
    bag->SetMatrix({0.0, 1.0, -1.0, 0.0}, {3, 2}); // a quarter turn to the left, then moved
    EXPECT_EQ(inked(paintRep(*bag, {})), QRect(23, 8, 1, 6));
    line->SetShown(false);
    EXPECT_TRUE(inked(paintRep(*bag, {})).isEmpty());
    line->SetShown(true);
    bag->SetShown(false);
    EXPECT_TRUE(inked(paintRep(*bag, {})).isEmpty());
}

TEST_F(PaintedLines, LieWhereTheViewpointSaysAtAnyViewAndScale) {
    for (const double zoom : {0.37, 1.0, 4.2}) {
        const Qor2DViewpoint_var viewpoint = makeViewpoint();
        viewpoint->SetView({2.3, -1.1}, zoom / static_cast<double>(surface.unit));
        const auto mark = QorMake<Qor2DPointRep>(QorMathPoint2D{3.1, 0.7});
        mark->SetAttributes({.color = {255, 0, 0, 255}, .pointSize = 1.0F});
        viewpoint->AddRep(mark);
        const QorMathPoint2D pixel =
            viewpoint->ModelToPixel({3.1, 0.7}, surface.width, surface.height, surface.unit);
        const QRect found = inked(paint(*viewpoint));
        EXPECT_NEAR(found.x(), pixel.x, 0.51);
        EXPECT_NEAR(found.y(), pixel.y, 0.51);
    }
}

} // namespace

} // namespace qor::paint
