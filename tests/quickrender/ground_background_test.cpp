#include "platform/system/QorPaths.h"
#include "platform/vis/QorPlainPictures.h"
#include "quickrender/QorRdgBackgroundViewer.h"
#include "quickrender/QorRdgGroundViewer.h"
#include "scenes/QorRdgWorkers.h"
#include "tests/quickrender/ViewerAdapterTest.h"

#include <sys/stat.h>

#include <cmath>
#include <filesystem>
#include <future>

namespace {

class Ground : public ViewerAdapterTest {
protected:
    void SetUp() override {
        ground = QorQuery<QorIRdgGround>(viewer);
        ASSERT_TRUE(ground);
    }

    void TearDown() override {
        ground.Reset();
        ViewerAdapterTest::TearDown();
    }

    QorIRdgGround_var ground;
};

void ExpectNear(const QorMathVector& iFirst, const QorMathVector& iSecond) {
    EXPECT_NEAR(iFirst.x, iSecond.x, 1.0e-6);
    EXPECT_NEAR(iFirst.y, iSecond.y, 1.0e-6);
    EXPECT_NEAR(iFirst.z, iSecond.z, 1.0e-6);
}

TEST_F(Ground, LiesUnderTheProductForSeveralVerticals) {
    AddBox({-1, -2, -3}, {5, 4, 3}); // 6 by 6 by 6 around (2, 1, 0)

    struct Row {
        QorMathVector vertical;
        QorMathPoint origin;
        double size;
    };

    for (const Row& row : {Row{{0, 0, 1}, {2, 1, -3}, 9.0}, Row{{0, 0, -1}, {2, 1, 3}, 9.0},
                           Row{{1, 0, 0}, {-1, 1, 0}, 9.0}, Row{{0, 1, 0}, {2, -2, 0}, 9.0}}) {
        viewer->SetVertical(row.vertical);
        EXPECT_EQ(ground->SetGroundOn(1), S_OK);
        ASSERT_NE(viewer->GetGround(), nullptr);
        ExpectNear(viewer->GetGround()->GetOrigin(), row.origin);
        ExpectNear(viewer->GetGround()->GetVertical(), row.vertical);
        EXPECT_NEAR(viewer->GetGround()->GetSize(), row.size, 1.0e-6);
        EXPECT_EQ(ground->SetGroundOn(0), S_OK);
        EXPECT_EQ(viewer->GetGround(), nullptr);
    }
}

TEST_F(Ground, TakesTheLargerExtentAcrossTheVertical) {
    AddBox({0, 0, 0}, {2, 8, 100});
    ground->SetGroundOn(1);
    EXPECT_NEAR(viewer->GetGround()->GetSize(), 12.0, 1.0e-6);
}

TEST_F(Ground, SwitchedOnTwiceStaysAsItIs) {
    AddBox({0, 0, 0}, {2, 2, 2});
    ground->SetGroundOn(1);
    const QorRsc3DGroundRep* first = viewer->GetGround();
    AddBox({0, 0, -50}, {2, 2, 2});
    EXPECT_EQ(ground->SetGroundOn(1), S_OK);
    EXPECT_EQ(viewer->GetGround(), first);
    EXPECT_EQ(ground->SetTransparency(0.25F), S_OK);
    EXPECT_EQ(ground->SetReflectivity(0.5F), S_OK);
    EXPECT_EQ(first->GetTransparency(), 0.25F);
    EXPECT_EQ(first->GetReflectivity(), 0.5F);
}

TEST_F(Ground, SlidesAlongItsVerticalAloneUnderADrag) {
    AddBox({-1, -1, 0}, {1, 1, 1});
    viewer->GetMain3DViewpoint()->SetView({0, -20, 10}, {0, 0, 0}, {0, 0, 1});
    ground->SetGroundOn(1);
    ASSERT_EQ(viewer->GetManipulators().size(), 1U);
    EXPECT_EQ(viewer->GetManipulators().front()->GetName(), QorString("groundManipulator"));
    QorMathPoint2D pixel;
    viewer->GetMain3DViewpoint()->Project({1.3, -1.2, 0}, width, height,
                                          pixel); // the ground beside the box
    const QorMathPoint before = viewer->GetGround()->GetOrigin();
    Drag(pixel.x, pixel.y, pixel.x + 30, pixel.y - 20);
    const QorMathPoint after = viewer->GetGround()->GetOrigin();
    const auto* manipulator = dynamic_cast<Qor3DManipulator*>(viewer->GetManipulators().front());
    ExpectNear(manipulator->GetPosition().GetOrigin(), after);
    EXPECT_GT(after.z, before.z + 0.1);
    EXPECT_NEAR(after.x, before.x, 1.0e-9);
    EXPECT_NEAR(after.y, before.y, 1.0e-9);
}

TEST_F(Ground, ADragForthAndBackLeavesItWhereItWas) {
    AddBox({-1, -1, 0}, {1, 1, 1});
    viewer->GetMain3DViewpoint()->SetView({0, -20, 10}, {0, 0, 0}, {0, 0, 1});
    ground->SetGroundOn(1);
    QorMathPoint2D pixel;
    viewer->GetMain3DViewpoint()->Project({1.3, -1.2, 0}, width, height, pixel);
    viewer->HandleMouse(Mouse(QorMouseEvent::Action::Press, pixel.x, pixel.y));
    viewer->HandleMouse(Mouse(QorMouseEvent::Action::Move, pixel.x + 80, pixel.y + 60));
    EXPECT_LT(viewer->GetGround()->GetOrigin().z, -0.5);
    viewer->HandleMouse(Mouse(QorMouseEvent::Action::Move, pixel.x, pixel.y));
    viewer->HandleMouse(Mouse(QorMouseEvent::Action::Release, pixel.x, pixel.y));
    EXPECT_NEAR(viewer->GetGround()->GetOrigin().z, 0.0, 1.0e-6);
}

TEST_F(Ground, FollowsTheMouseInThePartInWhichItWasTakenHoldOf) {
    AddBox({-1, -1, 0}, {1, 1, 1});
    viewer->GetMain3DViewpoint()->SetView({0, -20, 10}, {0, 0, 0}, {0, 0, 1});
    viewer->SplitViewpoints(4);
    ground->SetGroundOn(1);
    const auto parts = viewer->Get3DViewpoints();
    for (const QorVar<QorViewpoint>& one : parts) {
        auto& part = dynamic_cast<Qor3DViewpoint&>(*one);
        if (std::abs(part.GetSight().z) > 0.9)
            continue; // from above nothing can move up
        part.SetView({0, -20, 10}, {0, 0, 0}, {0, 0, 1});
        QorMathPoint2D from;
        QorMathPoint2D to;
        const double before = viewer->GetGround()->GetOrigin().z;
        part.Project({1.2, -1.3, before}, width, height, from);
        part.Project({1.2, -1.3, before + 0.2}, width, height, to);
        Drag(from.x, from.y, to.x, to.y);
        // Measured in the plane across the sight, which stands at an angle to the vertical.
        const double upright = 1.0 - part.GetSight().z * part.GetSight().z;
        EXPECT_NEAR(viewer->GetGround()->GetOrigin().z, before + 0.2 * upright, 0.005);
    }
}

TEST_F(Ground, GoesWithItsWindow) {
    AddBox({0, 0, 0}, {2, 2, 2});
    ground->SetGroundOn(1);
    layout->CloseWindow(window);
    EXPECT_EQ(viewer->GetGround(), nullptr);
    EXPECT_EQ(ground->SetGroundOn(1), E_FAIL);
}

/// A service that calls TGA files TIFF, so that the library alone can write them.
class TiffAsTga : public QorPictureService {
public:
    QorPixelImage* Read(const QorUnicodeString& iPath, QorUnicodeString& oError) override {
        ++reads;
        return plain.Read(iPath, oError);
    }

