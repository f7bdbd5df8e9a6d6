// File dialogs and colour editors.
#include "tests/platform/dialog/DialogTest.h"

#include <cmath>
#include <filesystem>

namespace {

constexpr QorUserResult Done = QorUserResult::Done;
constexpr QorUserResult Insensitive = QorUserResult::Insensitive;
constexpr QorUserResult Impossible = QorUserResult::Impossible;
constexpr QorUserResult OutOfRange = QorUserResult::OutOfRange;

class Choosers : public DialogTest {};

QorInstantiateDialogTests(Choosers);

TEST_P(Choosers, AFileDialogTakesThePathAsTypedAndStays) {
    struct Row {
        const char* directory;
        const char* typed;
        QorUserResult result;
        const char* selection;
    };

    const std::vector<Row> rows = {
        {"/data", "out", Done, "/data/out"},
        {"/data/", "out.png", Done, "/data/out.png"},
        {"/", "out", Done, "/out"},
        {"/data", "/tmp/my.dir/out", Done, "/tmp/my.dir/out"},
        {"/data", "a b/ç.tif", Done, "/data/a b/ç.tif"},
        {"/data", "../out", Done, "/data/../out"},
        {"/data", "", Impossible, ""},
    };
    const std::vector<QorUnicodeString> labels = {"TIFF", "PNG"};
    const std::vector<QorString> patterns = {"*.tif", "*.png"};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.typed);
        auto* file = new QorDlgFile(dialog, "file", QorDlgFileSave);
        dialog->Listen(file, file->GetFileSelectionOKNotification(),
                       file->GetFileSelectionCancelNotification(),
                       file->GetWindCloseNotification());
        file->SetFilterStrings(labels.data(), patterns.data(), 2);
        file->SetDirectory(row.directory);
        file->SetVisibility(QorDlgSHOW);
        EXPECT_EQ(file->UserSetFilter(1), Done);
        EXPECT_EQ(file->UserAccept(row.typed), row.result);
        EXPECT_EQ(file->GetSelection(), row.selection);
        EXPECT_EQ(file->GetActiveFilterIndex(), 1);
        EXPECT_EQ(dialog->TakeHeard(),
                  row.result == Done ? Heard{"file FileSelectionOK"} : Heard{});
        EXPECT_TRUE(file->CanAct()) << "it stays open";
        if (host) {
            loop.RunPosted();
            RecordingHost::ExpectDrawn(*file);
        }
    }
}

TEST_P(Choosers, AFileDialogSendsItsOwnCancelAndTheWindowsClose) {
    auto* file = new QorDlgFile(dialog, "file");
    EXPECT_FALSE(file->IsSave());
    dialog->Listen(file, file->GetFileSelectionCancelNotification(),
                   file->GetDiaCANCELNotification(), file->GetWindCloseNotification());
    EXPECT_EQ(file->UserCancel(), Insensitive);
    EXPECT_EQ(file->UserAccept("/x"), Insensitive);
    EXPECT_EQ(file->UserSetFilter(0), Insensitive);
    EXPECT_EQ(file->UserSetDirectory("/"), Insensitive);
    file->SetVisibility(QorDlgSHOW);
    EXPECT_EQ(file->UserCancel(), Done);
    EXPECT_EQ(file->UserClose(), Done);
    EXPECT_EQ(dialog->TakeHeard(), (Heard{"file FileSelectionCancel", "file WindClose"}));
    EXPECT_EQ(file->UserOK(), Impossible) << "nothing is selected";
    file->SetSelection("/data/in.step");
    dialog->Listen(file, file->GetFileSelectionOKNotification());
    EXPECT_EQ(file->UserOK(), Done);
    EXPECT_EQ(dialog->TakeHeard(), Heard{"file FileSelectionOK"});
}

TEST_P(Choosers, AFileDialogsFiltersAndDirectoryFollowThePerson) {
    auto* file = new QorDlgStdFile(dialog, "file", QorDlgFileSave, {"tif", "png"});
    EXPECT_TRUE(file->IsSave());
    EXPECT_EQ(file->GetExtensions(), (std::vector<QorString>{"tif", "png"}));
    EXPECT_EQ(file->GetDirectory().Str(), std::filesystem::current_path().string());
    file->SetVisibility(QorDlgSHOW);
    EXPECT_EQ(file->UserSetFilter(0), OutOfRange) << "no filters";
    const std::vector<QorUnicodeString> labels = {"all", "one"};
    const std::vector<QorString> patterns = {"*.a *.b", "*.a"};
    file->SetFilterStrings(labels.data(), patterns.data(), 2);
    ASSERT_EQ(file->GetFilters().size(), 2U);
    EXPECT_EQ(file->GetFilters()[0].pattern, "*.a *.b");
    EXPECT_EQ(file->GetActiveFilterIndex(), 0);
    file->SetActiveFilterIndex(1);
    file->SetActiveFilterIndex(2);
    EXPECT_EQ(file->GetActiveFilterIndex(), 1);
    EXPECT_EQ(file->UserSetFilter(-1), OutOfRange);
    EXPECT_EQ(file->UserSetFilter(2), OutOfRange);
    file->SetFilterStrings(nullptr, patterns.data(), 2);
    EXPECT_TRUE(file->GetFilters().empty());
    EXPECT_EQ(file->GetActiveFilterIndex(), 0);
    EXPECT_EQ(file->UserSetDirectory("/usr"), Done);
    EXPECT_EQ(file->UserSetDirectory("share"), Done);
    EXPECT_EQ(file->GetDirectory(), "/usr/share");
    EXPECT_EQ(file->UserSetDirectory(""), Impossible);
    EXPECT_EQ(file->GetDirectory(), "/usr/share");
}

TEST_P(Choosers, AColorEditorClampsAndTells) {
    auto* editor = new QorDlgColorEditor(dialog, "color");
    dialog->Listen(editor, editor->GetColorOKNotification(), editor->GetColorCancelNotification());
    using Color = std::array<float, 3>;
    editor->SetColor({0.25F, 2.0F, -1.0F});
    EXPECT_EQ(editor->GetColor(), (Color{0.25F, 1.0F, 0.0F}));
    editor->SetColor({std::nanf(""), 0.5F, 0.5F});
    EXPECT_EQ(editor->GetColor(), (Color{0.25F, 0.5F, 0.5F}));
    EXPECT_EQ(editor->UserAccept({1.0F, 0.0F, 0.0F}), Insensitive);
    editor->SetVisibility(QorDlgSHOW);
    EXPECT_EQ(editor->UserAccept({1.0F, 0.0F, 0.0F}), Done);
    EXPECT_EQ(editor->GetColor(), (Color{1.0F, 0.0F, 0.0F}));
    EXPECT_EQ(editor->UserOK(), Done);
    EXPECT_EQ(editor->UserCancel(), Done);
    EXPECT_EQ(dialog->TakeHeard(), (Heard{"color ColorOK", "color ColorOK", "color ColorCancel"}));
    EXPECT_EQ(editor->UserAccept({std::nanf(""), 0.0F, 0.0F}), Impossible);
    EXPECT_EQ(editor->GetColor(), (Color{1.0F, 0.0F, 0.0F}));
    EXPECT_EQ(dialog->TakeHeard(), Heard{});
}

} // namespace
