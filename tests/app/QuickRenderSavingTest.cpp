// Saving the pictures of quick renders in the running program, through its port.
#include "tests/app/QuickRenderTest.h"

#include <array>
#include <filesystem>

namespace {

std::string beginningOf(const std::string& path, std::size_t length) {
    std::ifstream file(path, std::ios::binary);
    std::string bytes(length, '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(length));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

TEST_F(QuickRender, SavesInEveryFormat) {
    openToolBar();
    render();
    using namespace std::string_literals;
    const std::array<std::pair<const char*, std::string>, 11> formats{{{"tif", "II*"},
                                                                       {"tif", "II*"},
                                                                       {"rgb", "\x01\xda"},
                                                                       {"bmp", "BM"},
                                                                       {"jpg", "\xff\xd8\xff"},
                                                                       {"jpg", "\xff\xd8\xff"},
                                                                       {"jpg", "\xff\xd8\xff"},
                                                                       {"pic", ""},
                                                                       {"psd", "8BPS"},
                                                                       {"png", "\x89PNG"},
                                                                       {"tga", ""}}};
    for (int filter = 0; filter < 11; ++filter) {
        const auto& [extension, magic] = formats.at(static_cast<std::size_t>(filter));
        const std::string name = "picture" + std::to_string(filter);
        EXPECT_EQ(save(name, filter), Json::object()) << filter;
        const std::string path = directory.GetPath(name + "." + extension);
        EXPECT_TRUE(std::filesystem::exists(path)) << path;
        EXPECT_EQ(beginningOf(path, magic.size()), magic) << path;
    }
    EXPECT_EQ(dialogs(), std::vector<std::string>{"renderToolbar"});
}

TEST_F(QuickRender, AsksBeforeItReplacesAFileAndTellsOfFailures) {
    openToolBar();
    render();
    const std::string kept = directory.GetPath("kept.tif");
    std::ofstream(kept) << "old";
    EXPECT_EQ(save("kept", 0)["blocked"], "errNotify");
    EXPECT_EQ(call("notify.get")["kind"], "warning");
    answer("no");
    EXPECT_EQ(beginningOf(kept, 9), "old");
    EXPECT_EQ(dialogs(), std::vector<std::string>{"renderToolbar"});
    EXPECT_EQ(save("kept", 0)["blocked"], "errNotify");
    answer("yes");
    EXPECT_EQ(beginningOf(kept, 2), "II");

    EXPECT_EQ(save("missing/out", 9)["blocked"], "errNotify");
    EXPECT_EQ(call("notify.get")["kind"], "error");
    answer("ok");
    EXPECT_EQ(dialogs(), std::vector<std::string>{"renderToolbar"});
    EXPECT_EQ(widget("saveButton")["sensitive"], true);

    std::filesystem::create_directory(directory.GetPath("my.dir"));
    EXPECT_EQ(save("my.dir/out", 9), Json::object());
    EXPECT_EQ(beginningOf(directory.GetPath("my.dir/out"), 4), "\x89PNG");
}

TEST_F(QuickRender, SavesAPictureThatAWorkerWritesBeforeItAnswers) {
    set("ScreenResolution", 0);
    set("CustomResolution", 864); // nine times the screen's
    openToolBar();
    EXPECT_EQ(size(), "576 × 432 pixels");
    EXPECT_EQ(render()["status"], "done");
    EXPECT_EQ(save("large", 9), Json::object());
    EXPECT_EQ(beginningOf(directory.GetPath("large.png"), 4), "\x89PNG");
    EXPECT_EQ(save("none/large", 9)["blocked"], "errNotify");
    answer("ok");
    EXPECT_EQ(dialogs(), std::vector<std::string>{"renderToolbar"});
}

TEST_F(QuickRender, OpensOneFileBoxAndDoesNotAskAboutFolders) {
    openToolBar();
    render();
    call("widget.press", {{"path", "renderToolbar/saveButton"}});
    std::filesystem::create_directory(directory.GetPath("a.folder"));
    EXPECT_EQ(save("a.folder", 9)["blocked"], "errNotify"); // presses once more
    EXPECT_EQ(call("notify.get")["kind"], "error");
    const std::string text = call("notify.get")["text"];
    EXPECT_NE(text.find("Is a directory"), std::string::npos) << text;
    answer("ok");
    EXPECT_EQ(dialogs(), std::vector<std::string>{"renderToolbar"});
}

TEST_F(QuickRender, RefusesMorePixelsThanThereCanBe) {
    openToolBar();
    set("ScreenResolution", 0);
    set("CustomResolution", 2000);
    for (const auto& [columns, rows, reason] :
         {std::tuple{1200, 900, "too large"},
          std::tuple{4000, 10, "each side must be 1 to 65535"}}) {
        resize(columns, rows);
        const Json last = render();
        EXPECT_EQ(last["status"], "refused");
        const std::string message = last["message"];
        EXPECT_NE(message.find(reason), std::string::npos) << message;
        EXPECT_EQ(widget("renderCheck")["checked"], false);
        EXPECT_EQ(widget("saveButton")["sensitive"], false);
        EXPECT_EQ(widget("optionsButton")["sensitive"], true);
    }
}

} // namespace
