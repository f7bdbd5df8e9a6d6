#include "platform/scene/QorIAlias.h"
#include "platform/simulation/QorSimContainers.h"
#include "platform/simulation/QorSimExperiment.h"
#include "platform/simulation/QorSimSequence.h"
#include "platform/simulation/QorSimTrack.h"
#include "tests/support/QorTestApplication.h"

namespace {

/// A node of a product, which this room knows nothing of.
class TestNode : public QorBaseUnknown {};

class Simulation : public QorTestApplication {
protected:
    Simulation() { QorSimRegisterKinds(); }

    void TearDown() override {
        document.Reset();
        QorTestApplication::TearDown();
    }

    [[nodiscard]] QorRscContainer& Objects() const { return *QorRscContainer::Of(document.Get()); }

    template <class Object>
    [[nodiscard]] QorVar<Object> Create() const {
        return dynamic_cast<Object*>(Objects().CreateObject(Object::Kind().name).Get());
    }

    QorDocument_var document = QorMake<QorDocument>("document");
};

TEST_F(Simulation, ListsItsContainersByName) {
    const auto track = Create<QorSimTrack>();
    const auto sequence = Create<QorSimSequence>();
    const auto experiment = Create<QorSimExperiment>();
    const auto only = [&](const char* iName, QorRscObject* iObject) {
        const QorRscObjects list = QorSimListContainer(document.Get(), iName);
        return list.Size() == 1 && list[1] == iObject;
    };
    EXPECT_TRUE(only("QorSiFiTrackCont", track.Get()));
    EXPECT_TRUE(only("SIMSequenceContainer", sequence.Get()));
    EXPECT_TRUE(only("QorSimExperimentCont", experiment.Get()));
    EXPECT_EQ(QorSimListContainer(document.Get(), "Camera").Size(), 0);
    EXPECT_EQ(QorSimListContainer(nullptr, "QorSiFiTrackCont").Size(), 0);
    EXPECT_EQ(QorQuery<QorIAlias>(track)->GetAlias(), "Track.1");
}

TEST_F(Simulation, IsWhatShootingsFollow) {
    const auto shooting = Objects().CreateShooting();
    const auto track = Create<QorSimTrack>();
    const auto sequence = Create<QorSimSequence>();
    const auto experiment = Create<QorSimExperiment>();
    for (QorRscObject* animation :
         {static_cast<QorRscObject*>(track.Get()), static_cast<QorRscObject*>(sequence.Get()),
          static_cast<QorRscObject*>(experiment.Get())}) {
        EXPECT_EQ(shooting->SetAnimation(QorReference(animation)), S_OK);
        EXPECT_EQ(shooting->GetAnimation().Get(), animation);
        Objects().RemoveObject(animation);
        EXPECT_FALSE(shooting->GetAnimation());
    }
}

TEST_F(Simulation, HasAttributesThatComeBack) {
    const auto light = Objects().CreateObject("light");
    const auto track = Create<QorSimTrack>();
    const auto sequence = Create<QorSimSequence>();
    const auto experiment = Create<QorSimExperiment>();
    const auto isKept = [](QorRscObject& ioObject, const char* iName,
                           const QorAttributeValue& iValue) {
        QorAttributeValue value;
        return ioObject.SetAttribute(iName, iValue).IsDone() &&
               ioObject.GetAttribute(iName, value).IsDone() && value == iValue;
    };
    EXPECT_TRUE(isKept(*track, "Duration", 2.5));
    EXPECT_TRUE(isKept(*track, "Motion", QorUnicodeString("Take 001")));
    EXPECT_TRUE(isKept(*track, "Objects", QorReferences{light.Get()}));
    EXPECT_TRUE(isKept(*track, "Objects", QorReferences{light.Get(), QorMake<TestNode>().Get()}));
    EXPECT_FALSE(isKept(*track, "Objects", QorReferences{track.Get()}));
    EXPECT_FALSE(isKept(*track, "Duration", -1.0));
    EXPECT_TRUE(isKept(*sequence, "Agents", QorReferences{track.Get()}));
    EXPECT_TRUE(isKept(*sequence, "Duration", 7.0));
    EXPECT_TRUE(isKept(*experiment, "Objects", QorReferences{light.Get(), track.Get()}));
    Objects().RemoveObject(track.Get());
    EXPECT_EQ(sequence->GetAgents().size(), 0U);
    EXPECT_EQ(experiment->GetObjects().size(), 1U);
}

TEST_F(Simulation, LastsAsLongAsItsAgentsTogether) {
    const auto first = Create<QorSimTrack>();
    const auto second = Create<QorSimTrack>();
    const auto sequence = Create<QorSimSequence>();
    double seconds = -1.0;
    EXPECT_EQ(sequence->ReadDuration(seconds), E_FAIL);
    EXPECT_EQ(seconds, -1.0);
    first->SetDuration(2.0);
    second->SetDuration(0.0);
    EXPECT_EQ(second->ReadDuration(seconds), E_FAIL);
    sequence->SetAgents(
        {QorReference(first.Get()), QorReference(second.Get()), QorReference(first.Get())});
    EXPECT_EQ(sequence->ReadDuration(seconds), S_OK);
    EXPECT_EQ(seconds, 4.0);
    sequence->SetDuration(3.0);
    EXPECT_EQ(sequence->ReadDuration(seconds), S_OK);
    EXPECT_EQ(seconds, 3.0) << "its own counts";
}

TEST_F(Simulation, ListsWhatIsMovedOnceThroughSequencesInSequences) {
    const auto light = Objects().CreateObject("light");
    const auto camera = Objects().CreateObject("camera");
    const auto first = Create<QorSimTrack>();
    const auto second = Create<QorSimTrack>();
    const auto inner = Create<QorSimSequence>();
    const auto outer = Create<QorSimSequence>();
    first->SetObjects({QorReference(light.Get())});
    second->SetObjects({QorReference(camera.Get()), QorReference(light.Get())});
    inner->SetAgents({QorReference(second.Get())});
    outer->SetAgents({QorReference(first.Get()), QorReference(inner.Get())});
    const auto moved = QorQuery<QorISimAgent>(outer)->ListMovedObjects();
    ASSERT_EQ(moved.Size(), 2);
    EXPECT_EQ(moved[1], light.Get());
    EXPECT_EQ(moved[2], camera.Get());
}

TEST_F(Simulation, NeverPlaysASequenceInItself) {
    const auto inner = Create<QorSimSequence>();
    const auto outer = Create<QorSimSequence>();
    EXPECT_EQ(outer->SetAgents({QorReference(inner.Get())}), S_OK);
    EXPECT_EQ(inner->SetAgents({QorReference(outer.Get())}), E_FAIL);
    EXPECT_EQ(inner->SetAgents({QorReference(inner.Get())}), E_FAIL);
    EXPECT_EQ(inner->GetAgents().size(), 0U);
    EXPECT_EQ(inner->SetAttribute("Agents", QorReferences{QorReference(outer.Get())}).fault,
              QorAttributeOutcome::Fault::Refused);
}

} // namespace
