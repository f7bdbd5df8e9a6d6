#include "platform/engine/QorRdgOptionsDefaults.h"
#include "platform/system/QorSettingRepository.h"
#include "tests/support/QorTestApplication.h"

namespace {

class OptionsDefaults : public QorTestApplication {
protected:
    static void Set(const char* iKey, int iValue) {
        const QorVar<QorSettingRepository> settings =
            QorSettingRepository::GetRepository("RenderingOptionsSettings");
        settings->WriteSetting(iKey, &iValue);
    }

    static int MostSamples(QorIRdgOptions* iOptions) {
        int least = 0;
        int most = 0;
        float contrast = 0.0F;
        EXPECT_EQ(iOptions->GetSamples(least, most, contrast), S_OK);
        EXPECT_LE(least, most);
        return most;
    }

    static int FinalGather(QorIRdgOptions* iOptions) {
        int on = -1;
        EXPECT_EQ(iOptions->GetFinalGatherStatus(on), S_OK);
        return on;
    }
};

TEST_F(OptionsDefaults, TheQuickRendersFollowTheSettingsAtEveryQuery) {
    const QorVar<QorRdgEasyOptionsDefaults> made = QorMake<QorRdgEasyOptionsDefaults>();
    const QorIRdgOptions_var options = QorQuery<QorIRdgOptions>(made);
    ASSERT_TRUE(options);
    const int standard = MostSamples(options);
    EXPECT_EQ(FinalGather(options), 1);
    Set("Quality", 0);
    Set("FinalGather", 0);
    EXPECT_LT(MostSamples(options), standard);
    EXPECT_EQ(FinalGather(options), 0);
    Set("Quality", 2);
    EXPECT_GT(MostSamples(options), standard);
}

TEST_F(OptionsDefaults, ALevelBeyondTheEndIsTheNearest) {
    const QorVar<QorRdgEasyOptionsDefaults> options = QorMake<QorRdgEasyOptionsDefaults>();
    Set("Quality", 2);
    const int best = MostSamples(options);
    Set("Quality", 99);
    EXPECT_EQ(MostSamples(options), best);
    Set("Quality", -5);
    EXPECT_LT(MostSamples(options), best);
}

TEST_F(OptionsDefaults, WithoutSettingsTheyAreStandard) {
    const QorVar<QorRdgEasyOptionsDefaults> easy = QorMake<QorRdgEasyOptionsDefaults>();
    const QorVar<QorRdgPreviewOptionsDefaults> preview = QorMake<QorRdgPreviewOptionsDefaults>();
    QorSettingRepository::SetLocked("RenderingOptionsSettings", true);
    EXPECT_EQ(MostSamples(easy), MostSamples(preview));
    EXPECT_EQ(FinalGather(easy), 1);
    EXPECT_EQ(FinalGather(preview), 0);
    QorSettingRepository::SetLocked("RenderingOptionsSettings", false);
}

TEST_F(OptionsDefaults, LeaveTheBackgroundToTheWorld) {
    const QorVar<QorRdgPreviewOptionsDefaults> options = QorMake<QorRdgPreviewOptionsDefaults>();
    QorString image;
    int stretch = 0;
    EXPECT_EQ(options->GetBackground(image, stretch), E_FAIL);
}

} // namespace
