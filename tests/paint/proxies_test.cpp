// Large pictures on small surfaces: what is made of them, by whom, and what is seen meanwhile.
#include "tests/paint/PaintTest.h"
#include "workbench/paint/PlanePictures.h"

#include <QCoreApplication>
#include <QElapsedTimer>

namespace qor::paint {

namespace {

PicturePart partOf(std::vector<std::uint8_t> pixels, int width, int channels, const QRect& source) {
    return {std::make_shared<QorPixelImage::Pixels>(std::move(pixels)), width, channels, source};
}

TEST(Shrinking, GivesMeansOfWhatAPixelCovers) {
    // Three pixels become two: each takes one and a half of another's.
    const PicturePart row = partOf({0, 0, 0, 90, 30, 6, 180, 60, 12}, 3, 3, {0, 0, 3, 1});
    EXPECT_EQ(*shrink(row, {2, 1}), (QorPixelImage::Pixels{30, 10, 2, 150, 50, 10}));
    EXPECT_EQ(*shrink(row, {3, 1}), *row.pixels);
    const PicturePart column = partOf({0, 0, 0, 90, 30, 6, 180, 60, 12}, 1, 3, {0, 0, 1, 3});
    EXPECT_EQ(*shrink(column, {1, 2}), (QorPixelImage::Pixels{30, 10, 2, 150, 50, 10}));
    EXPECT_EQ(*shrink(column, {1, 1}), (QorPixelImage::Pixels{90, 30, 6}));
    const PicturePart end = partOf({0, 0, 0, 90, 30, 6, 180, 60, 12}, 3, 3, {1, 0, 2, 1});
    EXPECT_EQ(*shrink(end, {1, 1}), (QorPixelImage::Pixels{135, 45, 9})) << "of a part";
    EXPECT_EQ(*thin(row, {1, 1}), (QorPixelImage::Pixels{90, 30, 6})) << "the one in the middle";
}

TEST(Shrinking, TakesNoColourFromWhatIsTransparent) {
    PicturePart row = partOf({200, 0, 0, 255, 0, 99, 0, 0}, 2, 4, {0, 0, 2, 1});
    EXPECT_EQ(*shrink(row, {1, 1}), (QorPixelImage::Pixels{200, 0, 0, 128}));
    EXPECT_FALSE(areOpaque(*row.pixels, 4));
    row.ignoresAlpha = true;
    EXPECT_EQ(*shrink(row, {1, 1}), (QorPixelImage::Pixels{100, 50, 0, 255}));
    EXPECT_TRUE(areOpaque(*shrink(row, {1, 1}), 4));
}

/// A picture of one grey.
QorPixelImage_var grey(int width, int height, std::uint8_t value) {
    const auto bytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3;
    return QorMake<QorPixelImage>(width, height, 3,
                                  std::make_shared<QorPixelImage::Pixels>(bytes, value));
}

class PaintedProxies : public PaintTest {
protected:
    PaintedProxies() { surface.width = 400.0F; }

    /// As a window's frame has it; how bright it shows the picture.
    int show(QorPixelImage& picture) {
        const PlacedPicture shown =
            pictures.placed({this, {0, 0, 400, 30}}, picture,
                            {0, 0, picture.GetWidth(), picture.GetHeight()}, false, {400.0, 30.0});
        pictures.endFrame();
        return shown.picture ? shown.picture->GetPixels()->front() : -1;
    }