    int Write(const QorPixelImage& iImage,
              const QorString& iFormat,
              const QorUnicodeString& iPath,
              QorUnicodeString& oError) override {
        EXPECT_EQ(iFormat, QorString("TIFF"));
        return plain.Write(iImage, "TGA", iPath, oError);
    }

    QorPixelImage* Resize(const QorPixelImage& iImage, int iWidth, int iHeight) override {
        return plain.Resize(iImage, iWidth, iHeight);
    }

    int reads = 0;

private:
    QorPlainPictures plain;
};

class Background : public ViewerAdapterTest {
protected:
    void SetUp() override {
        QorPictureService::Install(&service);
        background = QorQuery<QorIRdgBackground>(viewer);
        ASSERT_TRUE(background);
        path = directory.GetPath("wide.tga");
        ASSERT_EQ(MakeGrey(200, 50)->WriteToFile("TIFF", path), 0);
        service.reads = 0;
    }

    void TearDown() override {
        background.Reset();
        ViewerAdapterTest::TearDown();
        QorPictureService::Install(nullptr);
    }

    /// The picture behind the model, inside its bag; null for none.
    const Qor2DImagePixelRep* Picture() const {
        for (const QorVar<QorViewpoint>& viewpoint : viewer->GetAddedViewpoints()) {
            const auto* flat = dynamic_cast<Qor2DViewpoint*>(viewpoint.Get());
            if (flat == nullptr || flat->GetPriority() >= 0 ||
                flat->GetRoot().GetChildren().empty())
                continue;
            const auto* bag =
                dynamic_cast<Qor2DBagRep*>(flat->GetRoot().GetChildren().front().Get());
            return dynamic_cast<Qor2DImagePixelRep*>(bag->GetChildren().front().Get());
        }
        return nullptr;
    }

    QorRdgBackgroundViewer& Adapter() const {
        return *dynamic_cast<QorRdgBackgroundViewer*>(background->GetImplementation());
    }

