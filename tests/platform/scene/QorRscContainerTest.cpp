#include "platform/scene/QorRscCamera.h"
#include "platform/scene/QorRscLight.h"
#include "platform/scene/QorRscShooting.h"
#include "tests/platform/scene/QorSceneTest.h"

namespace {

class RscContainer : public QorSceneTest {};

TEST_F(RscContainer, IsEachOfTheDocumentsContainers) {
    QorRscContainer::Register();
    const auto shootings = QorQuery<QorIRscPersistentShooting>(document);
    const auto lights = QorQuery<QorIRscPersistentLight>(document);
    const auto environments = QorQuery<QorIRscPersistentEnvironment>(document);
    const auto cameras = QorQuery<QorIRscPersistentCamera>(document);
    const auto materials = QorQuery<QorIRscPersistentMaterial>(document);
    ASSERT_TRUE(shootings && lights && environments && cameras && materials);
    EXPECT_TRUE(document->IsEqual(lights->GetImplementation()));
    EXPECT_EQ(&Objects(), lights->GetImplementation());
    EXPECT_EQ(Objects().GetDocument(), document.Get());
    EXPECT_EQ(QorRscContainer::Of(nullptr), nullptr);
}

TEST_F(RscContainer, ListsFromOneInTheOrderOfCreation) {
    auto& objects = Objects();
    const auto first = objects.CreateLight();
    const auto camera = objects.CreateCamera();
    const auto second = objects.CreateLight();
    const auto lights = objects.ListLights(0);
    ASSERT_EQ(lights.Size(), 2);
    EXPECT_EQ(lights[1], first.Get());
    EXPECT_EQ(lights[2], second.Get());
    EXPECT_EQ(lights[3], nullptr);
    EXPECT_EQ(objects.ListCameras().Size(), 1);
    EXPECT_EQ(camera->GetName(), "Camera.1");
    EXPECT_EQ(objects.ListEnvironments().Size(), 0);
    EXPECT_EQ(objects.ListMaterials().Size(), 0);
}

TEST_F(RscContainer, ListsShootingsByClass) {
    auto& objects = Objects();
    const auto shooting = objects.CreateShooting();
    EXPECT_EQ(objects.ListShootings().Size(), 1);
    EXPECT_EQ(objects.ListShootings("QorIRscShooting", 1)[1], shooting.Get());
    EXPECT_EQ(objects.ListShootings("QorRscShooting", 1).Size(), 1);
    EXPECT_EQ(objects.ListShootings("QorIRscLight", 1).Size(), 0);
}

TEST_F(RscContainer, MakesUpNamesThatAreFree) {
    auto& objects = Objects();
    for (const QorRscKind* kind : QorRscKind::GetAll()) {
        const QorUnicodeString first = kind->title + ".1";
        const QorUnicodeString second = kind->title + ".2";
        const auto object = objects.CreateObject(kind->name);
        EXPECT_EQ(object->GetAlias(), first);
        EXPECT_EQ(objects.CreateObject(kind->name)->GetAlias(), second);
        objects.RemoveObject(object.Get());
        EXPECT_EQ(objects.CreateObject(kind->name)->GetAlias(), first) << "it is free again";
    }
}

TEST_F(RscContainer, KnowsNoOtherKinds) {
    EXPECT_FALSE(Objects().CreateObject("lamp"));
    EXPECT_EQ(QorRscKind::Find("lamp"), nullptr);
    EXPECT_EQ(QorRscKind::GetAll().back()->name, "shooting") << "it refers to all others";
}

TEST_F(RscContainer, DispatchesEachEventOnce) {
    QorModelRecorder recorder;
    recorder.Listen(Objects().GetConnexion());
    const auto light = Objects().CreateObject("light", "Sun");
    EXPECT_EQ(recorder.Take(), Lines{"QorCreate Sun"});
    light->DispatchModify();
    EXPECT_EQ(recorder.Take(), Lines{"QorModify Sun"});
    EXPECT_EQ(Objects().RemoveObject(light.Get()), S_OK);
    EXPECT_EQ(recorder.Take(), Lines{"QorRemove Sun"});
    light->DispatchModify();
    EXPECT_EQ(recorder.Take(), Lines{}) << "it is in the document no more";
}

TEST_F(RscContainer, MakesReferencesToARemovedObjectNull) {
    auto& objects = Objects();
    const auto shooting = objects.CreateShooting();
    const auto camera = objects.CreateCamera();
    const auto environment = objects.CreateEnvironment();
    const auto track = objects.CreateObject("track");
    const auto first = objects.CreateLight();
    const auto second = objects.CreateLight();
    QorListOf<QorIRscLight> lights;
    lights.Append(first.Get());
    lights.Append(second.Get());
    shooting->SetCamera(camera);
    shooting->SetEnvironment(environment);
    shooting->SetAnimation(track);
    shooting->SetLights(lights);

    EXPECT_EQ(objects.RemoveLight(first.Get()), S_OK);
    ASSERT_NE(shooting->GetLights(), nullptr);
    ASSERT_EQ(shooting->GetLights()->Size(), 1);
    EXPECT_EQ((*shooting->GetLights())[1], second.Get());
    EXPECT_EQ(objects.RemoveLight(second.Get()), S_OK);
    ASSERT_NE(shooting->GetLights(), nullptr) << "a list that is empty is still a list";
    EXPECT_EQ(shooting->GetLights()->Size(), 0);

    EXPECT_TRUE(shooting->GetCamera());
    EXPECT_EQ(objects.RemoveCamera(camera.Get()), S_OK);
    EXPECT_FALSE(shooting->GetCamera());
    EXPECT_TRUE(shooting->GetEnvironment());
    EXPECT_EQ(objects.RemoveEnvironment(environment.Get()), S_OK);
    EXPECT_FALSE(shooting->GetEnvironment());
    EXPECT_TRUE(shooting->GetAnimation());
    EXPECT_EQ(objects.RemoveObject(track.Get()), S_OK);
    EXPECT_FALSE(shooting->GetAnimation());
}

TEST_F(RscContainer, RemovesWhatItHoldsAlone) {
    const auto stray = QorMake<QorRscLight>();
    const auto light = Objects().CreateLight();
    EXPECT_EQ(Objects().RemoveObject(stray.Get()), E_FAIL);
    EXPECT_EQ(Objects().RemoveLight(nullptr), E_FAIL);
    EXPECT_EQ(Objects().RemoveLight(light.Get()), S_OK);
    EXPECT_EQ(Objects().RemoveLight(light.Get()), E_FAIL);
}

TEST_F(RscContainer, TakesObjectsOverWithTheirValues) {
    const auto camera = QorMake<QorRscCamera>();
    camera->SetFieldOfView(45.0);
    EXPECT_EQ(Objects().AddObject(camera.Get()), S_OK);
    EXPECT_EQ(camera->GetAlias(), "Camera.1");
    EXPECT_EQ(Objects().ListCameras()[1]->GetFieldOfView(), 45.0);
    EXPECT_EQ(Objects().AddObject(camera.Get()), E_FAIL) << "it is in a document already";
    EXPECT_EQ(Objects().AddObject(nullptr), E_FAIL);
    const auto other = QorMake<QorDocument>("other");
    EXPECT_EQ(QorRscContainer::Of(other.Get())->AddObject(camera.Get()), E_FAIL);
    EXPECT_EQ(QorRscContainer::Of(other.Get())->RemoveObject(camera.Get()), E_FAIL);
}

TEST_F(RscContainer, TellsItsListenerOfChanges) {
    int changes = 0;
    Objects().SetChangeListener([&] { ++changes; });
    const auto light = Objects().CreateObject("light", "Sun");
    EXPECT_EQ(std::exchange(changes, 0), 1);
    light->SetAlias("Moon");
    EXPECT_EQ(std::exchange(changes, 0), 1);
    light->SetAlias("Moon");
    EXPECT_EQ(std::exchange(changes, 0), 0);
    Objects().RemoveObject(light.Get());
    EXPECT_EQ(std::exchange(changes, 0), 1);
    light->SetAlias("Mars");
    EXPECT_EQ(changes, 0) << "it is in the document no more";
}

TEST_F(RscContainer, IsEmptiedWithoutAWord) {
    QorModelRecorder recorder;
    const auto shooting = Objects().CreateShooting();
    const auto camera = Objects().CreateCamera();
    shooting->SetCamera(camera);
    recorder.Listen(Objects().GetConnexion());
    Objects().Clear();
    EXPECT_EQ(Objects().ListShootings().Size(), 0);
    EXPECT_EQ(recorder.Take(), Lines{});
    EXPECT_TRUE(shooting->GetCamera()) << "no cascade";
}

/// Removes other objects from inside an event.
class Remover : public QorEventSubscriber {
public:
    Remover(QorRscContainer& iObjects, QorRscObject* iVictim) : objects(iObjects), victim(iVictim) {
        objects.GetConnexion()->AddCallback(this, "QorRemove", &Remover::EventCB);
    }

private:
    void EventCB(QorEventName /*iEvent*/,
                 QorBaseUnknown* /*iPublisher*/,
                 QorNotification* /*iNotification*/,
                 QorSubscriberData /*iData*/,
                 QorCallbackId /*iCookie*/) {
        objects.RemoveObject(std::exchange(victim, nullptr).Get());
    }

    QorRscContainer& objects;
    QorRscObject_var victim;
};

TEST_F(RscContainer, StandsRemovalsFromInsideARemoval) {
    const auto first = Objects().CreateObject("light");
    auto second = Objects().CreateObject("light");
    const Remover remover(Objects(), second.Get());
    second.Reset();
    EXPECT_EQ(Objects().RemoveObject(first.Get()), S_OK);
    EXPECT_EQ(Objects().ListObjects("light").Size(), 0);
}

} // namespace
