#include "TestObjects.h"

#include <atomic>
#include <thread>

using QorCounting = ComponentTest;

TEST_F(QorCounting, StartsAtOneAndEndsAtZero) {
    auto* object = new TestNamed("a");
    EXPECT_EQ(object->AddRef(), 2U);
    EXPECT_EQ(object->Release(), 1U);
    EXPECT_TRUE(Journal().empty());
    EXPECT_EQ(object->Release(), 0U);
    EXPECT_EQ(Journal(), std::vector<std::string>{"~a"});
}

TEST_F(QorCounting, CopiesHaveTheirOwnCount) {
    const auto first = QorMake<TestPyramid>();
    const QorVar<TestPyramid> more = first;
    const auto copy = QorAdopt(new TestPyramid(*first));
    EXPECT_EQ(copy->AddRef(), 2U);
    EXPECT_EQ(copy->Release(), 1U);
    EXPECT_EQ(TestPyramid::MetaObject().GetLiveCount(), 2);
}

TEST_F(QorCounting, IsSafeOnManyThreads) {
    constexpr int steps = 20000;
    const auto object = QorMake<QorNotification>();
    const auto work = [&] {
        for (int i = 0; i < steps; ++i)
            const QorVar<QorNotification> handle = object;
    };
    std::thread first(work);
    std::thread second(work);
    first.join();
    second.join();
    EXPECT_EQ(object->AddRef(), 2U);
    EXPECT_EQ(object->Release(), 1U);
}

TEST_F(QorCounting, TheLastOwnerOnAnyThreadDestroys) {
    for (int i = 0; i < 200; ++i) {
        auto object = QorMake<QorNotification>();
        std::atomic<bool> go = false;
        std::thread other([&go, handle = object]() mutable {
            while (!go)
                std::this_thread::yield();
            handle.Reset();
        });
        go = true;
        object.Reset();
        other.join();
        ASSERT_EQ(QorNotification::MetaObject().GetLiveCount(), 0);
    }
}

namespace {

/// Takes references to itself while it is destroyed, as an object does that tells others of its
/// end.
class TestClinging : public QorBaseUnknown {
    QorDeclareClass(TestClinging)

protected:
    ~TestClinging() override {
        const QorVar<QorBaseUnknown> self(this);
        Journal().push_back(QorQuery<QorITestColor>(this) ? "found" : "none");
    }
};

QorImplementClass(TestClinging, QorBaseUnknown)

} // namespace

TEST_F(QorCounting, ReferencesTakenWhileDyingDestroyNothingTwice) {
    QorExtension::Register("TestClinging", QorITestColor::ClassId(),
                           &CreateBOAQorITestColorTestPaint);
    QorMake<TestClinging>().Reset();
    EXPECT_EQ(Journal(), std::vector<std::string>{"none"});
    QorExtension::Unregister("TestClinging", QorITestColor::ClassId());
}
