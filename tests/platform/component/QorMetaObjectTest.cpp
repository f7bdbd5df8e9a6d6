#include "TestObjects.h"

#include <thread>

using QorMetaObjectTest = ComponentTest;

TEST_F(QorMetaObjectTest, KnowsNameAndBases) {
    const auto pyramid = QorMake<TestPyramid>();
    EXPECT_STREQ(pyramid->IsA(), "TestPyramid");
    EXPECT_STREQ(TestPyramid::ClassName(), "TestPyramid");
    EXPECT_EQ(&pyramid->GetMetaObject(), &TestPyramid::MetaObject());
    EXPECT_EQ(TestPyramid::MetaObject().GetBase(), &TestSolid::MetaObject());
    for (const char* name : {"TestPyramid", "TestSolid", "QorBaseUnknown"})
        EXPECT_TRUE(pyramid->IsAKindOf(name)) << name;
    EXPECT_FALSE(pyramid->IsAKindOf("TestNamed"));
    EXPECT_TRUE(pyramid->IsAKindOf(TestSolid::MetaObject()));
    EXPECT_FALSE(QorMake<TestSolid>()->IsAKindOf(TestPyramid::MetaObject()));
    EXPECT_EQ(QorBaseUnknown::MetaObject().GetBase(), nullptr);
}

TEST_F(QorMetaObjectTest, CreatesObjectsOfClassesThatNeedNoArguments) {
    const auto made = QorAdopt(TestPyramid::CreateItself());
    ASSERT_NE(made, nullptr);
    EXPECT_STREQ(made->IsA(), "TestPyramid");
    EXPECT_STREQ(QorAdopt(TestSolid::MetaObject().Create())->IsA(), "TestSolid");
    EXPECT_STREQ(QorAdopt(QorNotification::CreateItself())->IsA(), "QorNotification");
    EXPECT_EQ(TestNamed::CreateItself(), nullptr);
    EXPECT_EQ(TestNamed::MetaObject().Create(), nullptr);
}

TEST_F(QorMetaObjectTest, IsFoundByNameOnceUsed) {
    EXPECT_EQ(QorMetaObject::Find("NoSuchClass"), nullptr);
    const QorMetaObject& meta = TestPyramid::MetaObject();
    EXPECT_EQ(QorMetaObject::Find("TestPyramid"), &meta);
}

TEST_F(QorMetaObjectTest, CountsLiveObjectsWithThoseOfDerivedClasses) {
    const auto solid = QorMake<TestSolid>();
    {
        const auto pyramid = QorMake<TestPyramid>();
        EXPECT_EQ(TestSolid::MetaObject().GetLiveCount(), 2);
        EXPECT_EQ(TestPyramid::MetaObject().GetLiveCount(), 1);
    }
    EXPECT_EQ(TestSolid::MetaObject().GetLiveCount(), 1);
    EXPECT_EQ(TestPyramid::MetaObject().GetLiveCount(), 0);
}

TEST_F(QorMetaObjectTest, CountsOnManyThreads) {
    constexpr int objects = 2000;
    const auto work = [] {
        for (int i = 0; i < objects; ++i)
            static_cast<void>(QorMake<TestPyramid>()->IsA());
    };
    Journal().clear();
    // The journal of TestSolid's destructor is not for threads: plain objects do here.
    const auto plain = [] {
        for (int i = 0; i < objects; ++i)
            static_cast<void>(QorMake<QorNotification>()->GetEventName());
    };
    std::thread first(plain);
    std::thread second(plain);
    first.join();
    second.join();
    work();
    EXPECT_EQ(QorNotification::MetaObject().GetLiveCount(), 0);
    EXPECT_EQ(TestPyramid::MetaObject().GetLiveCount(), 0);
}

TEST_F(QorMetaObjectTest, NamesTheEventOfANotification) {
    EXPECT_EQ(QorMake<QorNotification>()->GetEventName(), QorEventName("QorNotification"));
    EXPECT_FALSE(QorMake<QorNotification>()->GetEventName() == QorEventName("Another"));
    EXPECT_TRUE(QorEventName().IsEmpty());
    EXPECT_EQ(QorEventName("a").GetText(), "a");
}
