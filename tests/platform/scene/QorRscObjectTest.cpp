#include "platform/scene/QorIAlias.h"
#include "tests/platform/scene/QorSceneTest.h"

QorImplementClass(QorTestTrack, QorRscObject)

const QorRscKind& QorTestTrack::Kind() {
    static const auto* kind =
        new QorRscKind{"track", "Track", false, &QorCreateObject<QorTestTrack>, {}};
    return *kind;
}

namespace {

class RscObject : public QorSceneTest {};

TEST_F(RscObject, HasAnAliasThroughItsInterface) {
    const auto light = Create<QorIRscLight>("light", "Sun");
    const auto alias = QorQuery<QorIAlias>(light);
    ASSERT_TRUE(alias);
    EXPECT_EQ(alias->GetAlias(), "Sun");
    EXPECT_TRUE(QorSucceeded(alias->SetAlias("Moon")));
    EXPECT_EQ(QorRscObject::From(light.Get())->GetAlias(), "Moon");
}

TEST_F(RscObject, NormalisesNames) {
    struct Case {
        const char* given;
        const char* kept;
    };

    const auto object = Objects().CreateObject("shooting", "Old");
    for (const Case& one :
         {Case{"  Hero \t", "Hero"}, Case{"a\nb", "a b"}, Case{"Écran — 1", "Écran — 1"}}) {
        EXPECT_EQ(object->SetAlias(one.given), S_OK);
        EXPECT_EQ(object->GetAlias(), one.kept);
    }
    for (const char* blank : {"", "   ", "\t\n"}) {
        EXPECT_EQ(object->SetAlias(blank), E_FAIL);
        EXPECT_EQ(object->GetAlias(), "Écran — 1");
    }
}

TEST_F(RscObject, GivesShootingsNamesOfTheirOwn) {
    const auto hero = Objects().CreateObject("shooting", "Hero");
    const auto second = Objects().CreateObject("shooting", "Hero");
    const auto third = Objects().CreateObject("shooting", "Other");
    EXPECT_EQ(second->GetAlias(), "Hero.2");
    EXPECT_EQ(third->SetAlias("Hero"), S_OK);
    EXPECT_EQ(third->GetAlias(), "Hero.3");
    EXPECT_EQ(hero->SetAlias("Hero"), S_OK);
    EXPECT_EQ(hero->GetAlias(), "Hero") << "its own name is free for itself";
}

TEST_F(RscObject, LetsOtherObjectsShareANameAsInModelsFromElsewhere) {
    const auto first = Objects().CreateObject("light", "Lamp");
    const auto second = Objects().CreateObject("light", "Lamp");
    EXPECT_EQ(second->GetAlias(), "Lamp");
    EXPECT_EQ(Objects().FindObjects("light", "Lamp").Size(), 2);
    EXPECT_EQ(Objects().FindObjects("camera", "Lamp").Size(), 0);
}

TEST_F(RscObject, DispatchesToItselfThenToItsDocument) {
    const auto light = Objects().CreateObject("light", "Sun");
    QorModelRecorder ofObject;
    QorModelRecorder ofDocument;
    ofObject.Listen(QorQuery<QorIModelEvents>(light)->GetConnexion());
    ofDocument.Listen(QorQuery<QorIModelEvents>(document)->GetConnexion());
    const auto events = QorQuery<QorIModelEvents>(light);
    events->Dispatch(QorMake<QorModify>(light.Get(), QorBaseUnknown::ClassName(), 1).Get());
    EXPECT_EQ(ofObject.Take(), Lines{"QorModify Sun"});
    EXPECT_EQ(ofDocument.Take(), Lines{"QorModify Sun"});
    events->Dispatch(nullptr);
    EXPECT_EQ(ofDocument.Take(), Lines{});
}

TEST_F(RscObject, DispatchesNothingFromItsSetters) {
    const auto shooting = Create<QorIRscShooting>("shooting", "Hero");
    QorModelRecorder recorder;
    recorder.Listen(QorQuery<QorIModelEvents>(shooting)->GetConnexion());
    recorder.Listen(QorQuery<QorIModelEvents>(document)->GetConnexion());
    shooting->SetWidth(10);
    shooting->SetCurrent(true);
    QorQuery<QorIAlias>(shooting)->SetAlias("Other");
    EXPECT_EQ(recorder.Take(), Lines{});
}

TEST_F(RscObject, LivesOnWithoutItsDocument) {
    const auto light = Objects().CreateObject("light", "Sun");
    document.Reset();
    EXPECT_EQ(light->GetContainer(), nullptr);
    EXPECT_EQ(light->SetAlias("Moon"), S_OK);
    EXPECT_TRUE(light->SetAttribute("Intensity", 2.0).IsDone());
    light->DispatchModify();
}

TEST_F(RscObject, IsFoundBehindInterfacesAndNowhereElse) {
    const auto light = Create<QorIRscLight>("light");
    EXPECT_NE(QorRscObject::From(light.Get()), nullptr);
    EXPECT_EQ(QorRscObject::From(QorQuery<QorIAlias>(light).Get()),
              QorRscObject::From(light.Get()));
    EXPECT_EQ(QorRscObject::From(document.Get()), nullptr);
    EXPECT_EQ(QorRscObject::From(static_cast<QorBaseUnknown*>(nullptr)), nullptr);
    EXPECT_EQ(QorRscObject::From(static_cast<QorIRscLight*>(nullptr)), nullptr);
}

} // namespace
