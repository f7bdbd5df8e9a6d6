// file.* and color.*: the dialogs that choose a file or a colour.
#include "platform/dialog/QorDlgColorEditor.h"
#include "platform/dialog/QorDlgFile.h"
#include "tests/automation/PortTest.h"

namespace qor::automation {

namespace {

class FileMethods : public PortTest {
protected:
    void SetUp() override {
        PortTest::SetUp();
        file = makeDialog<QorDlgStdFile>("file", QorDlgStyle(QorDlgFileSave),
                                         std::vector<QorString>{"png", "tif"});
        const QorUnicodeString labels[] = {"Portable", "Tagged"};
        const QorString patterns[] = {"*.png", "*.tif *.tiff"};
        file->SetFilterStrings(labels, patterns, 2);
        file->SetDirectory("/somewhere");
        file->SetTitle("Save");
    }

    QorDlgStdFile* file = nullptr;
};

const Json dialog{{"dialog", "file"}};

Json accept(Json params) {
    params["dialog"] = "file";
    return params;
}

TEST_F(FileMethods, GetTellsWhatIsOffered) {
    play([](PortClient& client) {
        const Json expected{{"title", "Save"},
                            {"save", true},
                            {"filters",
                             {{{"label", "Portable"}, {"pattern", "*.png"}},
                              {{"label", "Tagged"}, {"pattern", "*.tif *.tiff"}}}},
                            {"filter", 0},
                            {"extensions", {"png", "tif"}},
                            {"directory", "/somewhere"}};
        EXPECT_EQ(client.call("file.get", dialog), expected);
    });
}

TEST_F(FileMethods, AcceptIsOKWithThatSelection) {
    play([](PortClient& client) {
        client.call("events.take");
        EXPECT_EQ(client.call("file.accept",
                              accept({{"path", "a.tif"}, {"directory", "/else"}, {"filter", 1}})),
                  Json::object());
        EXPECT_EQ(eventsOf(client.call("events.take"), "QorDlgStdFile"),
                  Names({"QorDlgFileSelectionOKNotification"}));
        EXPECT_EQ(client.call("file.get", dialog).at("filter"), 1);
        EXPECT_EQ(client.call("file.get", dialog).at("directory"), "/else");
    });
    EXPECT_EQ(file->GetSelection(), QorUnicodeString("/else/a.tif"));
    play([](PortClient& client) {
        client.call("file.accept", accept({{"path", "/full/path with blanks"}}));
        client.call("file.accept", dialog);
    });
    EXPECT_EQ(file->GetSelection(), QorUnicodeString("/full/path with blanks"));
}

TEST_F(FileMethods, AcceptRefusesWhatIsNotThere) {
    play([](PortClient& client) {
        client.call("events.take");
        EXPECT_EQ(client.callForError("file.accept",
                                      accept({{"path", "a"}, {"directory", "/x"}, {"filter", 2}})),
                  -32602);
        EXPECT_EQ(client.call("file.get", dialog).at("directory"), "/somewhere")
            << "nothing is half done";
        EXPECT_EQ(client.callForError("file.accept", accept({{"filter", -1}})), -32602);
        EXPECT_EQ(client.callForError("file.accept", dialog), -32003) << "nothing is selected";
        EXPECT_EQ(client.callForError("file.accept", accept({{"path", ""}})), -32003);
        EXPECT_EQ(client.callForError("file.accept", accept({{"path", 1}})), -32602);
        EXPECT_EQ(client.call("events.take"), Json::array());
    });
    file->SetVisibility(QorDlgHIDE);
    play([](PortClient& client) {
        EXPECT_EQ(client.callForError("file.accept", accept({{"path", "a"}})), -32003);
    });
}

TEST_F(FileMethods, CancelSendsItsOwnNotification) {
    makeDialog("plain");
    play([](PortClient& client) {
        client.call("events.take");
        EXPECT_EQ(client.call("file.cancel", dialog), Json::object());
        EXPECT_EQ(eventsOf(client.call("events.take"), "QorDlgStdFile"),
                  Names({"QorDlgFileSelectionCancelNotification"}));
        for (const char* method : {"file.get", "file.accept", "file.cancel", "color.cancel"})
            EXPECT_EQ(client.callForError(method, {{"dialog", "plain"}}), -32005) << method;
        EXPECT_EQ(client.callForError("file.get", {{"dialog", "none"}}), -32001);
    });
}

TEST_F(FileMethods, OfAPlainFileDialogTellNoExtensions) {
    makeDialog<QorDlgFile>("open");
    play([](PortClient& client) {
        const Json got = client.call("file.get", {{"dialog", "open"}});
        EXPECT_EQ(got.at("save"), false);
        EXPECT_EQ(got.at("extensions"), Json::array());
        EXPECT_EQ(got.at("filters"), Json::array());
    });
}

TEST_F(FileMethods, ColorAcceptIsOKWithThatColor) {
    auto* editor = makeDialog<QorDlgColorEditor>("color");
    play([](PortClient& client) {
        const auto color = [](const Json& parts) {
            return Json{{"dialog", "color"}, {"color", parts}};
        };
        client.call("events.take");
        EXPECT_EQ(client.call("color.accept", color({0.25, 0.5, 1})), Json::object());
        EXPECT_EQ(client.call("color.cancel", {{"dialog", "color"}}), Json::object());
        EXPECT_EQ(eventsOf(client.call("events.take"), "QorDlgColorEditor"),
                  Names({"QorDlgColorOKNotification", "QorDlgColorCancelNotification"}));
        EXPECT_EQ(client.call("widget.get", {{"path", "color"}}).at("color"),
                  Json::array({0.25, 0.5, 1.0}));
        for (const Json& bad : {Json(1), Json::array(), Json::array({1, 1}),
                                Json::array({1, 1, 1, 1}), Json::array({1, 1, "1"})})
            EXPECT_EQ(client.callForError("color.accept", color(bad)), -32602) << bad;
        EXPECT_EQ(client.callForError("color.accept", {{"dialog", "color"}}), -32602);
    });
    EXPECT_EQ(editor->GetColor(), (std::array<float, 3>{0.25F, 0.5F, 1.0F}));
}

} // namespace

} // namespace qor::automation
