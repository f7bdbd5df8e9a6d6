#include "workbench/engine/adapter/ViewPicture.h"

#include "tests/engine/adapter/EngineTest.h"

namespace {

/// The cube of EngineTest without a window.
class ViewPictureTest : public EngineTest {
protected:
    QorPixelImage_var Take(bool iEdges = false) {
        QorUnicodeString error;
        qor::adapter::ViewStyle style;
        style.edges = iEdges;
        QorPixelImage_var picture = qor::adapter::takeViewPicture(
            *engine->cache(), *viewer, *viewer->GetMain3DViewpoint(), 160, 120, error, style);
        EXPECT_TRUE(error.IsNull()) << error.Str();
        return picture;
    }

    /// Red, green and blue together.
    static int Brightness(const QorPixelImage_var& iImage, int iX, int iY) {
        const std::uint8_t* pixel = PixelOf(iImage, iX, iY);
        return pixel[0] + pixel[1] + pixel[2];
    }
};

TEST_F(ViewPictureTest, IsTransparentWhereNothingIs) {
    const QorPixelImage_var picture = Take();
    ASSERT_TRUE(picture);
    EXPECT_EQ(PixelOf(picture, 2, 2)[3], 0);
    EXPECT_EQ(PixelOf(picture, 80, 60)[3], 255);
}

TEST_F(ViewPictureTest, ShowsPointsWhereTheViewpointProjectsThem) {
    // The outermost rows of the cube, as the viewpoint's own conversion has them.
    double top = 120.0;
    double bottom = 0.0;
    for (const double x : {-10.0, 10.0})
        for (const double y : {-10.0, 10.0})
            for (const double z : {-10.0, 10.0}) {
                QorMathPoint2D pixel;
                ASSERT_TRUE(viewer->GetMain3DViewpoint()->Project({x, y, z}, 160, 120, pixel));
                top = std::min(top, pixel.y);
                bottom = std::max(bottom, pixel.y);
            }
    const QorPixelImage_var picture = Take();
    int first = 120;
    int last = -1;
    for (int y = 0; y < 120; ++y)
        for (int x = 0; x < 160; ++x)
            if (PixelOf(picture, x, y)[3] > 0) {
                first = std::min(first, y);
                last = std::max(last, y);
            }
    EXPECT_NEAR(first, top, 1.0);
    EXPECT_NEAR(last + 1, bottom, 1.0);
}

TEST_F(ViewPictureTest, ALightFromAboveLightsTheTop) {
    viewer->SetLightSourceReps(NewLight({0, 0, -1}), nullptr);
    const QorPixelImage_var fromAbove = Take();
    viewer->SetLightSourceReps(NewLight({0, 0, 1}), nullptr);
    const QorPixelImage_var fromBelow = Take();
    QorMathPoint2D top;
    ASSERT_TRUE(viewer->GetMain3DViewpoint()->Project({0, 0, 10}, 160, 120, top));
    const int x = static_cast<int>(top.x);
    const int y = static_cast<int>(top.y);
    EXPECT_GT(Brightness(fromAbove, x, y), Brightness(fromBelow, x, y) + 100);
}

TEST_F(ViewPictureTest, AHighlightedPartTurnsBlue) {
    const QorPixelImage_var plain = Take();
    viewer->GetMain3DViewpoint()->GetRoot().GetChildren().front()->SetHighlighted(true);
    const QorPixelImage_var lit = Take();
    const std::uint8_t* before = PixelOf(plain, 80, 60);
    const std::uint8_t* after = PixelOf(lit, 80, 60);
    EXPECT_LE(std::abs(before[2] - before[0]), 2);
    EXPECT_GT(after[2], after[0] + 40);
}

TEST_F(ViewPictureTest, EdgesAreDarkerThanTheirFaces) {
    QorMathPoint2D corner;
    ASSERT_TRUE(viewer->GetMain3DViewpoint()->Project({10, -10, 10}, 160, 120, corner));
    const int x = static_cast<int>(corner.x);
    const int y = static_cast<int>(corner.y) + 8; // on the upright edge below the corner
    const QorPixelImage_var without = Take(false);
    const QorPixelImage_var with = Take(true);
    int darkened = 0;
    for (int offset = -1; offset <= 1; ++offset)
        darkened = std::max(darkened,
                            Brightness(without, x + offset, y) - Brightness(with, x + offset, y));
    EXPECT_GT(darkened, 40);
    EXPECT_EQ(Brightness(without, x + 6, y), Brightness(with, x + 6, y));
}

TEST_F(ViewPictureTest, TheGroundTakesTheShadow) {
    viewer->SetLightSourceReps(NewLight({0, 0, -1}), nullptr);
    viewer->GetMain3DViewpoint()->SetView({40, -40, 90}, {0, 0, 0}, {0, 0, 1});
    viewer->SetGround(
        QorMake<QorRsc3DGroundRep>(QorMathPoint{0, 0, -25}, QorMathVector{0, 0, 1}, 200.0));
    const QorPixelImage_var picture = Take();
    QorMathPoint2D under;
    QorMathPoint2D beside;
    ASSERT_TRUE(viewer->GetMain3DViewpoint()->Project({9, -9, -25}, 160, 120, under));
    ASSERT_TRUE(viewer->GetMain3DViewpoint()->Project({20, 0, -25}, 160, 120, beside));
    const auto at = [&](const QorMathPoint2D& iPixel) {
        return Brightness(picture, static_cast<int>(iPixel.x), static_cast<int>(iPixel.y));
    };
    EXPECT_LT(at(under), at(beside) - 30);
}

TEST_F(ViewPictureTest, AnEmptyViewerGivesATransparentPicture) {
    viewer->GetMain3DViewpoint()->RemoveRep(
        viewer->GetMain3DViewpoint()->GetRoot().GetChildren().front());
    const QorPixelImage_var picture = Take();
    ASSERT_TRUE(picture);
    EXPECT_EQ(PixelOf(picture, 80, 60)[3], 0);
}

TEST_F(ViewPictureTest, RefusesSizesThatAreNone) {
    QorUnicodeString error;
    EXPECT_FALSE(qor::adapter::takeViewPicture(*engine->cache(), *viewer,
                                               *viewer->GetMain3DViewpoint(), 0, 120, error));
    EXPECT_FALSE(error.IsNull());
}

} // namespace
