#include "platform/engine/QorIRdgViewerParts.h"
#include "platform/system/QorSettingRepository.h"
#include "tests/engine/adapter/EngineTest.h"

namespace {

class ViewerWorldTest : public EngineTest {
protected:
    QorRdgSnapshot Collect() {
        QorRdgSnapshot snapshot;
        EXPECT_EQ(QorQuery<QorIRdgWorld>(viewer)->Collect(snapshot), S_OK);
        return snapshot;
    }
};

TEST_F(ViewerWorldTest, TakesMatricesFromTheOutside) {
    const auto outer = QorMake<Qor3DBagRep>();
    const auto inner = QorMake<Qor3DBagRep>();
    outer->SetMatrix(QorMathTransformation::Translation({10, 0, 0}));
    inner->SetMatrix(QorMathTransformation::Translation({0, 5, 0}));
    inner->AddChild(QorMake<Qor3DMeshRep>(MakeCube(1.0).Get(), nullptr));
    outer->AddChild(inner);
    viewer->AddRep(outer);
    const QorRdgSnapshot snapshot = Collect();
    ASSERT_EQ(snapshot.instances.size(), 2U);
    EXPECT_EQ(snapshot.instances[1].matrix.origin, (QorMathVector{10, 5, 0}));
}

TEST_F(ViewerWorldTest, LeavesOutWhatIsHidden) {
    const auto bag = QorMake<Qor3DBagRep>();
    bag->AddChild(QorMake<Qor3DMeshRep>(MakeCube(1.0).Get(), nullptr));
    bag->SetShown(false);
    viewer->AddRep(bag);
    EXPECT_EQ(Collect().instances.size(), 1U);
}

TEST_F(ViewerWorldTest, HasTheGroundWhileItIsOn) {
    EXPECT_FALSE(Collect().ground);
    QorQuery<QorIRdgGround>(viewer)->SetGroundOn(1);
    ASSERT_TRUE(Collect().ground);
    QorQuery<QorIRdgGround>(viewer)->SetGroundOn(0);
    EXPECT_FALSE(Collect().ground);
}

TEST_F(ViewerWorldTest, SoftensShadowsAsTheSettingsSay) {
    EXPECT_EQ(Collect().softShadows, 0.0);
    const auto stored = QorSettingRepository::GetRepository("RenderingOptionsSettings");
    ASSERT_TRUE(stored);
    const int steps = 3;
    stored->WriteSetting("SoftShadows", &steps);
    EXPECT_EQ(Collect().softShadows, 6.0);
}

TEST_F(ViewerWorldTest, KeepsItsOwnCopiesOfLights) {
    const QorRdgSnapshot snapshot = Collect();
    ASSERT_EQ(snapshot.lights.size(), 1U);
    Qor3DLightSourceRep* light = nullptr;
    Qor3DLightSourceRep* none = nullptr;
    viewer->GetLightSourceReps(light, none);
    EXPECT_NE(snapshot.lights.front().Get(), light);
}

} // namespace