    void awaitWorker() {
        QElapsedTimer time;
        time.start();
        while (pictures.proxies().busy() > 0 && time.elapsed() < 20000)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
        ASSERT_EQ(pictures.proxies().busy(), 0U);
    }
};

TEST_F(PaintedProxies, AreMadeByAWorkerWhileWhatWasThereStays) {
    int ready = 0;
    pictures.proxies().onReady = [&] {
        ++ready;
    };
    const QorPixelImage_var first = grey(1000, 900, 10);
    const QorPixelImage_var second = grey(1000, 900, 20);
    const QorPixelImage_var third = grey(1000, 900, 30);
    EXPECT_EQ(show(*first), 10) << "something at once";
    EXPECT_EQ(pictures.proxies().busy(), 1U);
    awaitWorker();
    EXPECT_EQ(ready, 1);
    EXPECT_EQ(show(*first), 10);
    EXPECT_EQ(pictures.proxies().busy(), 0U) << "nothing is made twice";
    EXPECT_EQ(show(*second), 10) << "what was there before";
    EXPECT_EQ(show(*third), 10);
    EXPECT_EQ(pictures.proxies().busy(), 1U) << "a viewpoint has one worker";
    awaitWorker();
    EXPECT_EQ(show(*third), 20) << "the newest that is there";
    awaitWorker();
    EXPECT_EQ(show(*third), 30);
    EXPECT_EQ(pictures.count(), 1U) << "the others are gone";
}

TEST_F(PaintedProxies, AreMadeAtOnceForWhoWantsTheVeryPicture) {
    pictures.proxies().onReady = [] {
    };
    const QorPixelImage_var first = grey(1000, 900, 10);
    const QorPixelImage_var second = grey(1000, 900, 20);
    EXPECT_EQ(show(*first), 10);
    pictures.proxies().setExact(true);
    EXPECT_EQ(show(*second), 20);
    awaitWorker();
}

TEST_F(PaintedProxies, MayGoWhileTheirWorkerIsBusy) {
    const QorPixelImage_var picture = grey(3000, 2000, 10);
    const long holders = picture->GetPixels().use_count();
    {
        PictureCache cache;
        cache.proxies().onReady = [] {
            ADD_FAILURE() << "who is told has gone";
        };
        (void)cache.placed({this, {0, 0, 40, 30}}, *picture, {0, 0, 3000, 2000}, false, {40, 30});
        EXPECT_EQ(cache.proxies().busy(), 1U);
    }
    QElapsedTimer time;
    time.start();
    while (picture->GetPixels().use_count() > holders && time.elapsed() < 20000)
        QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_EQ(picture->GetPixels().use_count(), holders);
}

/// What a viewer shows of its planes when one of them has a picture, for a table.
struct HidingRow {
    const char* what;
    int priority;
    QRect place; ///< pixels from the upper left of a viewer of 40 by 30
    int alpha;
    int alphaMode;
    bool hidesBackdrop;
    bool hidesSpace;
};

TEST_F(PaintTest, WhatAWholeAndOpaquePictureHidesIsLeftOut) {
    const std::array<HidingRow, 8> rows{{
        {"whole and opaque", 6, {0, 0, 40, 30}, 255, 1, true, true},
        {"larger than the viewer", 6, {-3, -3, 50, 50}, 255, 1, true, true},
        {"a pixel short on the right", 6, {0, 0, 39, 30}, 255, 1, false, false},
        {"a pixel short below", 6, {0, 0, 40, 29}, 255, 1, false, false},
        {"a region in the middle", 6, {10, 10, 20, 10}, 255, 1, false, false},
        {"not quite opaque", 6, {0, 0, 40, 30}, 254, 1, false, false},
        {"alpha that does not count", 6, {0, 0, 40, 30}, 254, 0, true, true},
        {"a background", -1, {0, 0, 40, 30}, 255, 1, true, false},
    }};
    auto* dialog = new QorDlgDialog(nullptr, "dialog");
    auto* viewer = new Qor3DViewer(dialog, "space", QorDlgDefaultStyle, 40.0F, 30.0F);
    surface = surfaceOf(*viewer);
    const Qor2DViewpoint_var below = makeViewpoint();
    below->SetPriority(3);
    below->AddRep(QorMake<Qor2DPointRep>(QorMathPoint2D{}));
    const Qor2DViewpoint_var above = makeViewpoint();
    above->SetPriority(9);
    above->AddRep(QorMake<Qor2DPointRep>(QorMathPoint2D{}));
    viewer->AddViewpoint(below);
    viewer->AddViewpoint(above);
    for (const HidingRow& row : rows) {
        const Qor2DViewpoint_var plane = makeViewpoint();
        plane->SetPriority(row.priority);
        const auto rep = QorMake<Qor2DImagePixelRep>(
            QorMathPoint2D{row.place.left() - 20.0, 15.0 - row.place.top() - row.place.height()},
            makeGradient(row.place.width(), row.place.height(), 4, row.alpha).Get());
        rep->SetAlphaMode(row.alphaMode);
        plane->AddRep(rep);
        viewer->AddViewpoint(plane);
        const VisiblePlanes visible = visiblePlanesOf(*viewer, surface, pictures);
        EXPECT_EQ(visible.hidesBackdrop, row.hidesBackdrop) << row.what;
        EXPECT_EQ(visible.hidesSpace, row.hidesSpace) << row.what;
        EXPECT_EQ(visible.planes.size(), row.hidesSpace ? 2U : 3U) << row.what;
        EXPECT_EQ(visible.planes.back().viewpoint, above.Get()) << row.what;
        viewer->RemoveViewpoint(plane);
    }
    dialog->RequestDelayedDestruction();
}

} // namespace

} // namespace qor::paint
