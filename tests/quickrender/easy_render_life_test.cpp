// The tool bar's life: opening, what it does to the viewer, closing, changing viewers.
#include "tests/quickrender/EasyRenderTest.h"

namespace {

class EasyRenderLife : public EasyRenderTest {};

TEST_F(EasyRenderLife, HasItsWidgetsInAGrid) {
    Open();

    struct Row {
        const char* name;
        const char* kind;
        QorGridCell cell;
        bool visible;
        bool sensitive;
    };

    const Row rows[] = {
        {"sceneButton", "check button", {0, 0, 1, 1, 30}, true, true},
        {"optionsButton", "check button", {0, 1, 1, 1, 30}, true, true},
        {"areaCheck", "check button", {0, 2, 1, 1, 30}, true, true},
        {"renderCheck", "check button", {0, 3, 1, 1, 30}, true, true},
        {"sepLabel", "label", {0, 4, 1, 1, 30}, false, true},
        {"saveButton", "push button", {0, 5, 1, 1, 30}, true, false},
        {"infoLabel", "label", {1, 0, 6, 1, 90}, true, true},
    };
    ASSERT_EQ(Dialog()->GetWidgets().size(), std::size(rows));
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        const QorDialog* widget = Dialog()->GetWidgets().at(i);
        EXPECT_EQ(widget->GetName(), rows[i].name);
        EXPECT_STREQ(widget->GetKind(), rows[i].kind) << rows[i].name;
        EXPECT_EQ(widget->GetPlacement().cell, rows[i].cell) << rows[i].name;
        EXPECT_EQ(widget->GetVisibility() == QorDlgSHOW, rows[i].visible) << rows[i].name;
        EXPECT_EQ(widget->GetSensitivity() == QorDlgENABLE, rows[i].sensitive) << rows[i].name;
        const auto* button = dynamic_cast<const QorDlgCheckButton*>(widget);
        EXPECT_TRUE(button == nullptr || button->GetState() == QorDlgUncheck) << rows[i].name;
    }
    EXPECT_EQ(Find("sepLabel")->GetTitle(), "-");
    EXPECT_EQ(Info(), "400 × 300 pixels");
    EXPECT_EQ(Dialog()->GetName(), "renderToolbar");
    EXPECT_STREQ(Dialog()->IsA(), "QorRdgEasyRenderDialog");
    EXPECT_EQ(Dialog()->GetResourceFilename(), "QorRdgEasyRenderDialog");
    EXPECT_EQ(Dialog()->GetFather(), frame.Get());
    RecordingHost::ExpectDrawn(*Dialog());
}

TEST_F(EasyRenderLife, ThereIsOne) {
    QorRdgEasyRenderDialog* first = QorRdgEasyRenderDialog::GetDialog();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(QorRdgEasyRenderDialog::GetDialog(), first);
    EXPECT_EQ(first->GetVisibility(), QorDlgHIDE);
    first->SetVisibility(QorDlgSHOW);
    EXPECT_EQ(Person::Close("renderToolbar"), QorUserResult::Done);
    QorRdgEasyRenderDialog* second = QorRdgEasyRenderDialog::GetDialog();
    EXPECT_NE(second, first);
    loop.RunPosted(); // the first is destroyed, and must not take the second's place away
    EXPECT_EQ(QorRdgEasyRenderDialog::GetDialog(), second);
}

TEST_F(EasyRenderLife, ThereIsNoneWithoutAFrame) {
    layout->CloseEditor(layout->GetEditors().front());
    loop.RunPosted();
    layout = nullptr;
    frame.Reset();
    EXPECT_EQ(QorRdgEasyRenderDialog::GetDialog(), nullptr);
}

