// Behaviour that looks like a mistake and is meant: one row an oddity, with a sentence that says
// what is meant, so that nobody mends it away.
#include "scenes/QorRdgSceneCustomFrame.h"
#include "tests/quickrender/EasyRenderTest.h"
#include "tests/quickrender/OptionsDialogTest.h"
#include "tests/scenes/SceneDialogTest.h"

#include <functional>

namespace {

class MeantBehaviour : public OptionsDialogTest {};

TEST_F(MeantBehaviour, OfTheOptionsDialog) {
    struct Row {
        const char* meant;
        std::function<void()> prepare;
        const char* key;
        int written;
    };

    const std::vector<Row> rows = {
        {"the screen resolution is written from the custom button, so that with neither checked it "
         "is 1",
         [] {
             Screen()->SetState(QorDlgUncheck);
             Custom()->SetState(QorDlgUncheck);
         },
         "ScreenResolution", 1},
        {"with the custom button checked it is 0", [] { Custom()->SetState(QorDlgCheck); },
         "ScreenResolution", 0},
        {"the custom resolution is cut, not rounded", [] { Resolution()->SetValue(299.7); },
         "CustomResolution", 299},
        {"cut also when the spinner shows the number above",
         [] {
             Resolution()->SetValue(999.999);
             EXPECT_EQ(Resolution()->GetShownText(), "1000");
         },
         "CustomResolution", 999},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.meant);
        QorSettingRepository::ForgetAll();
        opener->Open();
        row.prepare();
        EXPECT_EQ(Person::OK("optionsDialog"), QorUserResult::Done);
        EXPECT_EQ(Stored(row.key), row.written);
        loop.RunPosted();
    }
}

/// What is meant, what a person or program does, and what must come of it.
struct MeantRow {
    const char* meant;
    std::function<void()> act;
    std::function<bool()> holds;
};

class MeantScenes : public SceneDialogTest {
protected:
    /// Each row begins with a new manager and an open dialog of the predefined scenes.
    void Try(const std::vector<MeantRow>& iRows) {
        for (const MeantRow& row : iRows) {
            SCOPED_TRACE(row.meant);
            QorSettingRepository::ForgetAll();
            NewManager();
            opener->Open();
            row.act();
            EXPECT_TRUE(row.holds());
            if (opener->scenes != nullptr)
                Person::Cancel("sceneDialog");
            loop.RunPosted();
        }
    }

    static int Selected() {
        int selected = -1;
        List()->GetSelection(selected);
        return selected;
    }

    static bool Logged(const std::string& iLine) {
        const std::vector<std::string> log = TakeLog();
        return std::find(log.begin(), log.end(), iLine) != log.end();
    }
};

TEST_F(MeantScenes, OfTheManager) {
    WriteCatalog("Count=\"1\";\nScene1.Light.Color2=\"0,0,1\";\n");
    QorCatalogs::Clear();
    Try({
        {"a scene with the second colour alone has one light, and that is the first", [] {},
         [] {
             return Manager().GetPredefinedScene(0)->lightCount == 1;
         }},
        {"and it is white, along the first direction's default",
         [this] { Manager().SetScene(Manager().GetPredefinedScene(0)); },
         [this] {
             return Lights()[0]->GetDirection() == QorMathVector{-1, 1, 1} &&
                    Lights()[1] == nullptr;
         }},
        {"the current scene is the one saved, whatever type was set since",
         [] {
             Store("SceneType", 1);
             Manager().SetSceneType(2);
         },
         [] {
             return Manager().GetCurrentScene() == Manager().GetCustomScene();
         }},
        {"predefined scenes have defaults of their own", [] {},
         [] {
             return Manager().GetPredefinedScene(0)->ambient == 0.38F &&
                    Manager().GetCustomScene()->ambient == 0.2F;
         }},
    });
}

TEST_F(MeantScenes, OfTheDialog) {
    Try({
        {"OK without a selection chooses the first scene, not the choice before",
         [] {
             Manager().SetPredefinedScene(2);
             Click(200, 500);
             Person::OK("sceneDialog");
         },
         [] {
             return Manager().GetPredefinedSceneIndex() == 0;
         }},
        {"Cancel leaves a background where there was none before",
         [this] {
             Manager().SetBackground("new.jpg", true);
             TakeLog();
             Person::Cancel("sceneDialog");
         },
         [] {
             return !Logged("no background");
         }},
        {"the ground's values show with its switch or OK, not while sliding",
         [] {
             Person::Check("sceneDialog/customRadio");
             TakeLog();
             Person::Slide("sceneDialog/groundTransparencySlider", 0.5);
         },
         [] {
             return TakeLog().empty();
         }},
        {"exactly half a shadow level is rounded down", [] {},
         [] {
             return QorRdgSceneCustomFrame::ShadowLevel(0.35) == 3;
         }},
    });
}

TEST_F(MeantScenes, OfTheIconList) {
    Try({
        {"selecting no icon takes the highlight away and leaves the selection",
         [] {
             List()->Select(1, QorDlgNoNotify);
             List()->Select(-1, QorDlgNoNotify);
         },
         [] {
             return Selected() == 1;
         }},
        {"an icon inserted at the front is not counted by SetIcons", [] {},
         [] {
             const QorUnicodeString text = "a";
             return List()->SetIcons(&text, &text, 1, 0, 64) == 0;
         }},
        {"one that is refused is counted", [] {},
         [] {
             const QorUnicodeString text = "a";
             return List()->SetIcons(&text, &text, 1, 99, 64) == 1;
         }},
        {"row 0 is never scrolled to", [] {},
         [] {
             return List()->ScrollToRow(0) == 0;
         }},
        {"a click beside the icons sends a selection of nothing", [] { Click(200, 500); },
         [] {
             return Selected() == -1;
         }},
    });
}

