// object.*: what the current document holds.
#include "platform/frame/QorFrmEditor.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/scene/QorRscContainer.h"
#include "tests/automation/PortTest.h"

namespace qor::automation {

namespace {

class ObjectMethods : public PortTest {
protected:
    void TearDown() override {
        layout.Reset();
        document.Reset();
        PortTest::TearDown();
    }

    QorVar<QorFrmLayout> layout = QorMake<QorFrmLayout>(nullptr, "layout");
    QorDocument_var document = QorMake<QorDocument>("document");
    QorFrmEditor* editor = new QorFrmEditor(layout.Get(), "editor", document.Get());

    void SetUp() override {
        PortTest::SetUp();
        layout->SetCurrentEditor(editor);
    }
};

Json object(const char* kind, const char* name) {
    return {{"kind", kind}, {"name", name}};
}

Json attribute(const char* kind, const char* name, const char* attribute) {
    return {{"kind", kind}, {"name", name}, {"attribute", attribute}};
}

Json value(const char* kind, const char* name, const char* attribute, const Json& value) {
    return {{"kind", kind}, {"name", name}, {"attribute", attribute}, {"value", value}};
}

TEST_F(ObjectMethods, CreateListAndRemove) {
    play([](PortClient& client) {
        EXPECT_EQ(client.call("object.list", {{"kind", "light"}}), Json::array());
        EXPECT_EQ(client.call("object.create", {{"kind", "light"}}), Json({{"name", "Light.1"}}));
        EXPECT_EQ(client.call("object.create", {{"kind", "light"},
                                                {"name", "Sun"},
                                                {"Intensity", 2.5},
                                                {"Active", false},
                                                {"Color", {1, 0.5, 0}}}),
                  Json({{"name", "Sun"}}));
        const Json lights = client.call("object.list", {{"kind", "light"}});
        ASSERT_EQ(lights.size(), 2U);
        EXPECT_EQ(lights[0]["name"], "Light.1");
        EXPECT_EQ(lights[0]["Intensity"], 1.0);
        EXPECT_EQ(lights[1]["name"], "Sun");
        EXPECT_EQ(lights[1]["Intensity"], 2.5);
        EXPECT_EQ(lights[1]["Active"], false);
        EXPECT_EQ(lights[1]["IsActive"], false);
        EXPECT_EQ(lights[1]["Color"], Json({1.0, 0.5, 0.0}));
        EXPECT_EQ(lights[1]["Type"], "directional");
        EXPECT_EQ(client.call("object.remove", object("light", "Light.1")), Json::object());
        EXPECT_EQ(client.call("object.list", {{"kind", "light"}}).size(), 1U);
    });
}

TEST_F(ObjectMethods, TellEveryAttributeOfEveryKind) {
    play([](PortClient& client) {
        for (const char* kind : {"shooting", "camera", "light", "environment", "material",
                                 "experiment", "track", "sequence"}) {
            client.call("object.create", {{"kind", kind}, {"name", "one"}});
            const Json all = client.call("object.list", {{"kind", kind}}).at(0);
            const auto& attributes = QorRscKind::Find(kind)->attributes;
            EXPECT_GE(all.size(), attributes.size() + 1);
            for (const QorAttribute& one : attributes) {
                EXPECT_EQ(client.call("object.get", attribute(kind, "one", one.name)),
                          all.at(one.name))
                    << one.name;
                EXPECT_EQ(client.call("object.set", value(kind, "one", one.name, all.at(one.name))),
                          Json::object())
                    << one.name;
            }
        }
    });
}

TEST_F(ObjectMethods, SetAndGetOfEachType) {
    play([](PortClient& client) {
        for (const char* kind : {"shooting", "camera", "light"})
            client.call("object.create", {{"kind", kind}, {"name", "one"}});
        client.call("object.create", {{"kind", "light"}, {"name", "two"}});
        const auto setAndGet = [&](const char* kind, const char* name, const Json& wanted) {
            client.call("object.set", value(kind, "one", name, wanted));
            return client.call("object.get", attribute(kind, "one", name));
        };
        EXPECT_EQ(setAndGet("shooting", "Width", 640), 640);
        EXPECT_EQ(setAndGet("shooting", "Width", 320.0), 320);
        EXPECT_EQ(setAndGet("shooting", "Duration", 2.5), 2.5);
        EXPECT_EQ(setAndGet("shooting", "GlowThreshold", 0.7), 0.7);
        EXPECT_EQ(setAndGet("shooting", "RatioLock", false), false);
        EXPECT_EQ(setAndGet("shooting", "OutputName", "Bild"), "Bild");
        EXPECT_EQ(setAndGet("shooting", "Current", true), true);
        EXPECT_EQ(setAndGet("shooting", "IsCurrent", false), false);
        EXPECT_EQ(setAndGet("shooting", "Camera", "one"), "one");
        EXPECT_EQ(setAndGet("shooting", "Camera", nullptr), nullptr);
        EXPECT_EQ(setAndGet("shooting", "Lights", {"two", "one"}), Json({"two", "one"}));
        EXPECT_EQ(setAndGet("shooting", "Lights", Json::array()), Json::array());
        EXPECT_EQ(setAndGet("camera", "Eye", {1, 2.5, -3}), Json({1.0, 2.5, -3.0}));
        EXPECT_EQ(setAndGet("camera", "Projection", "parallel"), "parallel");
    });
}

TEST_F(ObjectMethods, SetReachesTheShooting) {
    const auto shooting = QorRscContainer::Of(document.Get())->CreateShooting();
    play([](PortClient& client) {
        client.call("object.set", value("shooting", "Shooting.1", "PredefinedQuality", 12));
        EXPECT_EQ(client.call("object.get", attribute("shooting", "Shooting.1", "MaxSamples")), 5);
    });
    EXPECT_EQ(shooting->GetPredefinedQuality(), 12);
}

TEST_F(ObjectMethods, CreateSetsDerivingAttributesFirst) {
    play([](PortClient& client) {
        client.call("object.create",
                    {{"kind", "shooting"}, {"MinSamples", 0}, {"PredefinedQuality", 12}});
        const Json shooting = client.call("object.list", {{"kind", "shooting"}}).at(0);
        EXPECT_EQ(shooting["MinSamples"], 0) << "what is given counts, in whatever order";
        EXPECT_EQ(shooting["MaxSamples"], 5);
    });
}

TEST_F(ObjectMethods, Rename) {
    play([](PortClient& client) {
        client.call("object.create", {{"kind", "camera"}, {"name", "one"}});
        client.call("object.set", value("camera", "one", "Alias", " two "));
        EXPECT_EQ(client.call("object.get", attribute("camera", "two", "Name")), "two");
        EXPECT_EQ(client.callForError("object.get", attribute("camera", "one", "Name")), -32001);
        EXPECT_EQ(client.callForError("object.set", value("camera", "two", "name", "  ")), -32602);
        EXPECT_EQ(client.callForError("object.set", value("camera", "two", "name", 3)), -32602);
    });
}

TEST_F(ObjectMethods, RemoveMakesReferencesNull) {
    play([](PortClient& client) {
        client.call("object.create", {{"kind", "camera"}, {"name", "one"}});
        client.call("object.create", {{"kind", "light"}, {"name", "one"}});
        client.call("object.create", {{"kind", "shooting"},
                                      {"name", "hero"},
                                      {"Camera", "one"},
                                      {"Lights", Json::array({"one"})}});
        client.call("object.remove", object("camera", "one"));
        client.call("object.remove", object("light", "one"));
        EXPECT_EQ(client.call("object.get", attribute("shooting", "hero", "Camera")), nullptr);
        EXPECT_EQ(client.call("object.get", attribute("shooting", "hero", "Lights")),
                  Json::array());
    });
}

TEST_F(ObjectMethods, TellViewsOnceOfEachChange) {
    play([](PortClient& client) {
        client.call("events.take");
        client.call("object.create", {{"kind", "light"}, {"name", "one"}, {"Intensity", 2}});
        Json events = client.call("events.take");
        EXPECT_EQ(eventsOf(events, "QorRscLight"), Names{"QorCreate"});
        EXPECT_EQ(eventsOf(events, "QorDocument"), Names{"QorCreate"});
        client.call("object.set", value("light", "one", "Intensity", 3));
        events = client.call("events.take");
        EXPECT_EQ(eventsOf(events, "QorRscLight"), Names{"QorModify"});
        EXPECT_EQ(eventsOf(events, "QorDocument"), Names{"QorModify"});
        client.call("object.remove", object("light", "one"));
        events = client.call("events.take");
        EXPECT_EQ(eventsOf(events, "QorRscLight"), Names{"QorRemove"});
        EXPECT_EQ(eventsOf(events, "QorDocument"), Names{"QorRemove"});
    });
}

TEST_F(ObjectMethods, SayWhatIsWrong) {
    struct Case {
        const char* method;
        Json params;
        int code;
    };

    play([](PortClient& client) {
        client.call("object.create", {{"kind", "shooting"}, {"name", "hero"}});
        client.call("object.create", {{"kind", "light"}, {"name", "twin"}});
        client.call("object.create", {{"kind", "light"}, {"name", "twin"}});
        const std::vector<Case> cases{
            {"object.list", {{"kind", "lamp"}}, -32602},
            {"object.create", {{"kind", "lamp"}}, -32602},
            {"object.create", {{"kind", "light"}, {"name", " "}}, -32602},
            {"object.create", {{"kind", "light"}, {"Intensity", -1}}, -32602},
            {"object.create", {{"kind", "light"}, {"Brightness", 1}}, -32602},
            {"object.create", {{"kind", "light"}, {"Width", 1}}, -32005},
            {"object.remove", object("light", "none"), -32001},
            {"object.remove", object("light", "twin"), -32002},
            {"object.get", attribute("light", "twin", "Intensity"), -32002},
            {"object.get", attribute("shooting", "hero", "Intensity"), -32005},
            {"object.get", attribute("shooting", "hero", "Brightness"), -32602},
            {"object.get", object("shooting", "hero"), -32602},
            {"object.set", attribute("shooting", "hero", "Width"), -32602},
            {"object.set", value("shooting", "hero", "Width", "wide"), -32602},
            {"object.set", value("shooting", "hero", "Width", 2.5), -32602},
            {"object.set", value("shooting", "hero", "Width", 0), -32602},
            {"object.set", value("shooting", "hero", "RatioLock", 1), -32602},
            {"object.set", value("shooting", "hero", "Camera", "none"), -32001},
            {"object.set", value("shooting", "hero", "Camera", 3), -32602},
            {"object.set", value("shooting", "hero", "Lights", {"twin"}), -32002},
            {"object.set", value("shooting", "hero", "Lights", "twin"), -32602},
            {"object.set", value("shooting", "hero", "Lights", {1}), -32602},
            {"object.set", value("light", "none", "Color", {0, 0, 0}), -32001},
        };
        for (const Case& one : cases)
            EXPECT_EQ(client.callForError(one.method, one.params), one.code)
                << one.method << one.params;
        EXPECT_EQ(client.call("object.list", {{"kind", "light"}}).size(), 2U)
            << "what fails leaves nothing behind";
    });
}

TEST_F(ObjectMethods, HaveNothingWithoutADocument) {
    layout->SetCurrentEditor(nullptr);
    play([](PortClient& client) {
        EXPECT_EQ(client.call("object.list", {{"kind", "light"}}), Json::array());
        EXPECT_EQ(client.callForError("object.create", {{"kind", "light"}}), -32006);
        EXPECT_EQ(client.callForError("object.remove", object("light", "one")), -32001);
        EXPECT_EQ(client.call("selection.get"), Json({{"objects", Json::array()}}));
        EXPECT_EQ(client.callForError("selection.set", {{"objects", Json::array()}}), -32006);
    });
}

} // namespace

} // namespace qor::automation