TEST_F(EasyRenderLife, TheCommandOpensAndClosesIt) {
    Open();
    EXPECT_EQ(Header("EasyRender")->GetCheckState(), QorDlgCheck);
    EXPECT_EQ(Dialog()->GetVisibility(), QorDlgSHOW);
    EXPECT_EQ(Header("EasyRender")->UserStart(), S_OK);
    EXPECT_EQ(Header("EasyRender")->GetCheckState(), QorDlgUncheck);
    EXPECT_EQ(Dialog(), nullptr);
    loop.RunPosted();
    Open();
    EXPECT_EQ(Header("EasyRender")->EndCommand(), S_OK);
    EXPECT_EQ(Dialog(), nullptr);
    Header("EasyRender")->SetCheckState(QorDlgCheck, QorDlgDoNotify);
    EXPECT_NE(Dialog(), nullptr);
}

TEST_F(EasyRenderLife, TheCloseBoxUnchecksTheCommand) {
    Open();
    EXPECT_EQ(Person::Close("renderToolbar"), QorUserResult::Done);
    EXPECT_EQ(Header("EasyRender")->GetCheckState(), QorDlgUncheck);
    loop.RunPosted();
    EXPECT_EQ(Dialog(), nullptr);
}

TEST_F(EasyRenderLife, LeavingTheDocumentClosesIt) {
    Open();
    OpenDocument("second");
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_EQ(Header("EasyRender")->GetCheckState(), QorDlgUncheck);
    loop.RunPosted();
    Open();
    layout->CloseEditor(layout->GetCurrentEditor());
    EXPECT_EQ(Dialog(), nullptr);
}

TEST_F(EasyRenderLife, TracesOpeningAndClosing) {
    const auto own = [] {
        std::vector<std::string> lines;
        for (const std::string& line : QorTraceChannel::TakeRecorded())
            if (line.starts_with("(QorRdgEasyRenderDialog::"))
                lines.push_back(line);
        return lines;
    };
    QorTraceChannel::StartRecording(4);
    Open();
    EXPECT_EQ(own(), (std::vector<std::string>{
                         "(QorRdgEasyRenderDialog::GetDialog) _curDialog=0\n",
                         "(QorRdgEasyRenderDialog::QorRdgEasyRenderDialog) Constructor\n",
                         "(QorRdgEasyRenderDialog::Init) Valuating dialog objects\n",
                         "(QorRdgEasyRenderDialog::UpdateSize) \n",
                         "(QorRdgEasyRenderDialog::GetSize) \n",
                         "(QorRdgEasyRenderDialog::Init) Done\n",
                     }));
    Person::Close("renderToolbar");
    loop.RunPosted();
    EXPECT_EQ(own(), (std::vector<std::string>{
                         "(QorRdgEasyRenderDialog::CloseCB) \n",
                         "(QorRdgEasyRenderDialog::CleanUp) \n",
                         "(QorRdgEasyRenderDialog::CleanUp) Done\n",
                         "(QorRdgEasyRenderDialog::~QorRdgEasyRenderDialog) Destructor\n",
                         "(QorRdgEasyRenderDialog::CleanUp) \n",
                         "(QorRdgEasyRenderDialog::CleanUp) Done\n",
                         "(QorRdgEasyRenderDialog::~QorRdgEasyRenderDialog) Done\n",
                     }));
    QorTraceChannel::StopRecording();
}

