// A machine without OpenGL 3.3: run with a driver that is told to offer less.
#include "tests/desktop/viewer/ViewerTest.h"

namespace qor::desktop::tests {

namespace {

class WithoutOpenGL : public ViewerTest {};

TEST_F(WithoutOpenGL, AViewerOfSpaceSaysSoAndStillWorks) {
    auto* space = showViewer<QorNavigation3DViewer>();
    EXPECT_FALSE(SpaceSurface::fault().isEmpty());
    EXPECT_TRUE(control().message().contains("OpenGL")) << control().message().toStdString();
    space->AddRep(boxRep(plainMaterial(1, 1, 1).Get()).Get());
    space->Draw();
    settle();
    QorUnicodeString error;
    EXPECT_EQ(QorViewerPictureService::Get().Take(*space, error), nullptr);
    EXPECT_NE(error.Str().find("OpenGL"), std::string::npos) << error.Str();
    const QImage shown = control().grab().toImage();
    bool hasText = false;
    for (int y = 0; y < shown.height(); ++y)
        for (int x = 0; x < shown.width(); ++x)
            hasText = hasText || shown.pixelColor(x, y).lightness() < 150;
    EXPECT_TRUE(hasText);
    QTest::mouseClick(&control(), Qt::LeftButton, {}, QPoint(9, 9));
    space->FitAll();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !space->GetMain3DViewpoint()->IsAnimated(); }));
}

} // namespace

} // namespace qor::desktop::tests
