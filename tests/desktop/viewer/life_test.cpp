// Sizes, drawing at the right time, and who goes first.
#include "platform/component/QorEventSubscriber.h"
#include "tests/desktop/viewer/ViewerTest.h"

namespace qor::desktop::tests {

namespace {

/// Counts what a viewer's surface publishes.
class Listener : public QorEventSubscriber {
public:
    explicit Listener(QorViewer& viewer) : support(viewer.GetSupport()) {
        support->GetCallbackManager()->AddCallback(this, QorGraphicWindow::GRAPHICWINDOW_RESIZE,
                                                   &Listener::ResizedCB);
        support->GetCallbackManager()->AddCallback(this, QorGraphicWindow::GRAPHICWINDOW_SWAP,
                                                   &Listener::SwappedCB);
    }

    int resizes = 0;
    int swaps = 0;

private:
    void ResizedCB(QorEventName /*iEvent*/,
                   QorBaseUnknown* /*iPublisher*/,
                   QorNotification* /*iNotification*/,
                   QorSubscriberData /*iData*/,
                   QorCallbackId /*iCookie*/) {
        ++resizes;
    }

    void SwappedCB(QorEventName /*iEvent*/,
                   QorBaseUnknown* /*iPublisher*/,
                   QorNotification* /*iNotification*/,
                   QorSubscriberData /*iData*/,
                   QorCallbackId /*iCookie*/) {
        ++swaps;
    }

    QorVar<QorSupport> support;
};

class ViewerLife : public ViewerTest {
protected:
    [[nodiscard]] QSize viewerSize() const {
        float width = 0.0F;
        float height = 0.0F;
        viewer->GetGraphicSize(width, height);
        return {static_cast<int>(width), static_cast<int>(height)};
    }

    void grow(const QSize& by) {
        controlOf(window)->resize(controlOf(window)->size() + by);
        settle();
    }

    [[nodiscard]] std::size_t draws() const { return surface().composer()->space().draws(); }
};

TEST_F(ViewerLife, TheViewerHasItsControlsSizeInDevicePixels) {
    showSpace();
    EXPECT_EQ(viewerSize(), control().deviceSize());
    EXPECT_FLOAT_EQ(viewer->GetSupport()->GetPixelRatio(),
                    static_cast<float>(control().devicePixelRatioF()));
    EXPECT_GE(control().width(), 320);
    Listener listener(*viewer);
    grow({30, 20});
    EXPECT_EQ(viewerSize(), control().deviceSize());
    EXPECT_GE(listener.resizes, 1); // a window manager may round what it was asked for
    EXPECT_EQ(picture().size(), viewerSize());
}

TEST_F(ViewerLife, ASizeFromElsewhereResizesTheWindow) {
    showSpace();
    const QSize before = viewerSize();
    const int more = qRound(60 * control().devicePixelRatioF());
    viewer->UserResizeViewer(static_cast<float>(before.width() + more),
                             static_cast<float>(before.height() + more));
    settle();
    EXPECT_EQ(viewerSize(), before + QSize(more, more));
    EXPECT_EQ(viewerSize(), control().deviceSize());
}

TEST_F(ViewerLife, ManyDrawsAreOnePainting) {
    auto* space = showSpace();
    const auto rep = boxRep(plainMaterial(1, 1, 1).Get());
    space->AddRep(rep.Get());
    settle();
    const std::size_t before = draws();
    for (int i = 0; i < 10; ++i) {
        space->GetMain3DViewpoint()->SetFieldOfView(20.0 + i);
        space->Draw();
    }
    settle();
    EXPECT_EQ(draws(), before + 1);
}

TEST_F(ViewerLife, SpaceIsNotDrawnAgainForWhatLiesOverIt) {
    auto* space = showSpace();
    space->AddRep(boxRep(plainMaterial(1, 1, 1).Get()).Get());
    settle();
    const std::size_t before = draws();
    auto plane = QorMake<Qor2DViewpoint>();
    plane->SetPriority(3);
    space->AddViewpoint(plane.Get());
    auto point = QorMake<Qor2DPointRep>(QorMathPoint2D());
    plane->AddRep(point.Get());
    for (int i = 0; i < 5; ++i) {
        point->SetPoint({1.0 * i, 0.0});
        space->Draw();
        settle();
    }
    EXPECT_EQ(draws(), before);
}

TEST_F(ViewerLife, UpdatingTheDisplayPaintsAtOnce) {
    auto* space = showSpace();
    application->SetDisplayUpdater(Desktop::displayUpdater());
    settle();
    const std::size_t before = draws();
    bool posted = false;
    loop.Post([&] { posted = true; });
    space->GetMain3DViewpoint()->SetFieldOfView(33.0);
    space->Draw();
    application->UpdateDisplay();
    EXPECT_EQ(draws(), before + 1);
    EXPECT_FALSE(posted);
    settle();
}

TEST_F(ViewerLife, TellsThatAnImageHasAppeared) {
    showSpace();
    application->SetDisplayUpdater(Desktop::displayUpdater());
    QTest::qWait(100); // until the window manager is done with the window
    settle();
    Listener listener(*viewer);
    viewer->Draw();
    application->UpdateDisplay();
    EXPECT_EQ(listener.swaps, 0) << "updating the display runs nobody's code";
    settle();
    EXPECT_GE(listener.swaps, 1);
    const int swaps = listener.swaps;
    QTest::qWait(100);
    EXPECT_EQ(listener.swaps, swaps) << "without anything drawn";
}

TEST_F(ViewerLife, InstancesAreOneMeshAndOneDrawCall) {
    auto* space = showSpace();
    const QorMesh_var mesh = boxMesh({1, 1, 1});
    const auto material = plainMaterial(1, 1, 1);
    const std::size_t before =
        (settle(), picture(), surface().composer()->space().meshes().uploads());
    for (int i = 0; i < 200; ++i) {
        auto bag = QorMake<Qor3DBagRep>();
        bag->SetMatrix(QorMathTransformation::Translation({1.0 * i, 0.0, 0.0}));
        bag->AddChild(QorMake<Qor3DMeshRep>(mesh.Get(), material.Get()).Get());
        space->AddRep(bag.Get());
    }
    space->Draw();
    settle();
    EXPECT_EQ(surface().composer()->space().meshes().uploads(), before + 1);
}

/// A second window on the same product.
class SecondWindow {
public:
    SecondWindow()
        : window_(new QorDlgDialog(nullptr, "second", QorDlgWndOK))
        , viewer_(
              new QorNavigation3DViewer(window_, "viewer", QorDlgDefaultStyle, 320.0F, 240.0F)) {
        window_->Attach4Sides(viewer_);
        window_->SetVisibility(QorDlgSHOW);
    }

