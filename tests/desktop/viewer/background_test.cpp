// What lies behind and over space, to the pixel and at every scale of the screen.
#include "tests/desktop/viewer/ViewerTest.h"

namespace qor::desktop::tests {

namespace {

class ViewerPlanes : public ViewerTest {
protected:
    /// A viewpoint whose unit is a device pixel, its origin the middle of the viewer.
    Qor2DViewpoint_var addPlane(int priority) {
        const double unit = static_cast<double>(viewer->GetSupport()->GetMMInSupportUnit());
        auto plane = QorMake<Qor2DViewpoint>(QorMathPoint2D(), 1.0 / unit);
        plane->SetPriority(priority);
        viewer->AddViewpoint(plane.Get());
        return plane;
    }

    /// A picture over all of the viewer, a pixel of it for each of the screen.
    QorVar<Qor2DImagePixelRep> cover(QorPixelImage* image) const {
        const QorMathPoint2D corner{-0.5 * image->GetWidth(), -0.5 * image->GetHeight()};
        return QorMake<Qor2DImagePixelRep>(corner, image);
    }

    [[nodiscard]] QorPixelImage_var noise(int channels, unsigned seed) const {
        const QSize size = control().deviceSize();
        return noisePicture(size.width(), size.height(), channels, seed);
    }

    static int countDifferent(const QImage& image, const QorPixelImage& expected) {
        EXPECT_EQ(image.width(), expected.GetWidth());
        EXPECT_EQ(image.height(), expected.GetHeight());
        int different = 0;
        const std::uint8_t* pixel = expected.GetPixels()->data();
        for (int y = 0; y < std::min(image.height(), expected.GetHeight()); ++y)
            for (int x = 0; x < expected.GetWidth(); ++x, pixel += expected.GetChannels())
                different += image.pixel(x, y) != qRgb(pixel[0], pixel[1], pixel[2]) ? 1 : 0;
        return different;
    }

    [[nodiscard]] SpaceViewerPeer& peer() const {
        return *dynamic_cast<SpaceViewerPeer*>(viewer->GetPeer());
    }

    /// Waits until the display shows what was drawn.
    void flush() {
        settle();
        QTest::qWait(50);
    }