    QorScopedVariable temporary{"TMPDIR", directory.GetPath("tmp")};
    TiffAsTga service;
    QorIRdgBackground_var background;
    std::string path;
};

TEST_F(Background, CoversTheViewerStretchedOrWithItsOwnProportions) {
    EXPECT_EQ(background->SetBackground(path, true), S_OK);
    EXPECT_EQ(Picture()->GetPosition(), (QorMathPoint2D{-200, -150}));
    EXPECT_EQ(Picture()->GetSize(), (QorMathPoint2D{400, 300}));
    EXPECT_EQ(background->SetBackground(path, false), S_OK);
    EXPECT_EQ(Picture()->GetSize(), (QorMathPoint2D{1200, 300}));
    EXPECT_EQ(Picture()->GetPosition(), (QorMathPoint2D{-600, -150}));
    EXPECT_EQ(service.reads, 1) << "the same picture is not read again";
}

TEST_F(Background, KeepsCoveringAtEverySizeAndWhenTheTreeComesAndGoes) {
    background->SetBackground(path, true);
    viewer->UserResizeViewer(800, 200);
    EXPECT_EQ(Picture()->GetSize(), (QorMathPoint2D{800, 200}));
    const unsigned long draws = viewer->GetDrawCount();
    viewer->GetCallbackManager()->DispatchCallbacks(Qor3DViewer::TREE_DISPLAY_ON, viewer);
    EXPECT_GT(viewer->GetDrawCount(), draws);
}

TEST_F(Background, AnswersItsNameStrippedAndFailsWithoutOne) {
    QorString name = "before";
    bool stretch = true;
    EXPECT_EQ(background->GetBackground(name, stretch), E_FAIL);
    EXPECT_EQ(background->SetBackground("  " + path + " ", false), S_OK);
    EXPECT_EQ(background->GetBackground(name, stretch), S_OK);
    EXPECT_EQ(name, QorString(path));
    EXPECT_FALSE(stretch);
    EXPECT_EQ(background->RemoveBackground(), S_OK);
    EXPECT_EQ(background->GetBackground(name, stretch), E_FAIL);
    EXPECT_EQ(Picture(), nullptr);
}

TEST_F(Background, APictureThatCannotBeReadShowsNothingAndKeepsItsName) {
    background->SetBackground(path, true);
    EXPECT_EQ(background->SetBackground("none.jpg", true), S_OK);
    EXPECT_EQ(Picture(), nullptr);
    QorString name;
    bool stretch = false;
    EXPECT_EQ(background->GetBackground(name, stretch), S_OK);
    EXPECT_EQ(name, QorString("none.jpg"));
}

TEST_F(Background, WritesAPrivateFileForTheEngineAndRemovesIt) {
    std::filesystem::create_directory(directory.GetPath("tmp"));
    background->SetBackground(path, true);
    const std::string first = Adapter().GetTemporaryFile().Str();

    struct stat info {};

    ASSERT_EQ(::stat(first.c_str(), &info), 0) << first;
    EXPECT_EQ(info.st_mode & 0777U, 0600U);
    EXPECT_TRUE(first.ends_with(".tif"));
    background->RemoveBackground();
    EXPECT_NE(::stat(first.c_str(), &info), 0);
    background->SetBackground(path, true);
    const std::string second = Adapter().GetTemporaryFile().Str();
    EXPECT_NE(second, first);
    layout->CloseWindow(window);
    EXPECT_NE(::stat(second.c_str(), &info), 0);
    EXPECT_EQ(background->SetBackground(path, true), E_FAIL);
}

TEST_F(Background, WritesItsFileBesideTheUserInterface) {
    struct Stuck : TiffAsTga {
        int Write(const QorPixelImage& iImage,
                  const QorString& iFormat,
                  const QorUnicodeString& iPath,
                  QorUnicodeString& oError) override {
            goOn.get_future().wait();
            return TiffAsTga::Write(iImage, iFormat, iPath, oError);
        }

        std::promise<void> goOn;
    };

    Stuck stuck;
    QorPictureService::Install(&stuck);
    background->SetBackground(path, true); // would not come back
    EXPECT_NE(Picture(), nullptr);
    EXPECT_EQ(QorRdgWorkers::CountAside(), 1U);
    stuck.goOn.set_value();
    EXPECT_FALSE(Adapter().GetTemporaryFile().IsNull());
    background->RemoveBackground();
    QorRunExitHooks(); // the worker has ended
    QorPictureService::Install(&service);
}

TEST_F(Background, AFileThatIsNotWantedAnyMoreIsRemovedByItsWriter) {
    std::filesystem::create_directory(directory.GetPath("tmp"));
    for (int i = 0; i < 20; ++i) {
        background->SetBackground(path, true);
        background->RemoveBackground();
    }
    QorRunExitHooks();
    for (const auto& entry : std::filesystem::directory_iterator(QorGetTempDirectory().Str()))
        EXPECT_EQ(entry.path().filename().string().find("QorRdgBackground"), std::string::npos);
}

} // namespace
