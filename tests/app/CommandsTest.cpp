#include "workbench/app/Commands.h"

#include "platform/frame/QorCommandSelector.h"
#include "tests/support/QorTestApplication.h"
#include "workbench/app/MainFrame.h"
#include "workbench/app/Menus.h"

namespace {

using namespace qor::app;

class Commands : public QorTestApplication {
protected:
    void TearDown() override {
        frame.Reset();
        QorTestApplication::TearDown();
    }

    void fill(bool hasGallery = false) {
        context.hasGallery = hasGallery;
        addCommands(*frame, context);
        addMenus(*frame);
        frame->SetVisibility(QorDlgSHOW);
    }

    static QorCommandHeader* header(const char* name) {
        return QorCommandHeader::GetHeaderFromList(name, 1);
    }

    /// The dialogs that are open, the frame left out.
    static std::vector<QorDlgDialog*> dialogs() {
        std::vector<QorDlgDialog*> all = QorDlgDialog::GetAll();
        std::erase(all, QorApplicationFrame::GetFrame());
        return all;
    }

    static std::vector<std::string> menus(const QorCmdContainer& bar) {
        std::vector<std::string> names;
        for (const auto& menu : bar.GetEntries())
            for (const auto& entry : static_cast<QorCmdContainer*>(menu.Get())->GetEntries())
                names.push_back(menu->GetName().Str() + "/" + entry->GetName().Str());
        return names;
    }

