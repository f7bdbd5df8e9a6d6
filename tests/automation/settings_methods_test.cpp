// settings.*: the settings repositories.
#include "platform/system/QorSettingRepository.h"
#include "tests/automation/PortTest.h"

namespace qor::automation {

namespace {

class SettingsMethods : public PortTest {};

Json at(const char* key) {
    return {{"repository", "portTest"}, {"key", key}};
}

Json with(const char* key, const Json& value) {
    return {{"repository", "portTest"}, {"key", key}, {"value", value}};
}

TEST_F(SettingsMethods, GiveBackWhatWasSet) {
    play([](PortClient& client) {
        for (const Json& value :
             {Json(3), Json(-2147483648), Json(0.2), Json(1e300), Json("text"), Json(""),
              Json::array({1, 2, 3}), Json::array({0.1, 1.0, -2.5})}) {
            EXPECT_EQ(client.call("settings.set", with("Key", value)), Json::object());
            EXPECT_EQ(client.call("settings.get", at("Key")), value);
        }
        EXPECT_EQ(client.call("settings.get", at("Absent")), nullptr);
        client.call("settings.set", with("Key", Json::array({5})));
        EXPECT_EQ(client.call("settings.get", at("Key")), 5) << "one number stands alone";
        client.call("settings.set", with("Key", 3e9));
        EXPECT_EQ(client.call("settings.get", at("Key")), 3e9);
    });
}

TEST_F(SettingsMethods, AreThoseOfTheProgram) {
    const auto repository = QorSettingRepository::GetRepository("portTest");
    const int numbers[] = {4, 5};
    repository->WriteSetting("Numbers", numbers, 2);
    play([](PortClient& client) {
        EXPECT_EQ(client.call("settings.get", at("Numbers")), Json::array({4, 5}));
        client.call("settings.set", with("Width", 12.0));
    });
    int width = 0;
    EXPECT_TRUE(repository->ReadSetting("Width", &width)) << "a float converts";
    EXPECT_EQ(width, 12);
    float pair[2] = {};
    EXPECT_TRUE(repository->ReadSetting("Numbers", pair, 2));
    EXPECT_FALSE(repository->ReadSetting("Numbers", pair, 1)) << "a wrong count reads as absent";
}

TEST_F(SettingsMethods, RefuseWhatIsNoSetting) {
    play([](PortClient& client) {
        for (const Json& value : {Json(nullptr), Json(true), Json::array(), Json::object(),
                                  Json::array({1, "2"}), Json::array({Json::array()})})
            EXPECT_EQ(client.callForError("settings.set", with("Key", value)), -32602) << value;
        EXPECT_EQ(client.callForError("settings.set", at("Key")), -32602);
        EXPECT_EQ(client.callForError("settings.set", with("no key", 1)), -32602);
        EXPECT_EQ(client.callForError("settings.get", with("Key", 1)), -32602);
        EXPECT_EQ(client.callForError("settings.get", {{"repository", "portTest"}}), -32602);
        EXPECT_EQ(client.callForError("settings.get", {{"repository", "../x"}, {"key", "K"}}),
                  -32006);
    });
}

TEST_F(SettingsMethods, SaveKeepsThemForTheNextTime) {
    play([](PortClient& client) {
        client.call("settings.set", with("Key", Json::array({0.5, 2.0})));
        EXPECT_EQ(client.call("settings.save", {{"repository", "portTest"}}), Json::object());
        client.call("settings.set", with("Key", 1));
    });
    QorSettingRepository::ForgetAll();
    play([](PortClient& client) {
        EXPECT_EQ(client.call("settings.get", at("Key")), Json::array({0.5, 2.0}));
    });
}

TEST_F(SettingsMethods, SaveTellsThatItFailed) {
    directory.Write("config/qorworkbench", "a file where the folder should be");
    play([](PortClient& client) {
        client.call("settings.set", with("Key", 1));
        EXPECT_EQ(client.callForError("settings.save", {{"repository", "portTest"}}), -32006);
    });
    EXPECT_FALSE(warnings.Take().empty());
}

TEST_F(SettingsMethods, LockMakesOpeningsFail) {
    const auto lock = [](PortClient& client, bool locked) {
        client.call("settings.lock", {{"repository", "portTest"}, {"locked", locked}});
    };
    play([&](PortClient& client) {
        client.call("settings.set", with("Key", 1));
        lock(client, true);
        EXPECT_EQ(client.callForError("settings.get", at("Key")), -32006);
        EXPECT_EQ(client.callForError("settings.save", {{"repository", "portTest"}}), -32006);
        lock(client, false);
        EXPECT_EQ(client.call("settings.get", at("Key")), 1);
    });
}

} // namespace

} // namespace qor::automation
