#include "platform/frame/QorIContextualMenu.h"
#include "tests/support/QorTestApplication.h"

namespace qortest {

/// An object with a menu whose second command depends on its state.
class Shape : public QorBaseUnknown {
    QorDeclareClass(Shape)

    bool isAnimated = false;

protected:
    ~Shape() override = default;
};

QorImplementClass(Shape, QorBaseUnknown)

} // namespace qortest

namespace {

using qortest::Shape;

class Menu : public QorTestApplication {};

TEST_F(Menu, KeepsItsEntriesInOrderAndAlive) {
    const auto menu = QorMake<QorCmdContainer>(nullptr, "menu");
    menu->AddChild(new QorCmdStarter(menu.Get(), "first", "First"));
    menu->AddChild(new QorCmdSeparator(menu.Get(), "line"));
    menu->AddChild(QorMake<QorCmdStarter>(nullptr, "last").Get());
    menu->AddChild(nullptr);
    ASSERT_EQ(menu->GetEntries().size(), 3U);
    EXPECT_EQ(menu->GetEntries()[0]->GetName(), "first");
    EXPECT_TRUE(menu->GetEntries()[1]->IsAKindOf("QorCmdSeparator"));
    EXPECT_EQ(menu->GetEntries()[2]->GetName(), "last");
}

TEST_F(Menu, AStarterFindsItsHeaderWhenItIsUsed) {
    const auto starter = QorMake<QorCmdStarter>(nullptr, "RenderFrame");
    EXPECT_EQ(starter->GetHeader(), nullptr);
    EXPECT_EQ(starter->GetTitle(), "RenderFrame");
    starter->SetCommand("Render");
    auto header = QorMake<QorCommandHeader>(nullptr, "Render");
    EXPECT_EQ(starter->GetHeader(), header.Get());
    EXPECT_EQ(starter->GetTitle(), "Render") << "the header's";
    header.Reset();
    EXPECT_EQ(starter->GetHeader(), nullptr);
}

TEST_F(Menu, TitlesComeFromTheCatalog) {
    directory.Write("messages/QorCommandHeaders.QorMsg", "FileMenu.Title=\"File\";\n");
    const QorScopedVariable path("QorStartupPath", directory.GetPath());
    EXPECT_EQ(QorMake<QorCmdContainer>(nullptr, "FileMenu")->GetTitle(), "File");
}

class ShapeMenu : public QorExtIContextualMenu {
public:
    explicit ShapeMenu(QorBaseUnknown* iOwner) : QorExtIContextualMenu(iOwner) {
        for (const char* name : {"ShapeFrame", "ShapeAnimation"})
            menu->AddChild(QorMake<QorCmdStarter>(nullptr, name, name).Get());
    }

    [[nodiscard]] QorCmdContainer* GetContextualMenu() override {
        QorCommandHeader* header = QorCommandHeader::GetHeaderFromList("ShapeAnimation", 1);
        if (static_cast<Shape*>(GetOwner())->isAnimated)
            header->EndCommand();
        else
            header->StartCommand();
        return QorExtIContextualMenu::GetContextualMenu();
    }

protected:
    ~ShapeMenu() override = default;
};

QorDefineBOA(QorIContextualMenu, ShapeMenu)

    TEST_F(Menu, OfAnObjectIsReachedThroughItsInterfaceAndFollowsItsState) {
    QorExtension::Register("Shape", QorIContextualMenu::ClassId(),
                           &CreateBOAQorIContextualMenuShapeMenu);
    const auto animation = QorMake<QorCommandHeader>(nullptr, "ShapeAnimation");
    auto shape = QorMake<Shape>();
    const auto contextual = QorQuery<QorIContextualMenu>(shape);
    ASSERT_TRUE(contextual);
    QorCmdContainer* menu = contextual->GetContextualMenu();
    ASSERT_EQ(menu->GetEntries().size(), 2U);
    EXPECT_FALSE(animation->IsAvailable());
    shape->isAnimated = true;
    EXPECT_EQ(contextual->GetContextualMenu(), menu);
    EXPECT_TRUE(animation->IsAvailable());
    EXPECT_FALSE(QorQuery<QorIContextualMenu>(QorMake<QorBaseUnknown>()));
    QorExtension::Unregister("Shape", QorIContextualMenu::ClassId());
}

} // namespace
