// A viewer's whole picture: what lies over what, and what is said when there is none.
#include "platform/vis/QorNavigation3DViewer.h"
#include "tests/paint/PaintTest.h"
#include "workbench/paint/HeadlessPictures.h"
#include "workbench/paint/Images.h"

namespace qor::paint {

namespace {

class Composition : public PaintTest {
protected:
    Composition() : dialog(new QorDlgDialog(nullptr, "dialog")) {}

    void TearDown() override {
        dialog->RequestDelayedDestruction();
        PaintTest::TearDown();
    }

    [[nodiscard]] Qor3DViewer* makeSpace() {
        auto* viewer = new Qor3DViewer(dialog, "space", QorDlgDefaultStyle, 40.0F, 30.0F);
        viewer->SetBackgroundColor({0, 0, 255, 255});
        return viewer;
    }

    /// A viewpoint with a filled area, low to high in pixels from the lower left.
    static Qor2DViewpoint_var
    add(QorViewer& viewer, int priority, const QRectF& area, const QorColor& color) {
        const Qor2DViewpoint_var viewpoint = QorMake<Qor2DViewpoint>(
            QorMathPoint2D{20, 15},
            1.0 / static_cast<double>(viewer.GetSupport()->GetMMInSupportUnit()));
        const auto rep = QorMake<Qor2DCustomRep>();
        rep->AddPrimitive(Qor2DQuadStripGP{
            {{QorMathPoint2D{area.left(), area.top()}, QorMathPoint2D{area.right(), area.top()},
              QorMathPoint2D{area.right(), area.bottom()},
              QorMathPoint2D{area.left(), area.bottom()}}}});
        rep->SetAttributes({.color = color});
        viewpoint->AddRep(rep);
        viewpoint->SetPriority(priority);
        viewer.AddViewpoint(viewpoint);
        return viewpoint;
    }

    /// Space that is white in its left half and open in its right one.
    static QorPixelImage_var drawHalf(Qor3DViewer& /*viewer*/,
                                      const Qor3DViewpoint& /*viewpoint*/,
                                      int width,
                                      int height,
                                      QorUnicodeString& /*error*/) {
        auto pixels = std::make_shared<QorPixelImage::Pixels>();
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                pixels->insert(pixels->end(),
                               {255, 255, 255, static_cast<std::uint8_t>(2 * x < width ? 255 : 0)});
        return QorMake<QorPixelImage>(width, height, 4, std::move(pixels));
    }

    /// The picture that the library's service gives.
    [[nodiscard]] QImage take(QorViewer& viewer) {
        error = QorUnicodeString();
        const QorPixelImage_var picture =
            QorAdopt(QorViewerPictureService::Get().Take(viewer, error));
        return picture ? lend(*picture, true).copy() : QImage();
    }

