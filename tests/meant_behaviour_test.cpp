// Behaviour that looks like a mistake and is meant: one row an oddity, with a sentence that says
// what is meant, so that nobody mends it away.
#include "tests/quickrender/OptionsDialogTest.h"

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

} // namespace
