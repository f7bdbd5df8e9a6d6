#include "tests/platform/vis/VisTest.h"

namespace {

class Viewers
    : public VisTest
    , public QorEventSubscriber {
public:
    void EventCB(
        QorEventName iEvent, QorBaseUnknown*, QorNotification*, QorSubscriberData, QorCallbackId) {
        events.push_back(iEvent.GetText());
    }

protected:
    std::vector<std::string> events;
};

QorVar<Qor3DLightSourceRep> MakeLight() {
    return QorMake<Qor3DLightSourceRep>(QorLightType::Directional, QorLightMode::Model,
                                        QorMathPoint{}, QorMathVector{0, 0, -1}, 180.0F);
}

TEST_F(Viewers, KeepTheSizeTheyWereBuiltWithUntilTheyAreResized) {
    auto* viewer = new Qor2DViewer(dialog, "viewer", QorDlgDefaultStyle, width, height);
    viewer->GetSupport()->GetCallbackManager()->AddCallback(
        this, QorGraphicWindow::GRAPHICWINDOW_RESIZE, &Viewers::EventCB);
    float w = 0;
    float h = 0;
    viewer->GetGraphicSize(w, h);
    EXPECT_EQ(w, width);
    viewer->UserResizeViewer(width, height);
    EXPECT_TRUE(events.empty());
    viewer->UserResizeViewer(100, 50);
    viewer->UserResizeViewer(-1, 50);
    EXPECT_EQ(events.size(), 1U);
    EXPECT_FLOAT_EQ(viewer->GetSupport()->GetRatioWH(), 2.0F);
}

TEST_F(Viewers, SayThatTheyGoWhileTheyAreStillWhole) {
    auto* viewer = new Qor2DViewer(dialog, "viewer", QorDlgDefaultStyle, width, height);
    viewer->GetCallbackManager()->AddCallback(this, QorViewer::VIEWER_DESTROYED, &Viewers::EventCB);
    viewer->RequestDelayedDestruction();
    loop.RunPosted();
    EXPECT_EQ(events, std::vector<std::string>{"VIEWER_DESTROYED"});
}

TEST_F(Viewers, DrawAddedViewpointsByPriority) {
    auto* viewer = new Qor3DViewer(dialog, "viewer", QorDlgDefaultStyle, width, height);
    const Qor2DViewpoint_var over = QorMake<Qor2DViewpoint>();
    const Qor2DViewpoint_var under = QorMake<Qor2DViewpoint>();
    over->SetPriority(6);
    under->SetPriority(-1);
    viewer->AddViewpoint(over);
    viewer->AddViewpoint(under);
    viewer->AddViewpoint(over);
    ASSERT_EQ(viewer->GetAddedViewpoints().size(), 2U);
    EXPECT_EQ(viewer->GetAddedViewpoints()[0].Get(), under.Get());
    viewer->RemoveViewpoint(under);
    EXPECT_EQ(viewer->GetAddedViewpoints().size(), 1U);
}

TEST_F(Viewers, TakeLightsOverAndGiveTheOldOnesBack) {
    auto* viewer = new Qor3DViewer(dialog, "viewer", QorDlgDefaultStyle, width, height);
    QorVar<Qor3DLightSourceRep> first = MakeLight();
    Qor3DLightSourceRep* light = first.Get();
    viewer->SetLightSourceReps(first.Detach(), nullptr);
    Qor3DLightSourceRep* light1 = nullptr;
    Qor3DLightSourceRep* light2 = nullptr;
    viewer->GetLightSourceReps(light1, light2);
    EXPECT_EQ(light1, light);
    EXPECT_EQ(light2, nullptr);
    viewer->SetLightSourceReps(light1, nullptr); // the same again
    viewer->SetLightSourceReps(MakeLight().Detach(), MakeLight().Detach());
    viewer->SetLightSourceReps(nullptr, nullptr);
    viewer->GetLightSourceReps(light1, light2);
    EXPECT_EQ(light1, nullptr);
}

TEST_F(Viewers, CopiedLightsAreEqualAndTheirOwn) {
    const QorVar<Qor3DLightSourceRep> light = MakeLight();
    const float diffuse[4] = {0.1F, 0.2F, 0.3F, 1.0F};
    light->SetColorParameters(diffuse, diffuse, diffuse);
    const QorVar<Qor3DLightSourceRep> copy = QorMake<Qor3DLightSourceRep>(*light);
    light->SetLocationParameters({}, {1, 0, 0});
    float a[4];
    float d[4];
    float s[4];
    copy->GetColorParameters(a, d, s);
    EXPECT_EQ(d[1], 0.2F);
    EXPECT_EQ(copy->GetDirection(), (QorMathVector{0, 0, -1}));
}

TEST_F(Viewers, APlaneViewersBoxIsWhatWasSet) {
    auto* viewer = new Qor2DViewer(dialog, "viewer", QorDlgDefaultStyle, 232, 523);
    viewer->GetMain2DViewpoint()->GetCallbackManager()->AddCallback(
        this, QorViewpoint::VIEWPOINT_MODIFIED, &Viewers::EventCB);
    viewer->SetViewBox(0, 232, -523, 0);
    double left = 1;
    double right = 0;
    double bottom = 0;
    double top = 1;
    viewer->GetViewBox(left, right, bottom, top);
    EXPECT_NEAR(left, 0.0, 1.0e-4);
    EXPECT_NEAR(right, 232.0, 1.0e-4);
    EXPECT_NEAR(bottom, -523.0, 1.0e-4);
    EXPECT_NEAR(top, 0.0, 1.0e-4);
    EXPECT_EQ(events.size(), 1U);
}

} // namespace
