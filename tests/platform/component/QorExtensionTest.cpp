#include "TestObjects.h"

namespace {

int madeExtensions = 0;

QorExtension* MakeCounted(QorBaseUnknown* iOwner) {
    ++madeExtensions;
    return new TestPaint(iOwner);
}

QorExtension* MakeNothing(QorBaseUnknown* /*iOwner*/) {
    return nullptr;
}

/// A heavier colour for one derived class.
class TestHeavy : public QorImplements<QorExtension, QorITestWeight> {
    QorDeclareClass(TestHeavy)

    using QorImplements::QorImplements;

    int GetGrams() const override { return 1000; }

protected:
    ~TestHeavy() override { Journal().emplace_back("~heavy"); }
};

QorImplementClass(TestHeavy, QorExtension)

/// Asks its owner for another extension while it is made.
class TestNosy : public QorImplements<QorExtension, QorITestColor> {
    QorDeclareClass(TestNosy)

    explicit TestNosy(QorBaseUnknown* iOwner)
        : QorImplements(iOwner), hue(QorQuery<QorITestWeight>(iOwner)->GetGrams()) {}

    int GetHue() const override { return hue; }

    int hue;

protected:
    ~TestNosy() override { Journal().emplace_back("~nosy"); }
};

QorImplementClass(TestNosy, QorExtension)

/// A class that implements an interface through a tie.
class TestPlain : public QorBaseUnknown {
    QorDeclareClass(TestPlain)

    int GetHue() const { return 77; }

protected:
    ~TestPlain() override = default;
};

QorImplementClass(TestPlain, QorBaseUnknown)

class TestPlainTie : public QorImplements<QorTie<TestPlain>, QorITestColor> {
    QorDeclareClass(TestPlainTie)

    using QorImplements::QorImplements;

    int GetHue() const override { return GetTied()->GetHue(); }

protected:
    ~TestPlainTie() override = default;
};

QorImplementClass(TestPlainTie, QorExtension)

class QorExtensionTest : public ComponentTest {
protected:
    void TearDown() override {
        for (const char* name : {"TestSolid", "TestPyramid", "TestPlain"})
            for (const QorInterfaceId* id :
                 {&QorITestColor::ClassId(), &QorITestWeight::ClassId(), &QorITestShape::ClassId()})
                QorExtension::Unregister(name, *id);
        ComponentTest::TearDown();
    }
};

} // namespace

TEST_F(QorExtensionTest, AnswersAnInterfaceOfAnotherObject) {
    QorExtension::Register("TestSolid", QorITestColor::ClassId(), &CreateBOAQorITestColorTestPaint);
    const auto solid = QorMake<TestSolid>();
    const auto color = QorQuery<QorITestColor>(solid);
    ASSERT_TRUE(color);
    EXPECT_EQ(color->GetHue(), 120);
    EXPECT_STREQ(color->GetImplementation()->IsA(), "TestPaint");
}

