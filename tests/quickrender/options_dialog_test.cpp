// The options dialog of quick renders: what it shows, writes, passes on and traces.
#include "platform/dialog/QorDlgLabel.h"
#include "tests/quickrender/OptionsDialogTest.h"

#include <algorithm>
#include <filesystem>

namespace {

class OptionsDialog : public OptionsDialogTest {};

const std::vector<const char*> keys = {"Quality", "FinalGather", "ScreenResolution",
                                       "CustomResolution", "CustomUnit"};

TEST_F(OptionsDialog, HasItsWidgetsInTheirCells) {
    struct Row {
        const char* name;
        const char* kind;
        QorGridCell cell;
        int visibleTextWidth;
    };

    const std::vector<Row> rows = {
        {"qualityLabel", "label", {0, 0, 1, 1}, 0},
        {"qualityCombo", "combo", {0, 1, 2, 1}, 9},
        {"finalGatherCheck", "check button", {1, 0, 4, 1}, 0},
        {"resolutionLabel", "label", {2, 0, 1, 1}, 0},
        {"screenRadio", "radio button", {2, 1, 1, 1}, 0},
        {"customRadio", "radio button", {3, 1, 1, 1}, 0},
        {"customSpinner", "spinner", {3, 2, 1, 1}, 3},
        {"unitCombo", "combo", {3, 3, 1, 1}, 6},
    };
    opener->Open();
    const std::vector<QorDialog*> widgets = opener->options->GetWidgets();
    ASSERT_EQ(widgets.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(widgets[i]->GetName(), rows[i].name);
        EXPECT_STREQ(widgets[i]->GetKind(), rows[i].kind);
        EXPECT_EQ(widgets[i]->GetPlacement().cell, rows[i].cell) << rows[i].name;
        EXPECT_EQ(widgets[i]->GetVisibleTextWidth(), rows[i].visibleTextWidth) << rows[i].name;
    }
    EXPECT_EQ(opener->options->GetStyle() & (QorDlgWndOKCancel | QorDlgGridLayout),
              QorDlgWndOKCancel | QorDlgGridLayout);
    EXPECT_STREQ(opener->options->IsA(), "QorRdgOptionsDialog");
    EXPECT_TRUE(opener->options->IsAKindOf("QorDlgDialog"));
    EXPECT_EQ(Resolution()->GetMin(), 10.0);
    EXPECT_EQ(Resolution()->GetMax(), 2000.0);
    EXPECT_EQ(Resolution()->GetStep(), 1.0);
    EXPECT_EQ(Resolution()->GetFormat(), "%4.0f");
    RecordingHost::ExpectDrawn(*opener->options);
}

TEST_F(OptionsDialog, KeepsTheStyleOfItsCaller) {
    const auto alone = QorMake<QorRdgOptionsDialog>(nullptr, "options", QorDlgWndModal);
    EXPECT_EQ(alone->GetStyle(), QorDlgWndModal | QorDlgWndOKCancel | QorDlgGridLayout);
}

TEST_F(OptionsDialog, ShowsWhatIsStored) {
    struct Row {
        const char* sentence;
        std::vector<std::pair<const char*, int>> stored;
        int quality;
        bool gather;
        bool screen;
        double resolution;
        int unit;
    };

    const std::vector<Row> rows = {
        {"nothing", {}, 1, true, true, 300.0, 0},
        {"everything otherwise",
         {{"Quality", 2},
          {"FinalGather", 0},
          {"ScreenResolution", 0},
          {"CustomResolution", 1200},
          {"CustomUnit", 1}},
         2,
         false,
         false,
         1200.0,
         1},
        {"quality alone", {{"Quality", 0}}, 0, true, true, 300.0, 0},
        {"any number but 0 is on",
         {{"FinalGather", -3}, {"ScreenResolution", 7}},
         1,
         true,
         true,
         300.0,
         0},
        {"a resolution below the range", {{"CustomResolution", 5}}, 1, true, true, 10.0, 0},
        {"a resolution above the range", {{"CustomResolution", 100000}}, 1, true, true, 2000.0, 0},
        {"lines that there are not", {{"Quality", 7}, {"CustomUnit", -1}}, 0, true, true, 300.0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.sentence);
        QorSettingRepository::ForgetAll();
        for (const auto& [key, value] : row.stored)
            Store(key, value);
        opener->Open();
        EXPECT_EQ(Quality()->GetSelect(), row.quality);
        EXPECT_EQ(FinalGather()->GetState() == QorDlgCheck, row.gather);
        EXPECT_EQ(Screen()->GetState() == QorDlgCheck, row.screen);
        EXPECT_EQ(Custom()->GetState() == QorDlgCheck, !row.screen);
        EXPECT_EQ(Resolution()->GetValue(), row.resolution);
        EXPECT_EQ(Unit()->GetSelect(), row.unit);
        EXPECT_EQ(Resolution()->CanAct(), !row.screen);
        EXPECT_EQ(Unit()->CanAct(), !row.screen);
        EXPECT_EQ(Person::Cancel("optionsDialog"), QorUserResult::Done);
        loop.RunPosted();
    }
}

TEST_F(OptionsDialog, TheCustomResolutionCanBeEditedUnlessTheScreensIsChosen) {
    opener->Open();
    EXPECT_EQ(Person::Type("optionsDialog/customSpinner", "150"), QorUserResult::Insensitive);
    EXPECT_EQ(Person::Choose("optionsDialog/unitCombo", 1), QorUserResult::Insensitive);
    EXPECT_EQ(Person::Check("optionsDialog/customRadio"), QorUserResult::Done);
    EXPECT_EQ(Screen()->GetState(), QorDlgUncheck);
    EXPECT_EQ(Person::Type("optionsDialog/customSpinner", "150"), QorUserResult::Done);
    EXPECT_EQ(Person::Choose("optionsDialog/unitCombo", 1), QorUserResult::Done);
    EXPECT_EQ(Person::Check("optionsDialog/screenRadio"), QorUserResult::Done);
    EXPECT_EQ(Resolution()->GetSensitivity(), QorDlgDISABLE);
    EXPECT_EQ(Unit()->GetSensitivity(), QorDlgDISABLE);
    EXPECT_EQ(Resolution()->GetValue(), 150.0) << "it keeps its value";
    RecordingHost::ExpectDrawn(*opener->options);
}

TEST_F(OptionsDialog, OKWritesSavesAndPassesOn) {
    opener->Open();
    Person::Choose("optionsDialog/qualityCombo", 2);
    Person::Check("optionsDialog/finalGatherCheck", false);
    Person::Check("optionsDialog/customRadio");
    Person::Type("optionsDialog/customSpinner", "600");
    Person::Choose("optionsDialog/unitCombo", 1);
    for (const char* key : keys)
        EXPECT_EQ(Stored(key), std::nullopt) << key << " is written by OK alone";
    EXPECT_EQ(Person::OK("optionsDialog"), QorUserResult::Done);
    EXPECT_EQ(opener->TakeHeard(), std::vector<std::string>{"QorDlgDiaOKNotification"});
    QorSettingRepository::ForgetAll(); // as a restart does
    const std::vector<int> expected = {2, 0, 0, 600, 1};
    for (std::size_t i = 0; i < keys.size(); ++i)
        EXPECT_EQ(Stored(keys[i]), expected[i]) << keys[i];
}

TEST_F(OptionsDialog, OKWritesItsKeysInOrder) {
    opener->Open();
    Person::OK("optionsDialog");
    const std::string text = directory.Read(file);
    std::vector<std::size_t> places;
    for (const char* key : keys)
        places.push_back(text.find("\n" + std::string(key) + " "));
    EXPECT_EQ(std::count(places.begin(), places.end(), std::string::npos), 0) << text;
    EXPECT_TRUE(std::is_sorted(places.begin(), places.end())) << text;
}

TEST_F(OptionsDialog, OKOfAnUntouchedDialogWritesWhatItShows) {
    opener->Open();
    Person::OK("optionsDialog");
    const std::vector<int> expected = {1, 1, 1, 300, 0};
    for (std::size_t i = 0; i < keys.size(); ++i)
        EXPECT_EQ(Stored(keys[i]), expected[i]) << keys[i];
}

TEST_F(OptionsDialog, OKLeavesOtherSettingsAlone) {
    Store("SceneType", 2);
    opener->Open();
    Person::OK("optionsDialog");
    QorSettingRepository::ForgetAll();
    EXPECT_EQ(Stored("SceneType"), 2);
}

TEST_F(OptionsDialog, CancelAndTheCloseBoxWriteNothingAndPassOn) {
    struct Row {
        QorUserResult (*end)(const std::string&);
        const char* heard;
    };

    for (const Row& row : {Row{&Person::Cancel, "QorDlgDiaCANCELNotification"},
                           Row{&Person::Close, "QorDlgWindCloseNotification"}}) {
        opener->Open();
        Person::Choose("optionsDialog/qualityCombo", 0);
        EXPECT_EQ(row.end("optionsDialog"), QorUserResult::Done);
        EXPECT_EQ(opener->TakeHeard(), std::vector<std::string>{row.heard});
        loop.RunPosted();
        for (const char* key : keys)
            EXPECT_EQ(Stored(key), std::nullopt) << key;
        EXPECT_FALSE(std::filesystem::exists(directory.GetPath(file)));
    }
}

TEST_F(OptionsDialog, DoesNotCloseItself) {
    auto* father = new QorDlgDialog(opener, "father");
    auto* options = new QorRdgOptionsDialog(father, "options", QorDlgDefaultStyle);
    options->SetVisibility(QorDlgSHOW);
    for (QorUserResult (QorDlgDialog::*act)() :
         {&QorDlgDialog::UserOK, &QorDlgDialog::UserCancel, &QorDlgDialog::UserClose}) {
        EXPECT_EQ((options->*act)(), QorUserResult::Done);
        loop.RunPosted();
        EXPECT_TRUE(options->CanAct());
    }
}

TEST_F(OptionsDialog, WithoutItsRepositoryItShowsWhatWasBuiltAndOKWritesNothing) {
    Store("Quality", 2);
    QorSettingRepository::SetLocked(repositoryName, true);
    opener->Open();
    EXPECT_EQ(Quality()->GetSelect(), 0);
    EXPECT_EQ(FinalGather()->GetState(), QorDlgUncheck);
    EXPECT_EQ(Screen()->GetState(), QorDlgUncheck);
    EXPECT_EQ(Custom()->GetState(), QorDlgUncheck);
    EXPECT_EQ(Resolution()->GetValue(), 10.0);
    EXPECT_EQ(Resolution()->GetSensitivity(), QorDlgENABLE);
    EXPECT_EQ(Unit()->GetSensitivity(), QorDlgENABLE);
    Person::Check("optionsDialog/screenRadio");
    EXPECT_EQ(Unit()->GetSensitivity(), QorDlgDISABLE) << "the callbacks work all the same";
    QorSettingRepository::SetLocked(repositoryName, false);
    EXPECT_EQ(Person::OK("optionsDialog"), QorUserResult::Done);
    EXPECT_EQ(opener->TakeHeard(), std::vector<std::string>{"QorDlgDiaOKNotification"})
        << "it still closes";
    EXPECT_EQ(Stored("Quality"), 2);
    EXPECT_EQ(Stored("FinalGather"), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(directory.GetPath(file)));
}

TEST_F(OptionsDialog, OKPassesOnWhenSavingFails) {
    directory.Write("config/qorworkbench", "a file where the folder should be");
    opener->Open();
    (void)warnings.Take();
    Person::OK("optionsDialog");
    EXPECT_EQ(opener->TakeHeard(), std::vector<std::string>{"QorDlgDiaOKNotification"});
    EXPECT_EQ(warnings.Take().size(), 1U);
    EXPECT_EQ(Stored("Quality"), 1) << "the running program has the new values";
}

TEST_F(OptionsDialog, DiesQuietlyWithoutFather) {
    const auto alone = QorMake<QorRdgOptionsDialog>(nullptr, "options", QorDlgDefaultStyle);
    alone->SetVisibility(QorDlgSHOW);
    EXPECT_EQ(alone->UserOK(), QorUserResult::Done);
    EXPECT_EQ(alone->UserClose(), QorUserResult::Done);
    EXPECT_EQ(Stored("Quality"), 1);
}

TEST_F(OptionsDialog, TracesWhatItDoes) {
    using Lines = std::vector<std::string>;
    const auto taken = [] {
        return QorTraceChannel::TakeRecorded();
    };
    QorTraceChannel::StartRecording(4);
    opener->Open();
    EXPECT_EQ(taken(), (Lines{"(QorRdgOptionsDialog::QorRdgOptionsDialog) Constructor\n",
                              "(QorRdgOptionsDialog::Init) Valuating dialog objects\n",
                              "(QorRdgOptionsDialog::Init) Done\n"}));
    Person::Check("optionsDialog/customRadio");
    EXPECT_EQ(taken(), Lines(2, "(QorRdgOptionsDialog::ResolutionModifiedCB) \n"))
        << "both buttons have changed";
    Person::OK("optionsDialog");
    EXPECT_EQ(taken(), Lines{"(QorRdgOptionsDialog::OKCB) \n"});
    loop.RunPosted();
    EXPECT_EQ(taken(), (Lines{"(QorRdgOptionsDialog::~QorRdgOptionsDialog) Destructor\n",
                              "(QorRdgOptionsDialog::~QorRdgOptionsDialog) Done\n"}));
    QorTraceChannel::StartRecording(3);
    opener->Open();
    Person::Cancel("optionsDialog");
    EXPECT_EQ(taken(), (Lines{"(QorRdgOptionsDialog::QorRdgOptionsDialog) Constructor\n",
                              "(QorRdgOptionsDialog::CancelCB) \n"}));
    QorTraceChannel::StopRecording();
}

} // namespace
