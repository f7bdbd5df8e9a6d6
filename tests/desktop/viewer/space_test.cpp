// What a viewer of space shows: pixels where they can be known.
#include "tests/desktop/viewer/ViewerTest.h"

namespace qor::desktop::tests {

namespace {

class SpaceViewer : public ViewerTest {};

TEST_F(SpaceViewer, ShowsAMattFaceAsItsLightSays) {
    auto* space = showSpace();
    space->SetEdgesShown(false);
    space->AddRep(boxRep(plainMaterial(0.8F, 0.4F, 0.1F).Get()));
    space->SetLightSourceReps(mattLight({0.0, 1.0, 0.0}, 0.5F), nullptr);
    space->Draw();
    const QColor straight = middle();
    EXPECT_NEAR(straight.red(), coded(0.8 * 0.5), 1);
    EXPECT_NEAR(straight.green(), coded(0.4 * 0.5), 1);
    EXPECT_NEAR(straight.blue(), coded(0.1 * 0.5), 1);

    space->SetLightSourceReps(mattLight({0.0, 1.0, 0.0}, 0.5F), mattLight({1.0, 1.0, 0.0}, 0.2F));
    space->Draw();
    EXPECT_NEAR(middle().red(), coded(0.8 * (0.5 + 0.2 * std::sqrt(0.5))), 1);

    space->SetLightSourceReps(mattLight({0.0, -1.0, 0.0}, 0.5F), nullptr);
    space->Draw();
    EXPECT_EQ(middle(), QColor(0, 0, 0)) << "a light from behind";
}

TEST_F(SpaceViewer, TurnsALightThatMovesWithTheEye) {
    auto* space = showSpace();
    space->AddRep(boxRep(plainMaterial(0.8F, 0.8F, 0.8F).Get()));
    QorVar<Qor3DLightSourceRep> head =
        QorMake<Qor3DLightSourceRep>(QorLightType::Directional, QorLightMode::Viewer,
                                     QorMathPoint(), QorMathVector{0, 0, -1}, 180.0F);
    const float black[4] = {0.0F, 0.0F, 0.0F, 1.0F};
    const float half[4] = {0.5F, 0.5F, 0.5F, 1.0F};
    head->SetColorParameters(black, half, black);
    space->SetLightSourceReps(head.Detach(), nullptr);
    for (const QorMathPoint& eye : {QorMathPoint{0, -500, 0}, QorMathPoint{500, 0, 0}}) {
        space->GetMain3DViewpoint()->SetView(eye, {}, {0.0, 0.0, 1.0});
        space->Draw();
        EXPECT_NEAR(middle().red(), coded(0.8 * 0.5), 1);
    }
}

TEST_F(SpaceViewer, AmbientFillsAnUprightWallWithItsFactor) {
    auto* space = showSpace();
    space->AddRep(boxRep(plainMaterial(0.8F, 0.8F, 0.8F).Get()));
    space->SetGlobalAmbientLight(0.4F, 0.4F, 0.4F);
    space->Draw();
    EXPECT_NEAR(middle().red(), coded(0.8 * 0.4), 8) << "and a little of what it reflects";
}

TEST_F(SpaceViewer, LeavesOutWhatIsHidden) {
    auto* space = showSpace();
    const auto rep = boxRep(plainMaterial(1.0F, 1.0F, 1.0F).Get());
    auto bag = QorMake<Qor3DBagRep>();
    bag->AddChild(rep.Get());
    space->AddRep(bag.Get());
    space->SetGlobalAmbientLight(0.5F, 0.5F, 0.5F);
    space->Draw();
    EXPECT_GT(middle().red(), 100);
    rep->SetShown(false);
    EXPECT_EQ(middle(), QColor(0, 0, 0));
    rep->SetShown(true);
    bag->SetShown(false);
    EXPECT_EQ(middle(), QColor(0, 0, 0));
    bag->SetShown(true);
    EXPECT_GT(middle().red(), 100);
    space->RemoveRep(bag.Get());
    EXPECT_EQ(middle(), QColor(0, 0, 0));
}

TEST_F(SpaceViewer, TintsWhatIsHighlighted) {
    auto* space = showSpace();
    const auto rep = boxRep(plainMaterial(0.6F, 0.6F, 0.6F).Get());
    auto bag = QorMake<Qor3DBagRep>();
    bag->AddChild(rep.Get());
    space->AddRep(bag.Get());
    space->SetGlobalAmbientLight(0.5F, 0.5F, 0.5F);
    space->Draw();
    const QColor before = middle();
    bag->SetHighlighted(true);
    EXPECT_GT(middle().blue(), middle().red() + 40);
    bag->SetHighlighted(false);
    EXPECT_EQ(middle(), before);
}

TEST_F(SpaceViewer, ShowsAnotherMaterialAndAChangedOne) {
    auto* space = showSpace();
    const auto material = plainMaterial(1.0F, 0.0F, 0.0F);
    material->unlit = true;
    const auto rep = boxRep(material.Get());
    space->AddRep(rep.Get());
    space->Draw();
    EXPECT_GT(middle().red(), 200);
    material->baseColor[0] = 0.0F;
    material->baseColor[1] = 1.0F;
    material->MarkModified();
    space->Draw();
    EXPECT_LT(middle().red(), 10);
    EXPECT_GT(middle().green(), 200);
    rep->SetMaterial(nullptr);
    space->SetGlobalAmbientLight(0.5F, 0.5F, 0.5F);
    space->Draw();
    EXPECT_NEAR(middle().red(), middle().green(), 12) << "the grey of things without a material";
}

TEST_F(SpaceViewer, DrawsEdgesUnlessTheyAreSwitchedOff) {
    auto* space = showSpace();
    space->GetMain3DViewpoint()->SetView({300, -400, 250}, {}, {0.0, 0.0, 1.0});
    space->AddRep(boxRep(plainMaterial(1.0F, 1.0F, 1.0F).Get()));
    space->SetGlobalAmbientLight(0.7F, 0.7F, 0.7F);
    const auto darkOn = [&] { // the edge that is nearest to the eye
        const QImage image = picture();
        const QPoint pixel = pixelOf({30, -30, 0}, image);
        int darkest = 255;
        for (int x = -2; x <= 2; ++x)
            darkest = std::min(darkest, image.pixelColor(pixel + QPoint(x, 0)).red());
        return darkest;
    };
    space->Draw();
    EXPECT_LT(darkOn(), 150);
    space->SetEdgesShown(false);
    EXPECT_GT(darkOn(), 190);
}

TEST_F(SpaceViewer, PutsEveryPointWhereTheViewpointDoes) {
    auto* space = showSpace();
    const auto material = plainMaterial(1.0F, 1.0F, 1.0F);
    material->unlit = true;
    const QorMathPoint place{12.0, -7.0, 9.0};
    auto bag = QorMake<Qor3DBagRep>();
    bag->SetMatrix(QorMathTransformation::Translation(place));
    bag->AddChild(boxRep(material.Get(), {1.0, 1.0, 1.0}).Get());
    space->AddRep(bag.Get());
    for (const auto projection :
         {Qor3DViewpoint::Projection::Parallel, Qor3DViewpoint::Projection::Perspective}) {
        Qor3DViewpoint& viewpoint = *space->GetMain3DViewpoint();
        viewpoint.SetProjection(projection);
        viewpoint.SetView({100, -150, 80}, {3, 2, 1}, {0.1, 0.0, 1.0});
        viewpoint.SetFieldOfView(25.0);
        space->Draw();
        const QImage image = picture();
        EXPECT_EQ(image.pixelColor(pixelOf(place, image)).green(), 255);
    }
}

TEST_F(SpaceViewer, ShowsEachOfSeveralViewpointsInItsPart) {
    auto* space = showSpace();
    const auto material = plainMaterial(0.0F, 1.0F, 0.0F);
    material->unlit = true;
    space->SetEdgesShown(false);
    space->AddRep(boxRep(material.Get(), {40.0, 10.0, 10.0})
                      .Get()); // long from the front, not from the right
    space->SplitViewpoints(4);
    space->Draw();
    const QImage image = picture();
    for (const QorVar<QorViewpoint>& one : space->Get3DViewpoints()) {
        float x = 0.0F;
        float y = 0.0F;
        float width = 0.0F;
        float height = 0.0F;
        one->GetGLViewport(x, y, width, height);
        ASSERT_GT(width, 0.0F);
        const QPoint center(static_cast<int>(x + 0.5F * width),
                            image.height() - 1 - static_cast<int>(y + 0.5F * height));
        EXPECT_EQ(image.pixelColor(center), QColor(0, 255, 0)) << center.x() << "," << center.y();
    }
    EXPECT_EQ(space->Get3DViewpoints().size(), 4U);
    space->SplitViewpoints(1);
    EXPECT_EQ(middle(), QColor(0, 255, 0));
}

TEST_F(SpaceViewer, KeepsItsPrecisionFarFromTheOrigin) {
    auto* space = showSpace();
    const auto material = plainMaterial(1.0F, 1.0F, 1.0F);
    material->unlit = true;
    constexpr double far = 5.0e7; // fifty kilometres
    auto bag = QorMake<Qor3DBagRep>();
    bag->SetMatrix(QorMathTransformation::Translation({far, far, far}));
    bag->AddChild(boxRep(material.Get(), {10.0, 10.0, 10.0}).Get());
    space->AddRep(bag.Get());
    space->GetMain3DViewpoint()->SetView({far, far - 500.0, far}, {far, far, far}, {0, 0, 1});
    space->SetEdgesShown(false);
    space->Draw();
    const QImage image = picture();
    const double pixelsByMm = image.height() / 100.0;
    int white = 0;
    for (int x = 0; x < image.width(); ++x)
        white += image.pixelColor(x, image.height() / 2).green() > 128 ? 1 : 0;
    EXPECT_NEAR(white, 20.0 * pixelsByMm, 1.0);
}

TEST_F(SpaceViewer, DrawsLines) {
    auto* space = showSpace();
    auto line = QorMake<Qor3DLineRep>(std::vector<QorMathPoint>{{-30, 0, 0}, {30, 0, 0}});
    line->SetAttributes({.color = {255, 0, 0, 255}, .thickness = 3.0F});
    space->AddRep(line.Get());
    space->Draw();
    const auto reddest = [&] { // near the middle, whatever pixel the line falls on
        const QImage image = picture();
        int most = 0;
        for (int y = -2; y <= 2; ++y)
            most =
                std::max(most, image.pixelColor(image.width() / 2, image.height() / 2 + y).red());
        return most;
    };
    EXPECT_GT(reddest(), 200);
    line->SetShown(false);
    EXPECT_EQ(reddest(), 0);
}

TEST_F(SpaceViewer, ShowsClearThingsOverWhatIsBehindThem) {
    auto* space = showSpace();
    const auto behind = plainMaterial(1.0F, 0.0F, 0.0F);
    behind->unlit = true;
    const auto front = plainMaterial(0.0F, 0.0F, 1.0F);
    front->unlit = true;
    front->baseColor[3] = 0.5F;
    space->SetEdgesShown(false);
    space->AddRep(boxRep(front.Get(), {20, 1, 20}).Get());
    auto bag = QorMake<Qor3DBagRep>();
    bag->SetMatrix(QorMathTransformation::Translation({0.0, 40.0, 0.0}));
    bag->AddChild(boxRep(behind.Get()).Get());
    space->AddRep(bag.Get());
    space->Draw();
    EXPECT_GT(middle().red(), 40);
    EXPECT_GT(middle().blue(), 100);
}

TEST_F(SpaceViewer, ShowsTheColorsOfATextureTopRowFirst) {
    auto* space = showSpace();
    space->SetEdgesShown(false);
    QorMesh::Data data;
    data.positions = {-30, 0, -30, 30, 0, -30, 30, 0, 30, -30, 0, 30};
    data.textureUv = {0, 1, 1, 1, 1, 0, 0, 0};
    data.indices = {0, 1, 2, 0, 2, 3};
    const auto pixels = std::make_shared<QorPixelImage::Pixels>(
        QorPixelImage::Pixels{255, 0, 0, 255, 0, 0, 0, 255, 0, 0, 255, 0});
    const auto material = plainMaterial(1.0F, 1.0F, 1.0F);
    material->unlit = true;
    QorTextureUse use;
    use.image = QorMake<QorPixelImage>(2, 2, 3, pixels);
    use.wrapU = use.wrapV = QorTextureWrap::ClampToEdge;
    material->SetTexture(QorTextureSlot::BaseColor, use);
    space->AddRep(QorMake<Qor3DMeshRep>(QorMake<QorMesh>(data).Get(), material.Get()).Get());
    space->Draw();
    const QImage image = picture();
    const int quarter = image.height() / 4;
    EXPECT_GT(image.pixelColor(image.width() / 2, quarter + 10).red(), 200);
    EXPECT_GT(image.pixelColor(image.width() / 2, 3 * quarter - 10).green(), 200);
}

TEST_F(SpaceViewer, DarkensTheGroundWhereTheShadowFalls) {
    auto* space = showSpace();
    space->SetBackgroundColor({255, 255, 255, 255});
    space->GetMain3DViewpoint()->SetView({0, -500, 500}, {}, {0.0, 0.0, 1.0});
    space->SetGlobalAmbientLight(0.3F, 0.3F, 0.3F);
    space->SetLightSourceReps(mattLight({1.0, 0.0, -1.0}, 0.7F), nullptr);
    space->AddRep(boxRep(plainMaterial(0.8F, 0.8F, 0.8F).Get(), {8, 8, 8}));
    const auto ground =
        QorMake<QorRsc3DGroundRep>(QorMathPoint{0, 0, -8}, QorMathVector{0, 0, 1}, 400.0);
    const auto greyAt = [&](const QorMathPoint& point) {
        const QImage image = picture();
        return image.pixelColor(pixelOf(point, image)).green();
    };
    space->Draw();
    EXPECT_EQ(greyAt({16, 0, -8}), 255) << "nothing there yet";
    space->SetGround(ground.Get());
    space->Draw();
    const int lit = greyAt({-30, 0, -8});
    const int shaded = greyAt({16, 0, -8});
    EXPECT_LT(lit, 255);
    EXPECT_LT(shaded, lit - 30);
    ground->SetTransparency(1.0F);
    space->Draw();
    EXPECT_EQ(greyAt({-30, 0, -8}), 255);
    EXPECT_LT(greyAt({16, 0, -8}), 240) << "a clear ground still takes the shadow";
    space->SetGround(nullptr);
    space->Draw();
    EXPECT_EQ(greyAt({16, 0, -8}), 255);
}

TEST_F(SpaceViewer, MirrorsInTheGroundWhatStandsOnIt) {
    auto* space = showSpace();
    space->GetMain3DViewpoint()->SetView({0, -500, 200}, {}, {0.0, 0.0, 1.0});
    space->SetEdgesShown(false);
    const auto red = plainMaterial(1.0F, 0.0F, 0.0F);
    const auto green = plainMaterial(0.0F, 1.0F, 0.0F);
    red->unlit = green->unlit = true;
    space->AddRep(boxRep(red.Get(), {8, 8, 8}));
    auto below = QorMake<Qor3DBagRep>();
    below->SetMatrix(QorMathTransformation::Translation({25.0, 0.0, -20.0}));
    below->AddChild(boxRep(green.Get(), {5, 5, 5}).Get());
    space->AddRep(below.Get());
    const auto ground =
        QorMake<QorRsc3DGroundRep>(QorMathPoint{0, 0, -8}, QorMathVector{0, 0, 1}, 200.0);
    ground->SetTransparency(1.0F);
    space->SetGround(ground.Get());
    const QorMathPoint image{0, -8, -12}; // of a point on the front
    const auto colorAt = [&](const QorMathPoint& point) {
        const QImage shown = picture();
        return shown.pixelColor(pixelOf(point, shown));
    };
    space->Draw();
    EXPECT_LT(colorAt(image).red(), 5) << "a ground that mirrors nothing";
    ground->SetReflectivity(0.5F);
    space->Draw();
    EXPECT_NEAR(colorAt(image).red(), 128, 12);
    EXPECT_LT(colorAt(image).green(), 5);
    EXPECT_LT(colorAt({60, -8, -12}).red(), 5) << "nothing is mirrored here";
    EXPECT_LT(colorAt({25, -5, 4}).green(), 5) << "what lies below is not mirrored";
    space->GetMain3DViewpoint()->SetView({0, -500, -200}, {}, {0.0, 0.0, 1.0});
    space->Draw();
    EXPECT_LT(colorAt({0, 0, -24}).red(), 5) << "from below it is no mirror";
}

TEST_F(SpaceViewer, ShowsTheShadowOfALowLightBeyondTheGroundsOwnSize) {
    auto* space = showSpace();
    space->SetBackgroundColor({255, 255, 255, 255});
    space->GetMain3DViewpoint()->SetView({0, -500, 500}, {}, {0.0, 0.0, 1.0});
    space->SetLightSourceReps(mattLight({1.0, 0.0, -0.5}, 0.7F), nullptr);
    space->AddRep(boxRep(plainMaterial(0.8F, 0.8F, 0.8F).Get(), {8, 8, 8}));
    const auto ground =
        QorMake<QorRsc3DGroundRep>(QorMathPoint{0, 0, -8}, QorMathVector{0, 0, 1}, 24.0);
    ground->SetTransparency(1.0F);
    space->SetGround(ground.Get());
    space->Draw();
    const QImage image = picture();
    const int near = image.pixelColor(pixelOf({14, 0, -8}, image)).green();
    EXPECT_LT(near, 200);
    EXPECT_EQ(image.pixelColor(pixelOf({-14, 0, -8}, image)).green(), 255);
    EXPECT_GE(image.pixelColor(pixelOf({29, 0, -8}, image)).green(), 252) << "where it has faded";
}

} // namespace

} // namespace qor::desktop::tests
