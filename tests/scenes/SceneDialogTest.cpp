#include "tests/scenes/SceneDialogTest.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

class SceneDialog : public SceneDialogTest {};

bool HasCustomFrame() {
    return Person::Find<QorDialog>("sceneDialog/containerFrame")->GetWidgets().back()->GetName() ==
           "customFrame";
}

TEST_F(SceneDialog, ShowsTheFrameOfTheSavedType) {
    struct Row {
        int type;
        bool custom;
    };

    for (const Row& row : {Row{1, true}, Row{2, false}, Row{0, false}, Row{7, false}}) {
        Store("SceneType", row.type);
        NewManager();
        opener->Open();
        EXPECT_EQ(HasCustomFrame(), row.custom) << row.type;
        EXPECT_EQ(Find<QorDlgRadioButton>("customRadio")->GetState() == QorDlgCheck, row.custom);
        EXPECT_EQ(Find<QorDlgRadioButton>("predefinedRadio")->GetState() == QorDlgCheck,
                  !row.custom);
        Person::Cancel("sceneDialog");
        loop.RunPosted();
    }
}

TEST_F(SceneDialog, PreviewsWhatIsClickedAndKeepsItWithOK) {
    opener->Open();
    EXPECT_FLOAT_EQ(Ambient(), 0.3F); // "a", the first, which stands for catalog number 2
    Click(150, 50);
    EXPECT_FLOAT_EQ(Ambient(), 0.2F);
    EXPECT_EQ(Stored("SceneType"), std::nullopt);
    EXPECT_EQ(Person::OK("sceneDialog"), QorUserResult::Done);
    EXPECT_EQ(Stored("SceneType"), 2);
    EXPECT_EQ(Stored("PredefinedScene"), 1);
    EXPECT_EQ(Manager().GetPredefinedSceneIndex(), 1);
    EXPECT_FLOAT_EQ(Ambient(), 0.2F);
    EXPECT_THAT(opener->heard, ElementsAre("QorDlgDiaOKNotification"));
}

TEST_F(SceneDialog, ADoubleClickConfirms) {
    opener->Open();
    Click(50, 190, true);
    EXPECT_EQ(Stored("PredefinedScene"), 0);
    EXPECT_FLOAT_EQ(Ambient(), 0.1F);
    EXPECT_THAT(opener->heard, ElementsAre("QorDlgDiaOKNotification"));
}

TEST_F(SceneDialog, OKWithoutASelectionStoresTheFirstScene) {
    Store("PredefinedScene", 0);
    NewManager();
    opener->Open();
    EXPECT_EQ(Manager().GetPredefinedSceneIndex(), 2);
    Click(200, 500); // beside the icons
    EXPECT_FLOAT_EQ(Ambient(), 0.1F);
    Person::OK("sceneDialog");
    EXPECT_EQ(Manager().GetPredefinedSceneIndex(), 0);
    EXPECT_EQ(Stored("PredefinedScene"), 2);
}

/// Hears VIEWER_LIGHT_MODIFIED.
class LightListener : public QorEventSubscriber {
public:
    explicit LightListener(QorViewer* iViewer) {
        iViewer->GetCallbackManager()->AddCallback(this, QorViewer::VIEWER_LIGHT_MODIFIED,
                                                   &LightListener::ModifiedCB);
    }

    int count = 0;

private:
    void
    ModifiedCB(QorEventName, QorBaseUnknown*, QorNotification*, QorSubscriberData, QorCallbackId) {
        ++count;
    }
};

TEST_F(SceneDialog, OKTellsOfTheNewLights) {
    const LightListener listener(viewer);
    opener->Open();
    Person::Cancel("sceneDialog");
    loop.RunPosted();
    EXPECT_EQ(listener.count, 0);
    opener->Open();
    Person::OK("sceneDialog");
    EXPECT_EQ(listener.count, 1);
}