    int quits = 0;
    int cancels = 0;
    std::vector<QorUnicodeString> dropped;
    CommandContext context{.quit = [this] {
        ++quits;
    }};
    QorVar<MainFrame> frame = QorMake<MainFrame>(FrameActions{.close = [this] { ++quits; },
                                                              .cancel = [this] { ++cancels; },
                                                              .drop =
                                                                  [this](const auto& files) {
                                                                      dropped = files;
                                                                  }});
};

TEST_F(Commands, TheOptionsDialogOpensAndEndsOnOK) {
    fill();
    QorCommandHeader* options = header("EasyRenderOptions");
    ASSERT_NE(options, nullptr);
    EXPECT_EQ(options->StartCommand(), S_OK);
    ASSERT_EQ(dialogs().size(), 1U);
    QorDlgDialog* dialog = dialogs().front();
    EXPECT_EQ(dialog->GetName(), "optionsDialog");
    EXPECT_EQ(dialog->GetVisibility(), QorDlgSHOW);
    EXPECT_EQ(QorCommandSelector::GetDefaultCommandSelectorInstance()->GetActivatedCommand(),
              options->GetCommand());
    EXPECT_EQ(dialog->UserOK(), QorUserResult::Done);
    loop.RunPosted();
    EXPECT_TRUE(dialogs().empty());
    EXPECT_EQ(options->GetCommand(), nullptr);
}

TEST_F(Commands, EveryWayOutOfADialogEndsItsCommand) {
    fill(true);
    for (const char* name : {"EasyRenderOptions", "Gallery"})
        for (const auto end :
             {&QorDlgDialog::UserOK, &QorDlgDialog::UserCancel, &QorDlgDialog::UserClose}) {
            header(name)->StartCommand();
            ASSERT_EQ(dialogs().size(), 1U) << name;
            EXPECT_EQ((dialogs().front()->*end)(), QorUserResult::Done) << name;
            EXPECT_TRUE(dialogs().empty()) << name << " vanishes at once";
            loop.RunPosted();
        }
}

TEST_F(Commands, StartingAgainKeepsTheOpenDialog) {
    fill();
    header("EasyRenderOptions")->StartCommand();
    QorDlgDialog* first = dialogs().front();
    EXPECT_TRUE(header("EasyRenderOptions")->IsAvailable());
    EXPECT_EQ(header("EasyRenderOptions")->StartCommand(), S_OK);
    loop.RunPosted();
    EXPECT_EQ(dialogs(), std::vector<QorDlgDialog*>{first});
}

TEST_F(Commands, StartingAgainActivatesTheCommandOfTheOpenDialog) {
    fill();
    const auto* selector = QorCommandSelector::GetDefaultCommandSelectorInstance();
    header("EasyRenderOptions")->StartCommand();
    header("About")->StartCommand();
    EXPECT_EQ(selector->GetActivatedCommand(), header("About")->GetCommand());
    header("EasyRenderOptions")->StartCommand();
    EXPECT_EQ(selector->GetActivatedCommand(), header("EasyRenderOptions")->GetCommand());
}

TEST_F(Commands, ADialogCanBeOpenedAnewInTheTurnThatClosedIt) {
    fill();
    header("EasyRenderOptions")->StartCommand();
    dialogs().front()->UserCancel();
    header("EasyRenderOptions")->StartCommand();
    loop.RunPosted();
    EXPECT_EQ(dialogs().size(), 1U);
}

TEST_F(Commands, EndingTheCommandClosesTheDialog) {
    fill();
    header("About")->StartCommand();
    EXPECT_EQ(header("About")->EndCommand(), S_OK);
    EXPECT_TRUE(dialogs().empty());
}

TEST_F(Commands, QuitAndTheCloseBoxEndTheProgram) {
    fill();
    header("Quit")->StartCommand();
    EXPECT_EQ(quits, 1);
    EXPECT_TRUE(header("Quit")->IsAvailable());
    frame->UserClose();
    EXPECT_EQ(quits, 2);
}

TEST_F(Commands, MenusHoldThemInOrder) {
    fill();
    std::vector<std::string> names;
    for (const auto& menu : frame->GetMenuBar()->GetEntries())
        names.push_back(menu->GetName().Str());
    EXPECT_EQ(names, (std::vector<std::string>{"FileMenu", "EditMenu", "ViewMenu", "RenderMenu",
                                               "WindowMenu", "HelpMenu"}));
    const auto entries = menus(*frame->GetMenuBar());
    EXPECT_EQ(entries.front(), "FileMenu/New");
    EXPECT_EQ(entries.back(), "HelpMenu/About");
    EXPECT_NE(std::find(entries.begin(), entries.end(), "FileMenu/RecentMenu"), entries.end());
    EXPECT_EQ(menus(*frame->GetToolBars()).front(), "FileToolBar/Open");
}

TEST_F(Commands, NoTwoHaveTheSameShortcut) {
    fill(true);
    const QorScopedVariable path("QorStartupPath", QorUnicodeString(QOR_RESOURCES));
    std::map<std::string, std::string> owners;
    for (const QorCommandHeader* one : QorCommandHeader::GetAll()) {
        const std::string keys = one->GetShortcut().Str();
        if (keys.empty())
            continue;
        EXPECT_TRUE(owners.emplace(keys, one->GetName().Str()).second)
            << keys << " starts " << owners[keys] << " and " << one->GetName().Str();
    }
    EXPECT_EQ(owners["Ctrl+O"], "Open");
}

TEST_F(Commands, WithoutADocumentWhatIsAboutOneCannotBeStarted) {
    fill();
    for (const char* name :
         {"Open", "Save", "SelectAll", "Hide", "FitAll", "ViewTop", "NewWindow"}) {
        EXPECT_FALSE(header(name)->IsAvailable()) << name;
        EXPECT_EQ(header(name)->StartCommand(), E_FAIL) << name;
    }
}

TEST_F(Commands, TheThemeIsChosenOnceAndRemembered) {
    std::string chosen;
    context.chooseTheme = [&](const std::string& theme) {
        chosen = theme;
    };
    fill();
    EXPECT_EQ(header("ThemeSystem")->GetCheckState(), QorDlgCheck);
    EXPECT_EQ(header("ThemeDark")->UserStart(), S_OK);
    refreshCommands(context);
    EXPECT_EQ(chosen, "dark");
    EXPECT_EQ(header("ThemeDark")->GetCheckState(), QorDlgCheck);
    EXPECT_EQ(header("ThemeSystem")->GetCheckState(), QorDlgUncheck);
    EXPECT_EQ(header("ThemeDark")->UserStart(), S_OK);
    EXPECT_EQ(header("ThemeDark")->GetCheckState(), QorDlgCheck) << "one of them is always on";
}

TEST_F(Commands, TheGalleryIsForDevelopers) {
    fill(false);
    EXPECT_EQ(header("Gallery"), nullptr);
    frame = QorMake<MainFrame>(FrameActions{});
    fill(true);
    EXPECT_NE(header("Gallery"), nullptr);
    const auto names = menus(*frame->GetMenuBar());
    EXPECT_NE(std::find(names.begin(), names.end(), "DeveloperMenu/Gallery"), names.end());
}

TEST_F(Commands, TheFrameTellsOfDropsOfItsCloseBoxAndOfCancel) {
    frame->SetVisibility(QorDlgSHOW);
    EXPECT_EQ(frame->UserDropFiles({"/a.stp", "/b.stp"}), QorUserResult::Done);
    EXPECT_EQ(dropped, (std::vector<QorUnicodeString>{"/a.stp", "/b.stp"}));
    frame->SetProgress(QorApplicationFrame::Progress{"Reading", 0.5, true});
    EXPECT_EQ(frame->UserCancelProgress(), QorUserResult::Done);
    EXPECT_EQ(cancels, 1);
    frame->UserClose();
    EXPECT_EQ(quits, 1);
}

TEST_F(Commands, AnOpenDialogGoesWithTheFrame) {
    fill(true);
    header("EasyRenderOptions")->StartCommand();
    header("Gallery")->StartCommand();
    frame.Reset();
    EXPECT_TRUE(QorDlgDialog::GetAll().empty());
}

TEST_F(Commands, EveryoneHasItsTextsInEveryLanguage) {
    fill(true);
    const QorScopedVariable path("QorStartupPath", QorUnicodeString(QOR_RESOURCES));
    for (const char* spoken : {"en_GB.UTF-8", "fr_FR.UTF-8", "de_DE.UTF-8"}) {
        const QorScopedVariable inLanguage("LC_ALL", QorUnicodeString(spoken));
        for (const QorCommandHeader* one : QorCommandHeader::GetAll()) {
            const std::string about = one->GetName().Str() + " in " + spoken;
            EXPECT_NE(one->GetTitle().Str(), one->GetName().Str() + ".Title") << about;
            const bool isRecent = one->GetName().Str().rfind("RecentFile", 0) == 0;
            EXPECT_TRUE(isRecent || one->GetTitle().Str() != one->GetName().Str()) << about;
            EXPECT_FALSE(one->GetShortHelp().IsNull()) << about;
            EXPECT_FALSE(one->GetLongHelp().IsNull()) << about;
            EXPECT_FALSE(one->GetIconName().IsNull()) << about;
        }
        for (const auto& menu : frame->GetMenuBar()->GetEntries())
            EXPECT_NE(menu->GetTitle().Str(), menu->GetName().Str()) << spoken;
    }
}

} // namespace
