#include "platform/scene/QorListOf.h"

#include "platform/scene/QorIAlias.h"
#include "tests/platform/scene/QorSceneTest.h"

namespace {

class ListOf : public QorSceneTest {};

TEST_F(ListOf, CountsFromOne) {
    const auto first = Create<QorIRscLight>("light");
    const auto second = Create<QorIRscLight>("light");
    QorListOf<QorIRscLight> list;
    list.Append(first.Get());
    list.Append(nullptr);
    list.Append(second.Get());
    EXPECT_EQ(list.Size(), 2);
    EXPECT_EQ(list[0], nullptr);
    EXPECT_EQ(list[1], first.Get());
    EXPECT_EQ(list[2], second.Get());
    EXPECT_EQ(list[3], nullptr);
    list.RemovePosition(1);
    list.RemovePosition(2);
    ASSERT_EQ(list.Size(), 1);
    EXPECT_EQ(list[1], second.Get());
    list.RemoveAll();
    EXPECT_EQ(list.Size(), 0);
}

TEST_F(ListOf, FindsAnObjectThroughAnyOfItsInterfaces) {
    const auto first = Create<QorIRscLight>("light");
    const auto second = Create<QorIRscLight>("light");
    QorListOf<QorIRscLight> list;
    list.Append(first.Get());
    list.Append(second.Get());
    EXPECT_EQ(list.Locate(QorQuery<QorIAlias>(second).Get()), 2);
    EXPECT_EQ(list.Locate(QorRscObject::From(first.Get())), 1);
    EXPECT_EQ(list.Locate(document.Get()), 0);
    EXPECT_EQ(list.Locate(static_cast<QorIRscLight*>(nullptr)), 0);
}

} // namespace
