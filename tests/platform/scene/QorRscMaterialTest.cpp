#include "platform/scene/QorRscMaterial.h"

#include "platform/scene/QorRscCamera.h"
#include "tests/platform/scene/QorSceneTest.h"

namespace {

class RscMaterial : public QorSceneTest {};

TEST_F(RscMaterial, IsWhatRepresentationsShow) {
    const auto shown = QorMake<QorGraphicMaterial>();
    shown->name = "Brass";
    const auto material = QorMake<QorRscMaterial>(shown.Get());
    EXPECT_EQ(material->GetAlias(), "Brass");
    EXPECT_EQ(material->GetGraphicMaterial(), shown.Get());
    EXPECT_EQ(material->SetRoughness(0.25F), S_OK);
    EXPECT_EQ(material->SetBaseColor({0.8, 0.6, 0.2}), S_OK);
    EXPECT_EQ(material->SetAlphaMode("mask"), S_OK);
    EXPECT_EQ(shown->roughness, 0.25F);
    EXPECT_EQ(shown->baseColor[2], 0.2F);
    EXPECT_EQ(shown->baseColor[3], 1.0F) << "the opacity stays";
    EXPECT_EQ(shown->alphaMode, QorAlphaMode::Mask);
    shown->ior = 2.4F;
    EXPECT_EQ(material->GetIndexOfRefraction(), 2.4F);
}

TEST_F(RscMaterial, HasAnotherContentAfterEveryChange) {
    const auto object = Objects().CreateObject("material");
    const auto* shown = QorQuery<QorIRscMaterial>(object)->GetGraphicMaterial();
    const auto change = [&](const char* iName, const QorAttributeValue& iValue) {
        const auto before = shown->GetContentId();
        EXPECT_TRUE(object->SetAttribute(iName, iValue).IsDone());
        const auto after = shown->GetContentId();
        EXPECT_TRUE(object->SetAttribute(iName, iValue).IsDone());
        EXPECT_EQ(shown->GetContentId(), after) << "an equal value is no change";
        return after != before;
    };
    EXPECT_TRUE(change("Metallic", 1.0));
    EXPECT_TRUE(change("Emission", QorRscColor{5.0, 0.0, 0.0}));
    EXPECT_TRUE(change("AlphaMode", QorUnicodeString("opaque")));
    EXPECT_TRUE(change("Unlit", true));
    EXPECT_FALSE(change("Clearcoat", 0.0));
}

TEST_F(RscMaterial, KeepsItsNameInTheGraphicMaterial) {
    const auto object = Objects().CreateObject("material", "Steel");
    const auto* shown = QorQuery<QorIRscMaterial>(object)->GetGraphicMaterial();
    EXPECT_EQ(shown->name, "Steel");
    object->SetAlias("Chrome");
    EXPECT_EQ(shown->name, "Chrome");
}

TEST_F(RscMaterial, CamerasAreLooksOfViewers) {
    const auto camera = QorMake<QorRscCamera>();
    const QorView view{.eye = {1.0, 2.0, 3.0},
                       .target = {4.0, 5.0, 6.0},
                       .up = {0.0, 1.0, 0.0},
                       .fieldOfView = 55.0,
                       .projection = Qor3DViewpoint::Projection::Parallel};
    EXPECT_EQ(camera->SetView(view), S_OK);
    EXPECT_EQ(camera->GetView(), view);
    EXPECT_EQ(camera->GetProjection(), "parallel");
    QorView wrong = view;
    wrong.fieldOfView = 180.0;
    wrong.eye = {};
    EXPECT_EQ(camera->SetView(wrong), E_FAIL);
    EXPECT_EQ(camera->GetView(), view) << "nothing of it";
}

} // namespace
