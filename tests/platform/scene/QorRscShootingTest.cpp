#include "platform/scene/QorRscShooting.h"

#include "tests/platform/scene/QorSceneTest.h"

#include <array>

namespace {

class RscShooting : public QorSceneTest {
protected:
    QorIRscShooting_var shooting = Create<QorIRscShooting>("shooting");

    void TearDown() override {
        shooting.Reset();
        QorSceneTest::TearDown();
    }
};

TEST_F(RscShooting, BeginsAsAPersonWouldWantIt) {
    EXPECT_FALSE(shooting->IsCurrent());
    EXPECT_FALSE(shooting->GetCamera());
    EXPECT_FALSE(shooting->GetEnvironment());
    EXPECT_EQ(shooting->GetLights(), nullptr);
    EXPECT_FALSE(shooting->GetAnimation());
    EXPECT_EQ(shooting->GetWidth(), 1200);
    EXPECT_EQ(shooting->GetHeight(), 900);
    EXPECT_EQ(shooting->GetPredefinedSize(), 6) << "900 rows";
    EXPECT_EQ(shooting->GetOutputMode(), 1);
    EXPECT_EQ(shooting->GetSingleImageType(), 10) << "PNG";
    EXPECT_LE(shooting->GetRebounds(), shooting->GetReflections() + shooting->GetRefractions());
    EXPECT_EQ(shooting->GetAmbientFactor(), 1.0);
    EXPECT_EQ(shooting->GetEndFrame(),
              static_cast<int>(shooting->GetDuration() * shooting->GetFrequency()) + 1)
        << "all images";
    EXPECT_FALSE(shooting->GetOutputName().IsNull());
}

TEST_F(RscShooting, WritesToThePersonsHomeFolder) {
    const QorScopedVariable home("HOME", QorUnicodeString("/home/somebody"));
    EXPECT_EQ(QorRscShooting::DefaultDirectory(), "/home/somebody");
    const QorScopedVariable none("HOME", std::nullopt);
    EXPECT_EQ(QorRscShooting::DefaultDirectory(), ".");
}

struct Level {
    int minSamples;
    int maxSamples;
    int contrast;
};

constexpr std::array<Level, 12> levels{{{0, 0, 20},
                                        {1, 1, 20},
                                        {2, 2, 15},
                                        {3, 3, 10},
                                        {4, 4, 10},
                                        {5, 5, 5},
                                        {0, 1, 20},
                                        {0, 2, 20},
                                        {1, 2, 15},
                                        {1, 3, 10},
                                        {2, 4, 10},
                                        {3, 5, 5}}};

TEST_F(RscShooting, SetsTheSamplesOfALevel) {
    for (int level = 1; level <= 12; ++level) {
        EXPECT_EQ(shooting->SetPredefinedQuality(level), S_OK);
        const Level& expected = levels.at(static_cast<std::size_t>(level) - 1);
        EXPECT_EQ(shooting->GetPredefinedQuality(), level);
        EXPECT_EQ(shooting->GetMinSamples(), expected.minSamples) << level;
        EXPECT_EQ(shooting->GetMaxSamples(), expected.maxSamples) << level;
        EXPECT_EQ(shooting->GetContrast(), expected.contrast) << level;
        EXPECT_EQ(expected.minSamples != expected.maxSamples, level > 6)
            << "levels from 7 on are refined adaptively";
    }
}

TEST_F(RscShooting, SetsTheSamplesAgainWhenALevelIsChosenAgain) {
    shooting->SetPredefinedQuality(9);
    shooting->SetMinSamples(0);
    EXPECT_TRUE(QorRscObject::From(shooting.Get())->SetAttribute("PredefinedQuality", 9).IsDone());
    EXPECT_EQ(shooting->GetMinSamples(), 1);
}

TEST_F(RscShooting, KeepsTheSamplesWhenItBecomesCustom) {
    shooting->SetPredefinedQuality(11);
    for (const int custom : {0, -1, 13}) {
        EXPECT_EQ(shooting->SetPredefinedQuality(custom), S_OK);
        EXPECT_EQ(shooting->GetPredefinedQuality(), custom);
        EXPECT_EQ(shooting->GetMinSamples(), 2);
        EXPECT_EQ(shooting->GetMaxSamples(), 4);
        EXPECT_EQ(shooting->GetContrast(), 10);
    }
}

TEST_F(RscShooting, BeginsWithTheSamplesOfItsLevel) {
    const int level = shooting->GetPredefinedQuality();
    const auto other = Create<QorIRscShooting>("shooting");
    other->SetPredefinedQuality(level);
    EXPECT_EQ(other->GetMinSamples(), shooting->GetMinSamples());
    EXPECT_EQ(other->GetMaxSamples(), shooting->GetMaxSamples());
    EXPECT_EQ(other->GetContrast(), shooting->GetContrast());
}

TEST_F(RscShooting, CountsSamplesInPowersOfFour) {
    const std::array<int, 6> samples{1, 4, 16, 64, 256, 1024};
    for (int index = 0; index < 6; ++index)
        EXPECT_EQ(QorRscSamplesPerPixel(index), samples.at(static_cast<std::size_t>(index)));
    EXPECT_EQ(QorRscSamplesPerPixel(-3), 1);
    EXPECT_EQ(QorRscSamplesPerPixel(99), 1024);
}

TEST_F(RscShooting, IsTheOnlyCurrentOneOfItsDocument) {
    const auto other = Create<QorIRscShooting>("shooting");
    shooting->SetCurrent(true);
    other->SetCurrent(true);
    EXPECT_FALSE(shooting->IsCurrent());
    EXPECT_TRUE(other->IsCurrent());
    other->SetCurrent(false);
    EXPECT_FALSE(shooting->IsCurrent()) << "there need be none";
    const auto elsewhere = QorMake<QorRscShooting>();
    shooting->SetCurrent(true);
    elsewhere->SetCurrent(true);
    EXPECT_TRUE(shooting->IsCurrent());
}

TEST_F(RscShooting, HasNoListOfLightsUntilOneIsSet) {
    auto* object = QorRscObject::From(shooting.Get());
    EXPECT_TRUE(object->SetAttribute("Lights", QorReferences()).IsDone());
    EXPECT_EQ(shooting->GetLights(), nullptr) << "a file that has none brings none";
    EXPECT_EQ(shooting->SetLights({}), S_OK);
    ASSERT_NE(shooting->GetLights(), nullptr);
    EXPECT_EQ(shooting->GetLights()->Size(), 0);
}

TEST_F(RscShooting, KeepsTheThicknessOfOutlinesAsAFloat) {
    EXPECT_EQ(shooting->SetCartoonThickness(0.3), S_OK);
    EXPECT_EQ(shooting->GetCartoonThickness(), 0.3F);
    EXPECT_EQ(shooting->SetCartoonThickness(-1.0), E_FAIL);
    EXPECT_EQ(shooting->GetCartoonThickness(), 0.3F);
}

TEST_F(RscShooting, TakesNothingThatItCannotKeep) {
    EXPECT_EQ(shooting->SetWidth(0), E_FAIL);
    EXPECT_EQ(shooting->GetWidth(), 1200);
    EXPECT_EQ(shooting->SetRebounds(0), S_OK) << "the sum of no reflections and no refractions";
    EXPECT_EQ(shooting->SetOutputMode(0), S_OK) << "any other than 1 is on disk";
    EXPECT_EQ(shooting->SetDuration(0.0), S_OK) << "a single image takes no time";
}

} // namespace