TEST_F(SceneDialog, CancelAndTheCloseBoxPutTheViewerBack) {
    const auto header = QorMake<QorCheckHeader>(nullptr, "Ground");
    const auto texture = QorMake<QorGraphicMaterial>();
    const QorVar<QorRsc3DGroundRep> ground =
        QorMake<QorRsc3DGroundRep>(QorMathPoint(), QorMathVector{0, 0, 1}, 10.0);
    ground->SetTransparency(0.25F);
    for (const bool close : {false, true}) {
        SCOPED_TRACE(close);
        header->SetCheckState(QorDlgCheck);
        viewer->SetGlobalAmbientLight(0.7F, 0.8F, 0.9F);
        viewer->SetLightSourceReps(new Qor3DLightSourceRep(QorLightType::Directional,
                                                           QorLightMode::Model, {}, {1, 2, 3}, 0),
                                   nullptr);
        viewer->SetTexture(texture);
        viewer->SetGround(ground);
        Manager().SetBackground("before.jpg", true);
        opener->Open();
        Click(50, 50);
        viewer->SetTexture(nullptr);
        header->SetCheckState(QorDlgUncheck);
        Manager().SetBackground("other.jpg", false);
        TakeLog();
        if (close)
            Person::Close("sceneDialog");
        else
            Person::Cancel("sceneDialog");
        EXPECT_THAT(TakeLog(), ElementsAre("ground 1", "transparency 0.250000",
                                           "reflectivity 0.000000", "background before.jpg 1"));
        EXPECT_FLOAT_EQ(Ambient(), 0.7F);
        ASSERT_NE(Lights()[0], nullptr);
        EXPECT_EQ(Lights()[0]->GetDirection(), (QorMathVector{1, 2, 3}));
        EXPECT_EQ(Lights()[1], nullptr);
        EXPECT_EQ(viewer->GetTexture(), texture.Get());
        EXPECT_EQ(header->GetCheckState(), QorDlgCheck);
        EXPECT_EQ(Stored("SceneType"), std::nullopt);
        loop.RunPosted();
    }
    EXPECT_THAT(opener->heard,
                ElementsAre("QorDlgDiaCANCELNotification", "QorDlgWindCloseNotification"));
}

TEST_F(SceneDialog, CancelLeavesABackgroundWhereThereWasNone) {
    opener->Open();
    Manager().SetBackground("new.jpg", true);
    TakeLog();
    Person::Cancel("sceneDialog");
    EXPECT_THAT(TakeLog(), ElementsAre("ground 0"));
}

TEST_F(SceneDialog, SwitchingTheTypeShowsItsSceneAndCommitsNothing) {
    opener->Open();
    EXPECT_EQ(Person::Check("sceneDialog/customRadio"), QorUserResult::Done);
    loop.RunPosted();
    EXPECT_TRUE(HasCustomFrame());
    EXPECT_FLOAT_EQ(Ambient(), 0.2F);
    Person::Check("sceneDialog/predefinedRadio");
    loop.RunPosted();
    EXPECT_FALSE(HasCustomFrame());
    EXPECT_FLOAT_EQ(Ambient(), 0.3F);
    EXPECT_EQ(Manager().GetSceneType(), 2);
    EXPECT_EQ(Person::Find<QorDialog>("sceneDialog/containerFrame")->GetWidgets().size(), 1U);
    RecordingHost::ExpectDrawn(*opener->scenes);
}

TEST_F(SceneDialog, WithoutAViewerStillSaves) {
    layout.Reset();
    frame.Reset();
    opener->Open();
    EXPECT_EQ(Person::OK("sceneDialog"), QorUserResult::Done);
    EXPECT_EQ(Stored("SceneType"), 1); // neither button is checked
    loop.RunPosted();
    opener->Open();
    EXPECT_EQ(Person::Cancel("sceneDialog"), QorUserResult::Done);
}

TEST_F(SceneDialog, SurvivesItsViewer) {
    opener->Open();
    layout->CloseEditor(layout->GetCurrentEditor());
    loop.RunPosted();
    Click(150, 50);
    EXPECT_EQ(Person::Cancel("sceneDialog"), QorUserResult::Done);
}

TEST_F(SceneDialog, WithoutScenesShowsAnEmptyList) {
    WriteCatalog("Count=\"0\";\n");
    QorCatalogs::Clear();
    NewManager();
    viewer->SetGlobalAmbientLight(0.7F, 0.7F, 0.7F);
    opener->Open();
    EXPECT_FLOAT_EQ(Ambient(), 0.7F);
    int selected = 0;
    EXPECT_EQ(List()->GetSelection(selected), 0);
    Person::OK("sceneDialog");
    EXPECT_EQ(Stored("PredefinedScene"), 2); // as it was
}

} // namespace