    /// Whether the display comes to show something; busy machines take their time.
    template <class Condition>
    static bool comes(const Condition& condition) {
        constexpr int patienceMs = 20000;
        return QTest::qWaitFor(condition, patienceMs);
    }
};

TEST_F(ViewerPlanes, ABackgroundColorIsShownAsItIs) {
    auto* space = showSpace();
    space->SetBackgroundColor({12, 134, 200, 255});
    const QImage image = picture();
    for (const QPoint& place : {QPoint(0, 0), QPoint(image.width() - 1, image.height() - 1)})
        EXPECT_EQ(image.pixelColor(place), QColor(12, 134, 200));
}

TEST_F(ViewerPlanes, WithoutAColorTheBackgroundFitsTheTheme) {
    showViewer<QorNavigation3DViewer>();
    const QImage light = picture();
    const int middle = light.width() / 2;
    EXPECT_GT(light.pixelColor(middle, 0).lightness(), 235);
    EXPECT_LT(light.pixelColor(middle, light.height() - 1).lightness(),
              light.pixelColor(middle, 0).lightness());
    desktop->theme().choose(ThemeChoice::Dark);
    settle();
    EXPECT_LT(picture().pixelColor(middle, 0).lightness(), 90);
}

TEST_F(ViewerPlanes, AnOverlayIsExactToThePixel) {
    showSpace();
    for (const bool isAlwaysOpenGl : {true, false})
        for (const int channels : {3, 4}) {
            peer().setAlwaysOpenGl(isAlwaysOpenGl);
            const auto plane = addPlane(6);
            const QorPixelImage_var image = noise(channels, 7);
            const auto rep = cover(image.Get());
            rep->SetAlphaMode(1);
            plane->AddRep(rep.Get());
            viewer->Draw();
            EXPECT_EQ(countDifferent(picture(), *image), 0);
            EXPECT_EQ(peer().isFlat(), !isAlwaysOpenGl);
            EXPECT_TRUE(comes([&] { return countDifferent(onScreen(), *image) == 0; }))
                << "on the display";
            viewer->RemoveViewpoint(plane.Get());
        }
}

TEST_F(ViewerPlanes, APictureOverAllIsPaintedWithoutOpenGlWhereAProcessorDraws) {
    auto* space = showSpace();
    space->SetBackgroundColor({9, 99, 199, 255});
    viewer->Draw();
    flush();
    const auto plane = addPlane(6);
    const auto over = addPlane(9);
    const QorPixelImage_var image = noise(4, 13);
    const QorPixelImage_var small = noisePicture(20, 10, 3, 14);
    const auto rep = cover(image.Get());
    rep->SetAlphaMode(1);
    plane->AddRep(rep.Get());
    over->AddRep(cover(small.Get()).Get());
    viewer->Draw();
    flush();
    EXPECT_TRUE(peer().isFlat());
    EXPECT_FALSE(surface().isVisible());
    const auto isBetween = [&] {
        const int hidden = countDifferent(onScreen(), *image);
        return hidden > 150 && hidden <= 200;
    };
    EXPECT_TRUE(comes(isBetween)) << "what lies over it is seen, and no more";
    controlOf(window)->resize(controlOf(window)->size() + QSize(60, 40));
    settle();
    viewer->Draw();
    flush();
    EXPECT_FALSE(peer().isFlat()) << "the picture is too small now";
    EXPECT_TRUE(surface().isVisible());
    EXPECT_TRUE(comes([&] { return onScreen().pixelColor(0, 0) == QColor(9, 99, 199); }));
}

TEST_F(ViewerPlanes, AnOverlayThatAPainterDrawsIsExactToo) {
    showSpace();
    const auto plane = addPlane(6);
    const QorPixelImage_var image = noise(3, 8);
    plane->AddRep(cover(image.Get()).Get());
    // Something besides pictures, outside the viewer, brings the painter in.
    plane->AddRep(QorMake<Qor2DPointRep>(QorMathPoint2D{-9000.0, 0.0}).Get());
    viewer->Draw();
    EXPECT_EQ(countDifferent(picture(), *image), 0);
}

TEST_F(ViewerPlanes, TransparencyOfAnOverlayCountsWhenItIsAskedFor) {
    auto* space = showSpace();
    space->SetBackgroundColor({200, 200, 200, 255});
    const auto pixels = std::make_shared<QorPixelImage::Pixels>(400 * 400 * 4, std::uint8_t{0});
    const auto plane = addPlane(6);
    const auto rep = cover(QorMake<QorPixelImage>(400, 400, 4, pixels).Get());
    plane->AddRep(rep.Get());
    viewer->Draw();
    EXPECT_EQ(middle(), QColor(0, 0, 0));
    rep->SetAlphaMode(1);
    viewer->Draw();
    EXPECT_EQ(middle(), QColor(200, 200, 200));
}

TEST_F(ViewerPlanes, LieUnderSpaceOrOverItByTheirPriority) {
    auto* space = showSpace();
    const auto material = plainMaterial(1.0F, 0.0F, 0.0F);
    material->unlit = true;
    space->SetEdgesShown(false);
    space->AddRep(boxRep(material.Get()).Get());
    const QorPixelImage_var image = noise(3, 9);
    const auto under = addPlane(-1);
    under->AddRep(cover(image.Get()).Get());
    viewer->Draw();
    const QImage shown = picture();
    const auto* corner = image->GetPixels()->data();
    EXPECT_EQ(shown.pixel(0, 0), qRgb(corner[0], corner[1], corner[2]));
    EXPECT_EQ(middle(), QColor(255, 0, 0));
    const auto over = addPlane(1);
    over->AddRep(cover(image.Get()).Get());
    viewer->Draw();
    EXPECT_EQ(countDifferent(picture(), *image), 0);
}

TEST_F(ViewerPlanes, SpaceThatAPictureHidesIsNotDrawnUntilItIsSeenAgain) {
    auto* space = showSpace();
    peer().setAlwaysOpenGl(true);
    const auto material = plainMaterial(1.0F, 0.0F, 0.0F);
    material->unlit = true;
    space->SetEdgesShown(false);
    space->AddRep(boxRep(material.Get()).Get());
    EXPECT_EQ(middle(), QColor(255, 0, 0));
    const auto plane = addPlane(6);
    const QorPixelImage_var image = noise(4, 11);
    const auto rep = cover(image.Get());
    rep->SetAlphaMode(1);
    plane->AddRep(rep.Get());
    viewer->Draw();
    const std::size_t before = surface().composer()->space().draws();
    material->baseColor[0] = 0.0F;
    material->baseColor[1] = 1.0F;
    material->MarkModified();
    EXPECT_EQ(countDifferent(picture(), *image), 0);
    EXPECT_EQ(surface().composer()->space().draws(), before);
    plane->RemoveRep(rep.Get());
    viewer->Draw();
    EXPECT_EQ(middle(), QColor(0, 255, 0)) << "as it has become meanwhile";
}

TEST_F(ViewerPlanes, WhatAPictureLeavesOpenIsStillSeen) {
    auto* space = showSpace();
    space->SetBackgroundColor({9, 99, 199, 255});
    const auto plane = addPlane(6);
    const QSize size = control().deviceSize();
    auto pixels = std::make_shared<QorPixelImage::Pixels>(*noise(4, 12)->GetPixels());
    for (std::size_t i = 3; i < 4 * static_cast<std::size_t>(size.width()); i += 4)
        (*pixels)[i] = 0; // the upper row is not of the region
    const auto rep = cover(QorMake<QorPixelImage>(size.width(), size.height(), 4, pixels).Get());
    rep->SetAlphaMode(1);
    plane->AddRep(rep.Get());
    viewer->Draw();
    EXPECT_EQ(picture().pixelColor(7, 0), QColor(9, 99, 199));
    const std::uint8_t* second = pixels->data() + 4 * static_cast<std::size_t>(size.width());
    EXPECT_EQ(picture().pixelColor(0, 1), QColor(second[0], second[1], second[2]));
}

TEST_F(ViewerPlanes, ALargePictureIsMadeSmallByAWorkerAndIsExactWhereItIsTaken) {
    showSpace();
    const QSize size = 5 * control().deviceSize();
    auto pixels = std::make_shared<QorPixelImage::Pixels>();
    for (int i = 0; i < size.width() * size.height(); ++i)
        pixels->insert(pixels->end(), 3, static_cast<std::uint8_t>(i % 2 == 0 ? 255 : 0));
    const auto large = QorMake<QorPixelImage>(size.width(), size.height(), 3, pixels);
    const auto rep = QorMake<Qor2DImagePixelRep>(
        QorMathPoint2D{-0.1 * size.width(), -0.1 * size.height()}, large.Get());
    rep->SetZoom(0.2, 0.2);
    const auto plane = addPlane(6);
    plane->AddRep(rep.Get());
    const auto greyAt = [&](const QImage& image) {
        return image.pixelColor(image.width() / 2, image.height() / 2).green();
    };
    viewer->Draw();
    EXPECT_NEAR(greyAt(picture()), 128, 26) << "the mean of 25 pixels, half of them white";
    viewer->Draw();
    flush();
    EXPECT_TRUE(comes([&] { return std::abs(greyAt(onScreen()) - 128) <= 26; }));
}

TEST_F(ViewerPlanes, AStretchedBackgroundCoversTheViewerAfterAResize) {
    showSpace();
    const auto pixels = std::make_shared<QorPixelImage::Pixels>(QorPixelImage::Pixels{9, 99, 199});
    const auto image = QorMake<QorPixelImage>(1, 1, 3, pixels);
    const auto plane = addPlane(-1);
    for (const QSize& change : {QSize(0, 0), QSize(37, 55), QSize(-71, -13)}) {
        controlOf(window)->resize(controlOf(window)->size() + change);
        settle();
        float width = 0.0F;
        float height = 0.0F;
        viewer->GetGraphicSize(width, height);
        const auto rep = QorMake<Qor2DImagePixelRep>(
            QorMathPoint2D{-0.5 * static_cast<double>(width), -0.5 * static_cast<double>(height)},
            image.Get());
        rep->SetZoom(static_cast<double>(width), static_cast<double>(height));
        plane->AddRep(rep.Get());
        viewer->Draw();
        const QImage shown = picture();
        EXPECT_EQ(shown.size(), QSize(static_cast<int>(width), static_cast<int>(height)));
        for (const QPoint& place :
             {QPoint(0, 0), QPoint(shown.width() - 1, 0), QPoint(0, shown.height() - 1),
              QPoint(shown.width() - 1, shown.height() - 1)})
            EXPECT_EQ(shown.pixelColor(place), QColor(9, 99, 199)) << place.x() << "," << place.y();
        plane->RemoveRep(rep.Get());
    }
}

TEST_F(ViewerPlanes, ANewPictureCostsOneUploadAndAnOldOneNone) {
    showSpace();
    peer().setAlwaysOpenGl(true);
    const auto plane = addPlane(6);
    const QorPixelImage_var first = noise(3, 1);
    const auto rep = cover(first.Get());
    plane->AddRep(rep.Get());
    viewer->Draw();
    settle();
    picture();
    const std::size_t before = surface().composer()->uploads();
    rep->SetPosition(rep->GetPosition());
    viewer->Draw();
    picture();
    EXPECT_EQ(surface().composer()->uploads(), before);
    plane->RemoveRep(rep.Get());
    plane->AddRep(cover(noise(3, 2).Get()).Get());
    viewer->Draw();
    picture();
    EXPECT_EQ(surface().composer()->uploads(), before + 1);
}

TEST_F(ViewerPlanes, AreWhereThePlanesConversionsSayInAViewerOfThePlane) {
    showViewer<Qor2DViewer>();
    viewer->SetBackgroundColor({0, 0, 0, 255});
    const QorPixelImage_var image = noise(3, 3);
    static_cast<Qor2DViewer*>(viewer)->AddRep(cover(image.Get()).Get());
    viewer->Draw();
    EXPECT_EQ(countDifferent(picture(), *image), 0);
    flush();
    EXPECT_EQ(countDifferent(onScreen(), *image), 0) << "on the display";
}

} // namespace

} // namespace qor::desktop::tests