    [[nodiscard]] QorNavigation3DViewer& viewer() { return *viewer_; }

    void close() { window_->RequestDelayedDestruction(); }

    [[nodiscard]] const MeshCache& meshes() const {
        return dynamic_cast<SpaceViewerPeer*>(viewer_->GetPeer())
            ->surface()
            ->composer()
            ->space()
            .meshes();
    }

private:
    QorDlgDialog* window_;
    QorNavigation3DViewer* viewer_;
};

TEST_F(ViewerLife, TwoWindowsOnOneProductUploadItsMeshesOnce) {
    auto* space = showSpace();
    space->SetEdgesShown(false);
    SecondWindow second;
    settle();
    picture();
    const MeshCache& meshes = surface().composer()->space().meshes();
    const std::size_t before = meshes.uploads();
    const auto material = plainMaterial(0.0F, 1.0F, 0.0F);
    material->unlit = true;
    const auto box = boxRep(material.Get());
    second.viewer().AddRep(box.Get());
    settle();
    EXPECT_EQ(meshes.uploads(), before + 1);
    EXPECT_EQ(&second.meshes(), &meshes);
    space->AddRep(box.Get());
    space->Draw();
    EXPECT_EQ(middle(), QColor(0, 255, 0)) << "with the other window's buffers";
    EXPECT_EQ(meshes.uploads(), before + 1);
    second.close();
    settle();
    space->GetMain3DViewpoint()->SetView({0.0, -400.0, 0.0}, {}, {0.0, 0.0, 1.0});
    space->Draw();
    EXPECT_EQ(middle(), QColor(0, 255, 0)) << "whoever uploaded them is gone";
    EXPECT_EQ(meshes.uploads(), before + 1);
}

TEST_F(ViewerLife, TheViewerMayGoBeforeItsPeer) {
    auto* space = showSpace();
    space->AddRep(boxRep(plainMaterial(1, 1, 1).Get()).Get());
    settle();
    const QPointer<QWidget> box(&control());
    std::exchange(viewer, nullptr)->RequestDelayedDestruction();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    settle();
    EXPECT_TRUE(box == nullptr || !box->isVisible());
}

TEST_F(ViewerLife, ThePeerMayGoBeforeItsViewerAndComeAgain) {
    auto* space = showSpace();
    const auto material = plainMaterial(0, 1, 0);
    material->unlit = true;
    space->AddRep(boxRep(material.Get()).Get());
    settle();
    window->Unrealize();
    settle();
    EXPECT_EQ(viewer->GetPeer(), nullptr);
    space->Draw(); // nobody draws it, and nothing happens
    QorUnicodeString error;
    EXPECT_EQ(QorViewerPictureService::Get().Take(*viewer, error), nullptr);
    EXPECT_FALSE(error.IsNull());
    window->Realize();
    settle();
    EXPECT_EQ(middle(), QColor(0, 255, 0));
}

TEST_F(ViewerLife, QtMayDeleteTheControlFirst) {
    auto* space = showSpace();
    space->AddRep(boxRep(plainMaterial(1, 1, 1).Get()).Get());
    settle();
    delete controlOf(window);
    space->Draw();
    settle();
    QorUnicodeString error;
    EXPECT_EQ(QorViewerPictureService::Get().Take(*viewer, error), nullptr);
}

TEST_F(ViewerLife, ItsControlMayMoveToAnotherWindow) {
    auto* space = showSpace();
    const auto material = plainMaterial(0, 1, 0);
    material->unlit = true;
    space->AddRep(boxRep(material.Get()).Get());
    settle();
    const QPointer<QWidget> box(&control());
    QWidget* before = box->parentWidget();
    QWidget other;
    other.resize(400, 300);
    box->setParent(&other);
    box->setGeometry(0, 0, 400, 300);
    other.show();
    box->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
    settle();
    EXPECT_EQ(middle(), QColor(0, 255, 0)) << "drawn by another context";
    box->setParent(before);
    settle();
}

TEST_F(ViewerLife, AWindowThatExpectsItStaysTheSameWindow) {
    QWidget other;
    SpaceSurface::expectIn(other);
    other.resize(400, 300);
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
    const WId before = other.winId();
    showSpace();
    ViewerControl& box = control();
    QWidget* home = box.parentWidget();
    box.setParent(&other);
    box.show();
    settle();
    EXPECT_EQ(other.winId(), before);
    box.setParent(home);
    settle();
}

TEST_F(ViewerLife, HasANameForScreenReaders) {
    showSpace();
    viewer->SetTitle("Product");
    settle();
    EXPECT_EQ(control().accessibleName(), "Product");
}

} // namespace

} // namespace qor::desktop::tests