    QorDlgDialog* dialog;
    QorUnicodeString error;
};

constexpr QRgb white = 0xffffffff;
constexpr QRgb blue = 0xff0000ff;
constexpr QorColor inGreen{0, 255, 0, 255};

TEST_F(Composition, LaysColourUnderViewpointsSpaceAndOverViewpointsInThatOrder) {
    Qor3DViewer* viewer = makeSpace();
    add(*viewer, -2, {0, 0, 40, 10}, {255, 0, 0, 255});
    add(*viewer, 6, {0, 20, 40, 10}, inGreen);
    add(*viewer, -1, {30, 0, 10, 10}, {9, 9, 9, 255}); // over the other one below
    const HeadlessPictures host(&drawHalf);
    const QImage image = take(*viewer);
    ASSERT_EQ(image.size(), QSize(40, 30));
    EXPECT_EQ(image.pixel(5, 2), green);  // over space
    EXPECT_EQ(image.pixel(35, 2), green); // over the background
    EXPECT_EQ(image.pixel(5, 15), white); // space over the background
    EXPECT_EQ(image.pixel(25, 15), blue); // the background where space is open
    EXPECT_EQ(image.pixel(5, 25), white); // space over what is under it
    EXPECT_EQ(image.pixel(25, 25), red);  // what is under it, where it is open
    EXPECT_EQ(image.pixel(35, 25), 0xff090909);
}

TEST_F(Composition, DrawsEachViewpointOfSpaceInItsPart) {
    Qor3DViewer* viewer = makeSpace();
    const Qor3DViewpoint_var corner = QorMake<Qor3DViewpoint>();
    corner->SetGLViewport(30, 20, 10, 10); // from the lower left
    viewer->AddViewpoint(corner);
    const auto draw = [&](Qor3DViewer&, const Qor3DViewpoint& viewpoint, int width, int height,
                          QorUnicodeString&) {
        const bool isCorner = &viewpoint == corner.Get();
        EXPECT_EQ(QSize(width, height), isCorner ? QSize(10, 10) : QSize(40, 30));
        return makeGradient(width, height, 4, isCorner ? 255 : 0);
    };
    const HeadlessPictures host(draw);
    const QImage image = take(*viewer);
    EXPECT_EQ(image.pixel(29, 0), blue);
    EXPECT_EQ(image.pixel(30, 10), blue);
    EXPECT_EQ(image.pixel(30, 0), qRgb(0, 0, 7));
    EXPECT_EQ(image.pixel(39, 9), qRgb(9, 9, 7));
}

TEST_F(Composition, AsksAViewerOfThePlaneForNoSpace) {
    auto* viewer = new Qor2DViewer(dialog, "plane", QorDlgDefaultStyle, 40.0F, 30.0F);
    viewer->SetBackgroundColor({0, 0, 255, 255});
    const auto line = QorMake<Qor2DLineRep>(std::vector<QorMathPoint2D>{{-20, 0}, {20, 0}});
    line->SetAttributes(inRed);
    viewer->AddRep(line);
    const HeadlessPictures host(nullptr);
    const QImage image = take(*viewer);
    EXPECT_EQ(image.pixel(20, 15), red);
    EXPECT_EQ(image.pixel(20, 5), blue);
}

TEST_F(Composition, ShowsABackdropAndTheAxesWhereAPersonMovesAboutInSpace) {
    auto* viewer = new QorNavigation3DViewer(dialog, "space", QorDlgDefaultStyle, 300.0F, 240.0F);
    viewer->GetMain3DViewpoint()->SetView({0, -10, 0}, {0, 0, 0}, {0, 0, 1}); // x right, z up
    const HeadlessPictures host(
        [](Qor3DViewer&, const Qor3DViewpoint&, int width, int height, QorUnicodeString&) {
            return makeGradient(width, height, 4, 0);
        });
    const QImage image = take(*viewer);
    EXPECT_GT(qRed(image.pixel(150, 1)), qRed(image.pixel(150, 238)) + 30);
    // The arrows begin 52 pixels from the corner.
    const auto isMostly = [&](int x, int y, int (*part)(QRgb), int (*other)(QRgb)) {
        return part(image.pixel(x, y)) > other(image.pixel(x, y)) + 60;
    };
    EXPECT_TRUE(isMostly(70, 240 - 52, &qRed, &qBlue));
    EXPECT_TRUE(isMostly(52, 240 - 70, &qBlue, &qRed));
    EXPECT_FALSE(isMostly(34, 240 - 52, &qRed, &qBlue));
    viewer->UserResizeViewer(200.0F, 200.0F); // no room
    const QImage small = take(*viewer);
    EXPECT_EQ(small.pixel(70, 200 - 52), small.pixel(150, 200 - 52));
    viewer->SetBackgroundColor({0, 0, 255, 255});
    EXPECT_EQ(take(*viewer).pixel(150, 1), blue);
}

TEST_F(Composition, AsksForNoSpaceThatAPictureHides) {
    Qor3DViewer* viewer = makeSpace();
    const Qor2DViewpoint_var plane = QorMake<Qor2DViewpoint>(
        QorMathPoint2D{}, 1.0 / static_cast<double>(viewer->GetSupport()->GetMMInSupportUnit()));
    plane->SetPriority(6);
    viewer->AddViewpoint(plane);
    int asked = 0;
    const auto draw = [&](Qor3DViewer& space, const Qor3DViewpoint& look, int width, int height,
                          QorUnicodeString& why) {
        ++asked;
        return drawHalf(space, look, width, height, why);
    };
    const HeadlessPictures host(draw);
    const auto show = [&](int alpha) {
        const auto rep = QorMake<Qor2DImagePixelRep>(QorMathPoint2D{-20, -15},
                                                     makeGradient(40, 30, 4, alpha).Get());
        rep->SetAlphaMode(1);
        plane->AddRep(rep);
        const QImage image = take(*viewer);
        plane->RemoveRep(rep);
        return image;
    };
    EXPECT_EQ(show(255).pixel(5, 15), qRgb(5, 15, 7));
    EXPECT_EQ(asked, 0);
    EXPECT_GT(qRed(show(128).pixel(5, 15)), 120) << "half of white";
    EXPECT_EQ(asked, 1);
}

TEST_F(Composition, LaysPicturesOverTheAxes) {
    auto* viewer = new QorNavigation3DViewer(dialog, "space", QorDlgDefaultStyle, 300.0F, 240.0F);
    add(*viewer, 6, {-200, -200, 600, 600}, inGreen);
    const HeadlessPictures host(
        [](Qor3DViewer&, const Qor3DViewpoint&, int width, int height, QorUnicodeString&) {
            return makeGradient(width, height, 4, 0);
        });
    const QImage image = take(*viewer);
    EXPECT_EQ(count(image, green), 300 * 240);
}

TEST_F(Composition, SaysWhyThereIsNoPicture) {
    Qor3DViewer* viewer = makeSpace();
    {
        const HeadlessPictures host(nullptr);
        EXPECT_TRUE(take(*viewer).isNull());
        EXPECT_EQ(error.Str(), "this program draws nothing in space");
    }
    {
        const HeadlessPictures host(
            [](Qor3DViewer&, const Qor3DViewpoint&, int, int, QorUnicodeString& why) {
                why = "the engine is busy";
                return QorPixelImage_var();
            });
        EXPECT_TRUE(take(*viewer).isNull());
        EXPECT_EQ(error.Str(), "the engine is busy");
        viewer->UserResizeViewer(0.0F, 30.0F);
        EXPECT_TRUE(take(*viewer).isNull());
        EXPECT_EQ(error.Str(), "a viewer of 0 by 30 pixels shows nothing");
        viewer->UserResizeViewer(2000000.0F, 2000000.0F);
        EXPECT_TRUE(take(*viewer).isNull());
        EXPECT_NE(error.Str().find("memory"), std::string::npos) << error.Str();
    }
    EXPECT_TRUE(take(*viewer).isNull());
    EXPECT_EQ(error.Str(), "this program draws no viewers");
}

} // namespace

} // namespace qor::paint
