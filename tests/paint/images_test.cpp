// Pictures in the plane: pixel for pixel, scaled, transparent; and what is kept of them.
#include "tests/paint/PaintTest.h"
#include "workbench/paint/Images.h"

#include <QPainter>

namespace qor::paint {

namespace {

class PaintedImages : public PaintTest {
protected:
    [[nodiscard]] QImage paintRep(Qor2DRep& rep) {
        const Qor2DViewpoint_var viewpoint = makeViewpoint();
        viewpoint->AddRep(&rep);
        return paint(*viewpoint);
    }
};

TEST_F(PaintedImages, AreDrawnPixelForPixelWhereTheirUnitIsAPixel) {
    for (const float ratio : {1.0F, 1.5F, 2.0F})
        for (const float width : {40.0F, 41.0F}) {
            surface.ratio = ratio;
            surface.width = width;
            const double left = -0.5 * static_cast<double>(width);
            const auto rep = QorMake<Qor2DImagePixelRep>(QorMathPoint2D{left, -15},
                                                         makeGradient(40, 30, 3).Get());
            const QImage image = paintRep(*rep);
            for (int y = 0; y < 30; ++y)
                for (int x = 0; x < 40; ++x)
                    ASSERT_EQ(image.pixel(x, y), qRgb(x, y, 7)) << x << ", " << y;
        }
}

TEST_F(PaintedImages, AreExactOnADeviceWithAPixelRatioToo) {
    for (const double ratio : {1.25, 1.5, 2.0}) {
        QImage image(40, 30, QImage::Format_RGB32);
        image.fill(black);
        image.setDevicePixelRatio(ratio);
        const Qor2DViewpoint_var viewpoint = makeViewpoint();
        viewpoint->AddRep(
            QorMake<Qor2DImagePixelRep>(QorMathPoint2D{-20, -15}, makeGradient(40, 30, 4).Get()));
        paintOn(image, *viewpoint);
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 40; ++x)
                ASSERT_EQ(image.pixel(x, y), qRgb(x, y, 7)) << x << ", " << y << " at " << ratio;
    }
}

TEST_F(PaintedImages, ShowTheirPartCountedFromTheLowerLeft) {
    const auto rep = QorMake<Qor2DImagePixelRep>(QorMathPoint2D{-20, -15},
                                                 makeGradient(40, 30, 3).Get(), 5, 3, 10, 4);
    const QImage image = paintRep(*rep);
    EXPECT_EQ(inked(image), QRect(0, 26, 10, 4));
    EXPECT_EQ(image.pixel(0, 29), qRgb(5, 26, 7)); // row 3 from the bottom
    EXPECT_EQ(image.pixel(9, 26), qRgb(14, 23, 7));
}

TEST_F(PaintedImages, AreTransparentOnlyWhereAsked) {
    const auto rep =
        QorMake<Qor2DImagePixelRep>(QorMathPoint2D{-20, -15}, makeGradient(200, 30, 4, 128).Get());
    EXPECT_EQ(paintRep(*rep).pixel(30, 20), qRgb(30, 20, 7));
    rep->SetAlphaMode(1);
    EXPECT_NEAR(qRed(paintRep(*rep).pixel(30, 20)), 15, 1);
    EXPECT_NEAR(qGreen(paintRep(*rep).pixel(30, 20)), 10, 1);
}

TEST_F(PaintedImages, FillTheirRectangleAtEveryZoom) {
    for (const double zoom : {0.1, 0.3, 0.75, 1.5, 20.0}) {
        const auto rep =
            QorMake<Qor2DImagePixelRep>(QorMathPoint2D{-10, -10}, makeGradient(40, 30, 3).Get());
        rep->SetZoom(zoom, zoom);
        const QRect expected = QRect(QPoint(10, static_cast<int>(25 - 30 * zoom + 0.5)),
                                     QPoint(static_cast<int>(10 + 40 * zoom) - 1, 24)) &
                               QRect(0, 0, 40, 30);
        EXPECT_EQ(inked(paintRep(*rep)), expected) << zoom;
    }
}

TEST_F(PaintedImages, ThatShrinkAreAveragedNotThinnedOut) {
    // Every second column white: grey from afar.
    auto pixels = std::make_shared<QorPixelImage::Pixels>();
    for (int i = 0; i < 400 * 300; ++i)
        pixels->insert(pixels->end(), 3, static_cast<std::uint8_t>(i % 2 == 0 ? 255 : 0));
    const auto rep = QorMake<Qor2DImagePixelRep>(
        QorMathPoint2D{-20, -15}, QorMake<QorPixelImage>(400, 300, 3, std::move(pixels)).Get());
    rep->SetZoom(0.1, 0.1);
    const QImage image = paintRep(*rep);
    EXPECT_NEAR(qRed(image.pixel(10, 10)), 128, 5);
    EXPECT_NEAR(qRed(image.pixel(33, 21)), 128, 5);
}

TEST_F(PaintedImages, TurnWithTheirBag) {
    const QorVar<Qor2DBagRep> bag = QorMake<Qor2DBagRep>();
    bag->AddChild(QorMake<Qor2DImagePixelRep>(QorMathPoint2D{0, 0}, makeGradient(10, 10, 3).Get()));
    bag->SetMatrix({0.0, 1.0, -1.0, 0.0}, {0, 0}); // a quarter turn to the left
    const QImage image = paintRep(*bag);
    EXPECT_EQ(inked(image), QRect(10, 5, 10, 10));
    // What was its lower left is its lower right now.
    EXPECT_NEAR(qRed(image.pixel(18, 13)), 1, 1);
    EXPECT_NEAR(qGreen(image.pixel(18, 13)), 8, 1);
}

TEST_F(PaintedImages, AreEnlargedBeyondAllReasonWithoutHarm) {
    const auto rep =
        QorMake<Qor2DImagePixelRep>(QorMathPoint2D{-1.0e6, -1.0e6}, makeGradient(40, 30, 3).Get());
    rep->SetZoom(1.0e5, 1.0e5);
    EXPECT_EQ(inked(paintRep(*rep)).width(), 40);
    EXPECT_TRUE(inked(paintRep(*QorMake<Qor2DImagePixelRep>(QorMathPoint2D{}, nullptr))).isEmpty());
}

TEST_F(PaintedImages, ShareTheirPixels) {
    for (const int channels : {3, 4}) {
        const QorPixelImage_var picture = makeGradient(7, 5, channels, 100); // rows of odd lengths
        const QImage image = lend(*picture, false);
        EXPECT_EQ(image.constBits(), picture->GetPixels()->data());
        EXPECT_EQ(image.pixel(6, 4), qRgba(6, 4, 7, channels == 4 ? 100 : 255));
    }
}

TEST_F(PaintedImages, OutliveThePictureThatLentThem) {
    QImage image;
    {
        const QorPixelImage_var picture = makeGradient(7, 5, 3);
        image = lend(*picture, false);
    }
    EXPECT_EQ(image.pixel(3, 2), qRgb(3, 2, 7));
}

TEST_F(PaintedImages, AreKeptFromFrameToFrameAndLetGoWhenUnused) {
    const QorPixelImage_var picture = makeGradient(40, 30, 3);
    const long holders = picture->GetPixels().use_count();
    const auto rep = QorMake<Qor2DImagePixelRep>(QorMathPoint2D{-20, -15}, picture.Get());
    const Qor2DViewpoint_var viewpoint = makeViewpoint();
    viewpoint->AddRep(rep);
    (void)paint(*viewpoint);
    ASSERT_EQ(pictures.count(), 1U);
    const qint64 key = pictures.whole(*picture, true).cacheKey();
    (void)paint(*viewpoint);
    EXPECT_EQ(pictures.whole(*picture, true).cacheKey(), key);
    viewpoint->RemoveRep(rep);
    (void)paint(*viewpoint);
    (void)paint(*viewpoint);
    EXPECT_EQ(pictures.count(), 0U);
    EXPECT_EQ(picture->GetPixels().use_count(), holders);
}

} // namespace

} // namespace qor::paint
