// selection.* and menu.contextual: the editor's selection, and what an object offers.
#include "platform/frame/QorFrmEditor.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/frame/QorIContextualMenu.h"
#include "platform/scene/QorRscContainer.h"
#include "tests/automation/PortTest.h"

namespace qor::automation {

namespace {

/// A menu of the test's on materials, with each sort of entry.
class TestMenu : public QorExtIContextualMenu {
public:
    explicit TestMenu(QorBaseUnknown* object) : QorExtIContextualMenu(object) {
        add<QorCmdStarter>(*menu, "paint", "Paint");
        add<QorCmdSeparator>(*menu, "line");
        add<QorCmdStarter>(*menu, "lost", "NoSuchHeader");
        auto* more = add<QorCmdContainer>(*menu, "more");
        add<QorCmdStarter>(*more, "again", "Paint");
    }

private:
    template <class Entry, class... Arguments>
    static Entry* add(QorCmdContainer& to, const char* name, Arguments... arguments) {
        const auto entry = QorMake<Entry>(nullptr, name, arguments...);
        to.AddChild(entry.Get());
        return entry.Get();
    }
};

class SelectionMethods : public PortTest {
protected:
    void SetUp() override {
        PortTest::SetUp();
        layout->SetCurrentEditor(editor);
    }

    void TearDown() override {
        layout.Reset();
        document.Reset();
        PortTest::TearDown();
    }

    QorVar<QorFrmLayout> layout = QorMake<QorFrmLayout>(nullptr, "layout");
    QorDocument_var document = QorMake<QorDocument>("document");
    QorFrmEditor* editor = new QorFrmEditor(layout.Get(), "editor", document.Get());
};

Json object(const char* kind, const char* name) {
    return {{"kind", kind}, {"name", name}};
}

TEST_F(SelectionMethods, SetAndGet) {
    play([](PortClient& client) {
        for (const char* kind : {"light", "shooting"})
            client.call("object.create", object(kind, "one"));
        EXPECT_EQ(client.call("selection.get"), Json({{"objects", Json::array()}}));
        const Json objects = Json::array({object("shooting", "one"), object("light", "one")});
        EXPECT_EQ(client.call("selection.set", {{"objects", objects}}), Json::object());
        EXPECT_EQ(client.call("selection.get"), Json({{"objects", objects}}));
        client.call("object.remove", object("shooting", "one"));
        EXPECT_EQ(client.call("selection.get"),
                  Json({{"objects", Json::array({object("light", "one")})}}));
        client.call("selection.set", {{"objects", Json::array()}});
        EXPECT_EQ(client.call("selection.get"), Json({{"objects", Json::array()}}));
    });
}

TEST_F(SelectionMethods, SelectPathsThatLeadToTheObject) {
    const auto shooting = QorRscContainer::Of(document.Get())->CreateShooting();
    play([](PortClient& client) {
        client.call("selection.set",
                    {{"objects", Json::array({object("shooting", "Shooting.1")})}});
    });
    ASSERT_EQ(editor->GetCSO()->GetSize(), 1);
    auto* path = dynamic_cast<QorPathElement*>(editor->GetCSO()->GetElement(1));
    ASSERT_NE(path, nullptr);
    EXPECT_EQ(path->FindInterface<QorIRscShooting>(), shooting);
}

TEST_F(SelectionMethods, GetTellsWhatElseIsSelectedByItsClass) {
    editor->GetCSO()->AddElement(document.Get());
    play([](PortClient& client) {
        EXPECT_EQ(client.call("selection.get"),
                  Json({{"objects", Json::array({object("QorDocument", "")})}}));
    });
}

TEST_F(SelectionMethods, KeepTheSelectionWhenAnEntryIsWrong) {
    play([](PortClient& client) {
        client.call("object.create", object("light", "one"));
        const Json one = Json::array({object("light", "one")});
        client.call("selection.set", {{"objects", one}});
        const auto code = [&](const Json& entry) {
            return client.callForError("selection.set",
                                       {{"objects", Json::array({one.at(0), entry})}});
        };
        EXPECT_EQ(code(object("light", "two")), -32001);
        EXPECT_EQ(code(object("lamp", "one")), -32602);
        EXPECT_EQ(code({{"kind", "light"}}), -32602);
        EXPECT_EQ(code("one"), -32602);
        EXPECT_EQ(client.callForError("selection.set"), -32602);
        EXPECT_EQ(client.call("selection.get"), Json({{"objects", one}}));
    });
}

TEST_F(SelectionMethods, MenuIsThatOfTheObject) {
    QorExtension::Register("QorRscMaterial", QorIContextualMenu::ClassId(),
                           &QorCreateExtension<TestMenu>);
    auto* headers = new QorCommand(nullptr, "headers");
    auto* paint = new QorCommandHeader(headers, "Paint", [](QorCommandHeader& header) {
        return new QorCommand(&header, "running");
    });
    play([](PortClient& client) {
        client.call("object.create", object("material", "Steel"));
        const Json menu = client.call("menu.contextual", object("material", "Steel"));
        ASSERT_EQ(menu.size(), 3U) << menu;
        EXPECT_EQ(menu[0]["name"], "paint");
        EXPECT_EQ(menu[0]["available"], true);
        EXPECT_EQ(menu[1]["name"], "lost");
        EXPECT_EQ(menu[1]["available"], false);
        EXPECT_EQ(menu[2]["name"], "more");
        EXPECT_EQ(menu[2]["entries"].at(0)["name"], "again");
        client.call("command.start", {{"name", "Paint"}});
        EXPECT_EQ(client.call("menu.contextual", object("material", "Steel")).at(0)["available"],
                  false);
        client.call("command.end", {{"name", "Paint"}});
        client.call("object.create", object("light", "one"));
        EXPECT_EQ(client.call("menu.contextual", object("light", "one")), Json::array());
        EXPECT_EQ(client.callForError("menu.contextual", object("light", "two")), -32001);
    });
    EXPECT_NE(paint, nullptr);
    headers->RequestDelayedDestruction();
    QorExtension::Unregister("QorRscMaterial", QorIContextualMenu::ClassId());
}

} // namespace

} // namespace qor::automation