TEST_F(QorExtensionTest, FailsCleanlyWithoutRegistration) {
    const auto solid = QorMake<TestSolid>();
    void* found = &found;
    EXPECT_EQ(solid->QueryInterface(QorITestColor::ClassId(), &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(solid->QueryInterface(QorITestColor::ClassId(), nullptr), E_FAIL);
}

TEST_F(QorExtensionTest, AFactoryThatMakesNothingIsNoInterface) {
    QorExtension::Register("TestSolid", QorITestColor::ClassId(), &MakeNothing);
    EXPECT_FALSE(QorQuery<QorITestColor>(QorMake<TestSolid>()));
}

TEST_F(QorExtensionTest, ARegistrationAfterAFruitlessQueryCounts) {
    const auto solid = QorMake<TestSolid>();
    EXPECT_FALSE(QorQuery<QorITestColor>(solid));
    QorExtension::Register("TestSolid", QorITestColor::ClassId(), &CreateBOAQorITestColorTestPaint);
    EXPECT_TRUE(QorQuery<QorITestColor>(solid));
}

TEST_F(QorExtensionTest, IsMadeOnceAnObjectAndServesSeveralInterfaces) {
    madeExtensions = 0;
    QorExtension::Register("TestSolid", QorITestColor::ClassId(), &MakeCounted);
    QorExtension::Register("TestSolid", QorITestWeight::ClassId(), &MakeCounted);
    QorExtension::Register("TestSolid", QorITestWeight::ClassId(), &MakeCounted);
    const auto solid = QorMake<TestSolid>();
    const auto color = QorQuery<QorITestColor>(solid);
    const auto weight = QorQuery<QorITestWeight>(color);
    ASSERT_TRUE(weight);
    EXPECT_EQ(weight->GetGrams(), 3);
    EXPECT_EQ(weight->GetImplementation(), color->GetImplementation());
    EXPECT_EQ(madeExtensions, 1);
    const auto other = QorMake<TestSolid>();
    EXPECT_TRUE(QorQuery<QorITestColor>(other));
    EXPECT_EQ(madeExtensions, 2);
}

TEST_F(QorExtensionTest, EveryInterfaceIsReachedFromEveryOther) {
    QorExtension::Register("TestSolid", QorITestColor::ClassId(), &CreateBOAQorITestColorTestPaint);
    const auto solid = QorMake<TestPyramid>();
    const auto color = QorQuery<QorITestColor>(solid);
    const auto shape = QorQuery<QorITestShape>(color);
    ASSERT_TRUE(shape);
    EXPECT_EQ(shape->CountCorners(), 5);
    EXPECT_TRUE(shape->GetImplementation()->IsEqual(color->GetImplementation()));
    EXPECT_TRUE(solid->IsEqual(color->GetImplementation()));
    EXPECT_EQ(color->GetImplementation()->GetIdentity(), solid.Get());
    EXPECT_FALSE(solid->IsEqual(QorMake<TestSolid>()));
    EXPECT_FALSE(solid->IsEqual(nullptr));
}

TEST_F(QorExtensionTest, LivesAndEndsWithItsOwner) {
    QorExtension::Register("TestSolid", QorITestColor::ClassId(), &CreateBOAQorITestColorTestPaint);
    auto color = QorQuery<QorITestColor>(QorMake<TestSolid>());
    EXPECT_TRUE(Journal().empty());
    color.Reset();
    EXPECT_EQ(Journal(), (std::vector<std::string>{"~paint", "~solid"}));
}

TEST_F(QorExtensionTest, TheNearestClassWins) {
    QorExtension::Register("TestSolid", QorITestWeight::ClassId(), &MakeCounted);
    QorExtension::Register("TestPyramid", QorITestWeight::ClassId(),
                           &QorCreateExtension<TestHeavy>);
    EXPECT_EQ(QorQuery<QorITestWeight>(QorMake<TestSolid>())->GetGrams(), 3);
    EXPECT_EQ(QorQuery<QorITestWeight>(QorMake<TestPyramid>())->GetGrams(), 1000);
}

TEST_F(QorExtensionTest, AnOwnInterfaceWinsOverARegistration) {
    QorExtension::Register("TestSolid", QorITestShape::ClassId(), &MakeNothing);
    EXPECT_TRUE(QorQuery<QorITestShape>(QorMake<TestSolid>()));
}

TEST_F(QorExtensionTest, UnregisteringLeavesWhatWasMade) {
    QorExtension::Register("TestSolid", QorITestColor::ClassId(), &CreateBOAQorITestColorTestPaint);
    const auto solid = QorMake<TestSolid>();
    EXPECT_TRUE(QorQuery<QorITestColor>(solid));
    QorExtension::Unregister("TestSolid", QorITestColor::ClassId());
    QorExtension::Unregister("NoSuchClass", QorITestColor::ClassId());
    EXPECT_TRUE(QorQuery<QorITestColor>(solid));
    EXPECT_FALSE(QorQuery<QorITestColor>(QorMake<TestSolid>()));
}

TEST_F(QorExtensionTest, MayAskForOthersWhileItIsMadeAndGoesBeforeThem) {
    QorExtension::Register("TestSolid", QorITestWeight::ClassId(), &QorCreateExtension<TestHeavy>);
    QorExtension::Register("TestSolid", QorITestColor::ClassId(), &QorCreateExtension<TestNosy>);
    EXPECT_EQ(QorQuery<QorITestColor>(QorMake<TestSolid>())->GetHue(), 1000);
    EXPECT_EQ(Journal(), (std::vector<std::string>{"~nosy", "~heavy", "~solid"}));
}

TEST_F(QorExtensionTest, ATieForwardsToItsObject) {
    QorExtension::Register("TestPlain", QorITestColor::ClassId(),
                           &QorCreateExtension<TestPlainTie>);
    const auto color = QorQuery<QorITestColor>(QorMake<TestPlain>());
    ASSERT_TRUE(color);
    EXPECT_EQ(color->GetHue(), 77);
}
