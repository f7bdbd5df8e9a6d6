// The dialogs that the quick render's tool bar opens, and what comes of their ends.
#include "tests/quickrender/EasyRenderTest.h"

#include <functional>

namespace {

class EasyRenderDialogs : public EasyRenderTest {
protected:
    struct Kind {
        const char* button;
        const char* dialog;
        const char* okTrace;
        const char* cancelTrace;
    };

    static constexpr Kind kinds[] = {
        {"sceneButton", "sceneDialog", "(QorRdgEasyRenderDialog::SceneOKCB) Background OK\n",
         "(QorRdgEasyRenderDialog::SceneCancelCB) Background Canceled\n"},
        {"optionsButton", "optionsDialog",
         "(QorRdgEasyRenderDialog::OptionsOKCB) Rendering Options OK\n",
         "(QorRdgEasyRenderDialog::OptionsCancelCB) Rendering Options Canceled\n"},
    };

    /// What the tool bar traces at level 3 while \p iAct runs.
    std::vector<std::string> Traces(const std::function<void()>& iAct) {
        QorTraceChannel::StartRecording(3);
        iAct();
        loop.RunPosted();
        QorTraceChannel::StopRecording();
        std::vector<std::string> own;
        for (const std::string& line : QorTraceChannel::TakeRecorded())
            if (line.starts_with("(QorRdgEasyRenderDialog::"))
                own.push_back(line);
        return own;
    }
};

TEST_F(EasyRenderDialogs, OpenWithTheirButtonsAndCloseInEveryWay) {
    Open();
    for (const Kind& kind : kinds) {
        SCOPED_TRACE(kind.dialog);

        struct End {
            std::function<void()> act;
            std::vector<std::string> trace;
        };

        const std::vector<End> ends = {
            {[&] { Person::OK(kind.dialog); }, {kind.okTrace}},
            {[&] { Person::Cancel(kind.dialog); }, {kind.cancelTrace}},
            {[&] { Person::Close(kind.dialog); }, {kind.cancelTrace}},
            {[&] { Check(kind.button, false); }, {}},
        };
        for (const End& end : ends) {
            EXPECT_EQ(Check(kind.button), QorUserResult::Done);
            ASSERT_TRUE(Exists(kind.dialog));
            EXPECT_EQ(Person::Find(kind.dialog)->GetVisibility(), QorDlgSHOW);
            EXPECT_EQ(Person::Find(kind.dialog)->GetFather(), Dialog());
            EXPECT_EQ(Traces(end.act), end.trace);
            EXPECT_FALSE(Exists(kind.dialog));
            EXPECT_FALSE(IsChecked(kind.button));
        }
    }
}

TEST_F(EasyRenderDialogs, CancellingTheSceneGivesBackTheQuickRendersOwn) {
    Open();
    Check("sceneButton");
    viewer->SetGlobalAmbientLight(0.9F, 0.9F, 0.9F);
    Person::Cancel("sceneDialog");
    EXPECT_FLOAT_EQ(Ambient(*viewer), 0.1F);
    EXPECT_NE(viewer->GetGround(), nullptr);
    EXPECT_EQ(Header("Ground")->GetCheckState(), QorDlgCheck);
    Person::Close("renderToolbar");
    EXPECT_EQ(viewer->GetGround(), nullptr);
    EXPECT_EQ(Header("Ground")->GetCheckState(), QorDlgUncheck);
}

TEST_F(EasyRenderDialogs, TheOptionsShowInTheSizeOnOKAlone) {
    Open();
    for (const bool accepts : {false, true}) {
        Check("optionsButton");
        Person::Check("optionsDialog/customRadio");
        Person::Type("optionsDialog/customSpinner", "254");
        Person::Choose("optionsDialog/unitCombo", 0);
        EXPECT_EQ(Info(), "400 × 300 pixels");
        if (accepts)
            Person::OK("optionsDialog");
        else
            Person::Cancel("optionsDialog");
        loop.RunPosted();
    }
    EXPECT_EQ(Info(), "4000 × 3000 pixels");
}

TEST_F(EasyRenderDialogs, OKOfTheOptionsLeavesTheAreaWhereItIs) {
    Open();
    Check("areaCheck");
    Area(viewer)->SetArea(10, 20, 110, 70);
    Check("optionsButton");
    Person::Check("optionsDialog/customRadio");
    Person::Type("optionsDialog/customSpinner", "254");
    Person::OK("optionsDialog");
    int x1 = 0;
    int y1 = 0;
    int x2 = 0;
    int y2 = 0;
    EXPECT_EQ(Area(viewer)->GetArea(x1, y1, x2, y2), S_OK);
    EXPECT_EQ((std::array{x1, y1, x2, y2}), (std::array{10, 20, 110, 70}));
    EXPECT_EQ(Info(), "1000 × 500 pixels");
}

TEST_F(EasyRenderDialogs, AnAreaThatIsStillToBeDrawnCanBeDrawnAfterTheOptions) {
    Open();
    Check("areaCheck");
    Check("optionsButton");
    Person::OK("optionsDialog");
    EXPECT_NE(viewer->GetForegroundIndicator(), nullptr);
}

TEST_F(EasyRenderDialogs, GoWithTheToolBar) {
    Open();
    Check("sceneButton");
    Check("optionsButton");
    RenderOnce();
    Person::Press("renderToolbar/saveButton");
    Person::Close("renderToolbar");
    loop.RunPosted();
    for (const char* name : {"sceneDialog", "optionsDialog", "fileBox"})
        EXPECT_FALSE(Exists(name)) << name;
}

TEST_F(EasyRenderDialogs, CannotBeOpenedDuringARender) {
    Open();
    Check("renderCheck");
    for (const char* name : {"sceneButton", "optionsButton", "areaCheck"})
        EXPECT_EQ(Check(name), QorUserResult::Insensitive) << name;
    Finish();
}

} // namespace