class MeantQuickRender : public EasyRenderTest {
protected:
    /// Each row begins with an open tool bar on the one window of a document.
    void Try(const std::vector<MeantRow>& iRows) {
        for (const MeantRow& row : iRows) {
            SCOPED_TRACE(row.meant);
            QorSettingRepository::ForgetAll();
            while (layout->GetEditorCount() > 0)
                layout->CloseEditor(layout->GetEditors().front());
            loop.RunPosted();
            window = OpenDocument("document");
            viewer = ViewerOf(window);
            Open();
            row.act();
            EXPECT_TRUE(row.holds());
            for (QorDlgDialog* left : QorDlgDialog::GetAll())
                if (left->GetName() == "renderToolbar")
                    left->UserClose();
            loop.RunPosted();
        }
    }

    /// Saves a picture under a name and with a filter.
    void Save(const char* iName, int iFilter) {
        RenderOnce();
        Person::Press("renderToolbar/saveButton");
        auto* file = Person::Find<QorDlgFile>("fileBox");
        file->UserSetFilter(iFilter);
        file->UserAccept(directory.GetPath(iName));
        loop.RunPosted();
    }

    /// The tool bar's own window goes, another one of the document stays.
    void DeleteItsWindow() {
        OpenWindow(layout->GetCurrentEditor(), "other");
        layout->CloseWindow(window);
        loop.RunPosted();
        viewer = ViewerOf(layout->GetCurrentWindow());
    }
};

TEST_F(MeantQuickRender, OfTheToolBar) {
    Try({
        {"the height follows the width as it was cut, so that the proportions are those of whole "
         "pixels",
         [this] {
             viewer->GetMain3DViewpoint()->SetGLViewport(0, 0, 3, 100);
             Store("ScreenResolution", 0);
             Store("CustomResolution", 30); // 3.54 by 118.1
             Check("areaCheck");
             Check("areaCheck", false);
         },
         [] {
             return Info() == "3 × 100 pixels";
         }},
        {"a tool bar that has just been opened never renders again by itself",
         [this] {
             Check("renderCheck");
             Find<QorDlgCheckButton>("renderCheck")->UserDoubleClick();
             Finish();
             viewer->GetMain3DViewpoint()->Modified();
         },
         [] {
             return !IsChecked("renderCheck") && Enabled() == "soarS";
         }},
        {"one that has lost its window lives on, and is not the one that there is any more",
         [this] { DeleteItsWindow(); },
         [] {
             const QorRdgEasyRenderDialog* lost = Dialog();
             return lost != nullptr && QorRdgEasyRenderDialog::GetDialog() != lost;
         }},
        {"it gives nothing back then",
         [this] {
             DeleteItsWindow();
             Person::Close("renderToolbar");
         },
         [this] {
             return Ambient(*viewer) == 0.1F;
         }},
        {"and still closes when the document is left",
         [this] {
             DeleteItsWindow();
             OpenDocument("next");
         },
         [] {
             return Dialog() == nullptr;
         }},
        {"closing takes away a background that was there before it was opened",
         [this] {
             Person::Close("renderToolbar");
             loop.RunPosted();
             QorQuery<QorIRdgBackground>(viewer)->SetBackground("back.tga", true);
             Open();
             Person::Close("renderToolbar");
         },
         [this] {
             return !HasBackground(viewer);
         }},
        {"with nothing to render into the button stays down",
         [this] {
             window->SetViewer(nullptr);
             viewer->RequestDelayedDestruction();
             loop.RunPosted();
             Check("renderCheck");
         },
         [] {
             return IsChecked("renderCheck");
         }},
        {"the scene's button up without OK or Cancel keeps what the scene dialog shows",
         [this] {
             Check("sceneButton");
             viewer->SetGlobalAmbientLight(0.9F, 0.9F, 0.9F);
             Check("sceneButton", false);
         },
         [this] {
             return Ambient(*viewer) == 0.9F && !Exists("sceneDialog");
         }},
    });
}

TEST_F(MeantQuickRender, OfSaving) {
    const auto holds = [this](const char* iFile, const char* iKeyword) {
        return directory.Read(iFile) == std::string(iKeyword) + " 400x300 0";
    };
    directory.Write("my.dir/there", "");
    Try({
        {"the filter decides what is written, never the name", [this] { Save("a.png", 0); },
         [&] {
             return holds("a.png", "TIFF");
         }},
        {"a dot in a folder's name counts as an extension", [this] { Save("my.dir/out", 9); },
         [&] {
             return holds("my.dir/out", "PNG") && directory.Read("my.dir/out.png").empty();
         }},
        {"No to replacing a file closes the file dialog too",
         [this] {
             directory.Write("old.png", "old");
             host->AnswerNext(QorNotifyNo);
             Save("old.png", 9);
         },
         [&] {
             return directory.Read("old.png") == "old" && !Exists("fileBox");
         }},
    });
}

} // namespace