TEST_F(EasyRenderLife, PutsTheViewerBack) {
    struct Row {
        const char* what;
        bool ground;
        bool lights;
    };

    for (const Row& row : {Row{"bare", false, false}, Row{"with a ground", true, false},
                           Row{"with lights", false, true}, Row{"with both", true, true}}) {
        SCOPED_TRACE(row.what);
        viewer->SetGlobalAmbientLight(0.7F, 0.6F, 0.5F);
        const auto texture = QorMake<QorGraphicMaterial>();
        viewer->SetTexture(texture);
        const auto light = [](double iX) {
            return new Qor3DLightSourceRep(QorLightType::Directional, QorLightMode::Model, {},
                                           {iX, 0, 1}, 180.0F);
        };
        viewer->SetLightSourceReps(row.lights ? light(5) : nullptr,
                                   row.lights ? light(6) : nullptr);
        if (row.ground) {
            EXPECT_EQ(Header("Ground")->UserStart(), S_OK);
            viewer->GetGround()->Translate(-3.0);
            viewer->GetGround()->SetReflectivity(0.25F);
        }
        Open();
        EXPECT_FLOAT_EQ(Ambient(*viewer), 0.1F);
        EXPECT_NE(Lights(*viewer)[1], nullptr);
        EXPECT_NE(viewer->GetGround(), nullptr);
        EXPECT_EQ(Header("Ground")->GetCheckState(), QorDlgCheck);
        EXPECT_TRUE(HasBackground(viewer));
        EXPECT_FALSE(Header("Lighting")->IsAvailable());
        Check("areaCheck");
        Area(viewer)->SetArea(10, 10, 90, 90);
        viewer->SetTexture(nullptr);
        RenderOnce();
        EXPECT_TRUE(HasOverlay(*viewer));

        Person::Close("renderToolbar");
        EXPECT_FALSE(HasOverlay(*viewer));
        EXPECT_FALSE(HasBackground(viewer));
        EXPECT_FLOAT_EQ(Ambient(*viewer), 0.7F);
        EXPECT_EQ(viewer->GetTexture(), texture.Get());
        int area = 1;
        Area(viewer)->GetAreaMode(area);
        EXPECT_EQ(area, 0);
        EXPECT_EQ(Header("Ground")->GetCheckState() == QorDlgCheck, row.ground);
        EXPECT_EQ(viewer->GetGround() != nullptr, row.ground);
        for (const int i : {0, 1})
            EXPECT_EQ(Lights(*viewer)[i] != nullptr, row.lights);
        if (row.lights) {
            EXPECT_EQ(Lights(*viewer)[0]->GetDirection(), (QorMathVector{5, 0, 1}));
            EXPECT_EQ(Lights(*viewer)[1]->GetDirection(), (QorMathVector{6, 0, 1}));
        }
        if (row.ground) {
            EXPECT_EQ(viewer->GetGround()->GetOrigin().z, -3.0);
            EXPECT_EQ(viewer->GetGround()->GetReflectivity(), 0.25F);
            Header("Ground")->UserStart();
        }
        EXPECT_TRUE(Header("Lighting")->IsAvailable());
        loop.RunPosted();
    }
}

TEST_F(EasyRenderLife, TakesTheLightingBackWheneverItCanBeHad) {
    Open();
    EXPECT_FALSE(Header("Lighting")->IsAvailable());
    Header("Lighting")->EndCommand(); // somebody else
    EXPECT_FALSE(Header("Lighting")->IsAvailable());
    Person::Close("renderToolbar");
    EXPECT_TRUE(Header("Lighting")->IsAvailable());
    EXPECT_EQ(Header("Lighting")->StartCommand(), S_OK);
    EXPECT_FALSE(Header("Lighting")->IsAvailable());
    Header("Lighting")->EndCommand();
}

TEST_F(EasyRenderLife, AttachesToTheNextWindowWhenItsOwnIsDeleted) {
    QorFrmWindow* second = OpenWindow(layout->GetCurrentEditor(), "second");
    QorRdgEasyRenderDialog* dialog = Open();
    Check("areaCheck");
    layout->CloseWindow(second);
    loop.RunPosted();
    EXPECT_EQ(Dialog(), dialog);
    EXPECT_TRUE(dialog->HasViewer());
    EXPECT_FLOAT_EQ(Ambient(*viewer), 0.1F) << "the other viewer shows the scene now";
    EXPECT_EQ(Enabled(), "soar");
    EXPECT_FALSE(IsChecked("areaCheck"));
    RenderOnce();
    EXPECT_EQ(Enabled(), "soarS");
    EXPECT_EQ(Header("EasyRender")->GetCheckState(), QorDlgCheck);
    Header("EasyRender")->UserStart();
    loop.RunPosted();
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_TRUE(Header("Lighting")->IsAvailable());
}

