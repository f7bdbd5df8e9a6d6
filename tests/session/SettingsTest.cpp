#include "workbench/session/Settings.h"

#include "platform/system/QorSettingRepository.h"
#include "tests/support/QorTestApplication.h"

namespace qor::session::tests {

namespace {

class Settings : public QorTestApplication {};

TEST_F(Settings, SurviveTheProgram) {
    EXPECT_EQ(setting("Theme", "system"), "system");
    keepSetting("Theme", "dark");
    EXPECT_EQ(setting("Theme", "system"), "dark");
    QorSettingRepository::ForgetAll();
    EXPECT_EQ(setting("Theme", "system"), "dark");
}

TEST_F(Settings, ThatCannotBeHadAreLeftAlone) {
    QorSettingRepository::SetLocked("WorkbenchSettings", true);
    keepSetting("Theme", "dark");
    EXPECT_EQ(setting("Theme", "system"), "system");
    QorSettingRepository::SetLocked("WorkbenchSettings", false);
    EXPECT_EQ(setting("Theme", "system"), "system");
}

} // namespace

} // namespace qor::session::tests
