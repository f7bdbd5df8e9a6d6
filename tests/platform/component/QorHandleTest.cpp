#include "TestObjects.h"

using QorHandleTest = ComponentTest;

namespace {

unsigned CountOf(QorBaseUnknown* iObject) {
    iObject->AddRef();
    return iObject->Release();
}

} // namespace

TEST_F(QorHandleTest, HoldsOneReference) {
    auto* object = new TestSolid;
    {
        const QorVar<TestSolid> handle(object);
        EXPECT_EQ(CountOf(object), 2U);
        QorVar<TestSolid> copy = handle;
        EXPECT_EQ(CountOf(object), 3U);
        const QorVar<TestSolid> moved = std::move(copy);
        EXPECT_EQ(CountOf(object), 3U);
        EXPECT_EQ(copy, nullptr); // NOLINT(bugprone-use-after-move): that is the point
    }
    EXPECT_EQ(CountOf(object), 1U);
    object->Release();
}

TEST_F(QorHandleTest, IsAssignedSafely) {
    auto handle = QorMake<TestSolid>();
    TestSolid* object = handle.Get();
    const auto& same = handle;
    handle = same;
    EXPECT_EQ(CountOf(object), 1U);
    handle = QorMake<TestPyramid>();
    EXPECT_EQ(handle->CountCorners(), 5);
    handle = nullptr;
    EXPECT_FALSE(handle);
    EXPECT_TRUE(handle == nullptr);
}

TEST_F(QorHandleTest, ConvertsToBaseClasses) {
    const auto pyramid = QorMake<TestPyramid>();
    const QorVar<TestSolid> solid = pyramid;
    EXPECT_EQ(solid.Get(), pyramid.Get());
    EXPECT_EQ(CountOf(pyramid), 2U);
}

TEST_F(QorHandleTest, GivesItsReferenceAway) {
    auto handle = QorMake<TestSolid>();
    TestSolid* object = handle.Detach();
    EXPECT_FALSE(handle);
    EXPECT_EQ(object->Release(), 0U);
}

TEST_F(QorHandleTest, HoldsInterfacesAndKeepsTheirObject) {
    QorVar<QorITestShape> shape = QorQuery<QorITestShape>(QorMake<TestPyramid>());
    ASSERT_TRUE(shape);
    EXPECT_EQ(shape->CountCorners(), 5);
    EXPECT_TRUE(Journal().empty());
    shape.Reset();
    EXPECT_EQ(Journal(), std::vector<std::string>{"~solid"});
}

TEST_F(QorHandleTest, AnswersNullForNull) {
    EXPECT_EQ(QorQuery<QorITestShape>(static_cast<QorBaseUnknown*>(nullptr)), nullptr);
    EXPECT_EQ(QorQuery<QorITestShape>(QorVar<TestSolid>()), nullptr);
    QorVar<TestSolid> null;
    null.Reset();
    EXPECT_EQ(QorVar<TestSolid>(null), nullptr);
}
