#include "platform/vis/QorViewerPictureService.h"
#include "tests/platform/vis/VisTest.h"

#include <functional>

namespace {

/// A tree in a viewer: root, assembly, part; a second assembly beside the first.
class Revisions : public VisTest {
protected:
    Revisions() : viewer(new Qor3DViewer(dialog, "viewer", QorDlgDefaultStyle, width, height)) {
        assembly->AddChild(part);
        viewer->AddRep(assembly);
        viewer->AddRep(neighbour);
    }

    void TearDown() override {
        assembly.Reset();
        neighbour.Reset();
        part.Reset();
        VisTest::TearDown();
    }

    Qor3DBagRep& Root() { return viewer->GetMain3DViewpoint()->GetRoot(); }

    Qor3DViewer* viewer;
    QorVar<Qor3DBagRep> assembly = QorMake<Qor3DBagRep>();
    QorVar<Qor3DBagRep> neighbour = QorMake<Qor3DBagRep>();
    QorVar<Qor3DMeshRep> part = QorMake<Qor3DMeshRep>(MakeSquare().Get(), nullptr);
};

TEST_F(Revisions, GrowWithEveryChangeUpToTheRootAndOnlyOnTheWay) {
    const auto material = QorMake<QorGraphicMaterial>();
    const QorVar<Qor3DMeshRep> other = QorMake<Qor3DMeshRep>(MakeSquare().Get(), nullptr);
    QorGraphicAttributeSet red;
    red.color.red = 200;

    struct Row {
        const char* name;
        std::function<void()> change;
    };

    const Row rows[] = {
        {"matrix",
         [&] {
             assembly->SetMatrix(QorMathTransformation::Translation({1, 2, 3}));
         }},
        {"hide",
         [&] {
             part->SetShown(false);
         }},
        {"show",
         [&] {
             part->SetShown(true);
         }},
        {"highlight",
         [&] {
             part->SetHighlighted(true);
         }},
        {"no highlight",
         [&] {
             part->SetHighlighted(false);
         }},
        {"material",
         [&] {
             part->SetMaterial(material);
         }},
        {"attributes",
         [&] {
             part->SetAttributes(red);
         }},
        {"child added",
         [&] {
             assembly->AddChild(other);
         }},
        {"child moved to the end",
         [&] {
             assembly->AddChild(part);
         }},
        {"child removed",
         [&] {
             assembly->RemoveChild(other);
         }},
    };
    for (const Row& row : rows) {
        const std::uint64_t root = Root().GetRevision();
        const std::uint64_t own = assembly->GetRevision();
        const std::uint64_t beside = neighbour->GetRevision();
        const unsigned long drawn = viewer->GetDrawCount();
        row.change();
        EXPECT_GT(Root().GetRevision(), root) << row.name;
        EXPECT_GT(assembly->GetRevision(), own) << row.name;
        EXPECT_EQ(neighbour->GetRevision(), beside) << row.name;
        EXPECT_GT(viewer->GetDrawCount(), drawn) << row.name;
        // The same again is no change.
        if (std::string(row.name).find("child") != std::string::npos)
            continue;
        const std::uint64_t after = Root().GetRevision();
        row.change();
        EXPECT_EQ(Root().GetRevision(), after) << row.name;
    }
}

TEST_F(Revisions, ReachEveryViewerThatShowsTheTree) {
    auto* second = new Qor3DViewer(dialog, "second", QorDlgDefaultStyle, width, height);
    second->AddRep(assembly);
    const std::uint64_t before = second->GetMain3DViewpoint()->GetRoot().GetRevision();
    const unsigned long drawn = second->GetDrawCount();
    part->SetHighlighted(true);
    EXPECT_GT(second->GetMain3DViewpoint()->GetRoot().GetRevision(), before);
    EXPECT_EQ(second->GetDrawCount(), drawn + 1);
    second->RemoveRep(assembly);
    const unsigned long removed = second->GetDrawCount();
    part->SetHighlighted(false);
    EXPECT_EQ(second->GetDrawCount(), removed);
}

TEST_F(Revisions, OutliveTheViewerAndAddedViewpoints) {
    const Qor3DViewpoint_var added = QorMake<Qor3DViewpoint>();
    added->AddRep(part);
    viewer->AddViewpoint(added);
    const unsigned long drawn = viewer->GetDrawCount();
    part->SetHighlighted(true);
    EXPECT_EQ(viewer->GetDrawCount(), drawn + 2); // it stands in both
    viewer->RemoveViewpoint(added);
    part->SetHighlighted(false);
    EXPECT_EQ(viewer->GetDrawCount(), drawn + 3);
    viewer->AddViewpoint(added);
    viewer->RequestDelayedDestruction();
    loop.RunPosted();
    part->SetHighlighted(true);
    added->RemoveRep(part);
}

TEST_F(Revisions, ABagKeepsItsBoxUntilSomethingInItChanges) {
    EXPECT_EQ(Root().GetBoundingBox().high, (QorMathPoint{1, 1, 0}));
    assembly->SetMatrix(QorMathTransformation::Translation({10, 0, 0}));
    EXPECT_EQ(Root().GetBoundingBox().high, (QorMathPoint{11, 1, 0}));
    part->SetShown(false);
    EXPECT_TRUE(Root().GetBoundingBox().IsEmpty());
    part->SetShown(true);
    part->SetHighlighted(true);
    EXPECT_EQ(Root().GetBoundingBox().low, (QorMathPoint{9, -1, 0}));
    neighbour->AddChild(part);
    EXPECT_EQ(Root().GetBoundingBox().low, (QorMathPoint{-1, -1, 0}));
}

TEST_F(Revisions, ACopyOfALightIsWatchedByNobody) {
    const auto light =
        QorMake<Qor3DLightSourceRep>(QorLightType::Directional, QorLightMode::Model, QorMathPoint{},
                                     QorMathVector{0, 0, -1}, 180.0F);
    assembly->AddChild(light);
    const auto copy = QorMake<Qor3DLightSourceRep>(*light);
    const std::uint64_t before = Root().GetRevision();
    copy->SetLocationParameters({}, {1, 0, 0});
    EXPECT_EQ(Root().GetRevision(), before);
    light->SetLocationParameters({}, {1, 0, 0});
    EXPECT_GT(Root().GetRevision(), before);
}

/// Hands out one picture.
class OnePicture : public QorViewerPictureService {
public:
    QorPixelImage* Take(QorViewer& ioViewer, QorUnicodeString& /*oError*/) override {
        taken = &ioViewer;
        return new QorPixelImage();
    }

    QorViewer* taken = nullptr;
};

TEST_F(Revisions, PicturesOfViewersAreTheHostsToTake) {
    QorUnicodeString error;
    EXPECT_EQ(QorViewerPictureService::Get().Take(*viewer, error), nullptr);
    EXPECT_FALSE(error.Str().empty());
    OnePicture host;
    QorViewerPictureService::Install(&host);
    const QorPixelImage_var picture = QorAdopt(QorViewerPictureService::Get().Take(*viewer, error));
    EXPECT_NE(picture.Get(), nullptr);
    EXPECT_EQ(host.taken, viewer);
    QorViewerPictureService::Install(nullptr);
    EXPECT_EQ(QorViewerPictureService::Get().Take(*viewer, error), nullptr);
}

} // namespace