TEST_F(EasyRenderLife, AnotherWindowsDeletionChangesNothing) {
    QorFrmWindow* second = OpenWindow(layout->GetCurrentEditor(), "second");
    layout->SetCurrentWindow(window);
    Open();
    RenderOnce();
    layout->CloseWindow(second);
    EXPECT_EQ(Enabled(), "soarS");
    EXPECT_EQ(QorRdgEasyRenderDialog::GetDialog(), Dialog());
}

TEST_F(EasyRenderLife, ForgetsAViewerThatIsDestroyed) {
    Open();
    window->SetViewer(nullptr);
    viewer->RequestDelayedDestruction();
    loop.RunPosted();
    EXPECT_FALSE(Dialog()->HasViewer());
    Check("areaCheck");
    Check("renderCheck");
    EXPECT_TRUE(script.requests.empty());
    Person::Close("renderToolbar");
}

TEST_F(EasyRenderLife, IsInertWithoutSettings) {
    QorSettingRepository::ForgetAll();
    QorSettingRepository::SetLocked("RenderingOptionsSettings", true);
    Open();
    EXPECT_FALSE(Dialog()->HasViewer());
    Check("areaCheck");
    Check("renderCheck");
    EXPECT_TRUE(script.requests.empty());
    EXPECT_EQ(Enabled(), "soar");
    EXPECT_TRUE(IsChecked("renderCheck"));
    Person::Close("renderToolbar");
}

TEST_F(EasyRenderLife, IsMadeAnewForTheFirstViewer) {
    layout->CloseEditor(layout->GetCurrentEditor());
    loop.RunPosted();
    EXPECT_FALSE(Open()->HasViewer());
    Check("renderCheck");
    EXPECT_EQ(frame->GetStatus(), "There is nothing to render: open a product first.");
    OpenDocument("later");
    loop.RunPosted();
    ASSERT_NE(Dialog(), nullptr);
    EXPECT_TRUE(Dialog()->HasViewer());
    EXPECT_EQ(Header("EasyRender")->GetCheckState(), QorDlgCheck);
    RenderOnce();
}

TEST_F(EasyRenderLife, SurvivesTheEndOfTheProgramWhileItIsOpen) {
    Open();
    Check("sceneButton");
    Check("renderCheck");
    layout = nullptr;
    frame.Reset(); // with all windows, viewers and tool bars in it
    loop.RunPosted();
    EXPECT_EQ(QorRdgEasyRenderDialog::GetDialog(), nullptr);
}

TEST_F(EasyRenderLife, SurvivesTheEndOfTheLayout) {
    Open();
    layout->RequestDelayedDestruction();
    loop.RunPosted();
    layout = nullptr;
    Person::Close("renderToolbar");
    loop.RunPosted();
    EXPECT_EQ(Dialog(), nullptr);
}

TEST_F(EasyRenderLife, GroundCommandFollowsTheCurrentViewer) {
    EXPECT_EQ(Header("Ground")->UserStart(), S_OK);
    EXPECT_NE(viewer->GetGround(), nullptr);
    OpenWindow(layout->GetCurrentEditor(), "second");
    EXPECT_EQ(Header("Ground")->GetCheckState(), QorDlgUncheck);
    layout->SetCurrentWindow(window);
    EXPECT_EQ(Header("Ground")->GetCheckState(), QorDlgCheck);
    EXPECT_EQ(Header("Ground")->UserStart(), S_OK);
    EXPECT_EQ(viewer->GetGround(), nullptr);
    QorQuery<QorIRdgGround>(viewer)->SetGroundOn(1);
    EXPECT_EQ(Header("Ground")->GetCheckState(), QorDlgCheck);
    layout->CloseEditor(layout->GetCurrentEditor());
    for (const char* name : {"Ground", "Lighting"}) {
        EXPECT_FALSE(Header(name)->IsAvailable()) << name;
        EXPECT_EQ(Header(name)->UserStart(), E_FAIL) << name;
    }
    EXPECT_EQ(Header("Ground")->GetCheckState(), QorDlgUncheck);
    OpenDocument("later");
    for (const char* name : {"Ground", "Lighting"})
        EXPECT_TRUE(Header(name)->IsAvailable()) << name;
}

} // namespace
