// viewer.* and manipulator.*: what viewers show, and a person's mouse in them.
#include "platform/engine/QorIRdgViewerParts.h"
#include "platform/frame/QorFrmEditor.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/frame/QorFrmWindow.h"
#include "platform/vis/QorNavigation2DViewer.h"
#include "platform/vis/QorNavigation3DViewer.h"
#include "platform/vis/QorPictureService.h"
#include "platform/vis/QorViewerPictureService.h"
#include "quickrender/QorRdgViewerAdapters.h"
#include "tests/automation/PortTest.h"

namespace qor::automation {

namespace {

using Points = std::vector<QorMathPoint2D>;

class ViewerMethods : public PortTest {
protected:
    void SetUp() override {
        PortTest::SetUp();
        QorRegisterViewerAdapters();
    }

    void TearDown() override {
        if (layout != nullptr)
            layout->RequestDelayedDestruction();
        PortTest::TearDown();
    }

    /// A document window with a navigation viewer of 400 by 300 pixels, looking along -Z at the
    /// origin from 10 mm away.
    QorNavigation3DViewer* openWindow(const char* name) {
        if (layout == nullptr) {
            layout = new QorFrmLayout(nullptr, "layout");
            editor = new QorFrmEditor(layout, "editor", nullptr);
        }
        auto* window = new QorFrmWindow(layout, name, editor);
        auto* viewer =
            new QorNavigation3DViewer(window, "space", QorDlgDefaultStyle, 400.0F, 300.0F);
        viewer->GetMain3DViewpoint()->SetView({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
        viewer->SetVertical({0, 1, 0});
        window->SetViewer(viewer);
        layout->SetCurrentWindow(window);
        return viewer;
    }

    QorNavigation2DViewer* makePlane() {
        auto* viewer = new QorNavigation2DViewer(makeDialog("dialog"), "plane", QorDlgDefaultStyle,
                                                 200.0F, 100.0F);
        viewer->SetViewBox(0, 200, -100, 0);
        return viewer;
    }

    static void addTriangle(Qor3DViewer& viewer) {
        QorMesh::Data data;
        data.positions = {-1, -1, 0, 1, -1, 0, 1, 1, 2};
        data.indices = {0, 1, 2};
        const auto material = QorMake<QorGraphicMaterial>();
        material->baseColor[0] = 0.2F;
        const auto bag = QorMake<Qor3DBagRep>();
        bag->AddChild(QorMake<Qor3DMeshRep>(QorMake<QorMesh>(data).Get(), material.Get()));
        bag->SetMatrix(QorMathTransformation::Translation({5, 6, 7}));
        viewer.AddRep(bag);
    }

    static Json mouse(const char* action, double x, double y) {
        return {{"viewer", "main"}, {"action", action}, {"x", x}, {"y", y}};
    }

    QorFrmLayout* layout = nullptr;
    QorFrmEditor* editor = nullptr;
};

/// The names of the viewpoint's events since the last take.
Names viewpointEvents(PortClient& client) {
    return eventsOf(client.call("events.take"), "Qor3DViewpoint");
}

const Names wholeChange{"VIEWPOINT_ANIMATION_STARTED", "VIEWPOINT_MODIFIED"};

TEST_F(ViewerMethods, ListTheViewersOfWindowsAndDialogs) {
    openWindow("first");
    openWindow("second");
    makePlane();
    play([](PortClient& client) {
        const Json expected = Json::parse(R"([
            {"path": "first/space", "kind": "3d", "width": 400, "height": 300},
            {"path": "main", "kind": "3d", "width": 400, "height": 300},
            {"path": "dialog/plane", "kind": "2d", "width": 200, "height": 100}])");
        const Json list = client.call("viewer.list");
        EXPECT_EQ(list, expected);
        for (const Json& one : list)
            EXPECT_EQ(client.call("viewer.get", {{"viewer", one.at("path")}}).at("path"),
                      one.at("path"));
    });
}

TEST_F(ViewerMethods, NameWhatIsMissing) {
    makePlane();
    play([](PortClient& client) {
        EXPECT_EQ(client.callForError("viewer.get", {{"viewer", "main"}}), -32001);
        EXPECT_EQ(client.callForError("viewer.get", {{"viewer", "dialog/none"}}), -32001);
        EXPECT_EQ(client.callForError("viewer.get", {{"viewer", "dialog"}}), -32005);
    });
}

TEST_F(ViewerMethods, TellAllOfAViewerOfSpace) {
    QorNavigation3DViewer* viewer = openWindow("window");
    addTriangle(*viewer);
    viewer->SetGlobalAmbientLight(0.1F, 0.2F, 0.3F);
    auto light = QorMake<Qor3DLightSourceRep>(QorLightType::Directional, QorLightMode::Model,
                                              QorMathPoint{}, QorMathVector{0, 0, -1}, 180.0F);
    const float colors[3][4] = {{0, 0, 0, 1}, {0.5F, 0.6F, 0.7F, 1}, {1, 1, 1, 1}};
    light->SetColorParameters(colors[0], colors[1], colors[2]);
    viewer->SetLightSourceReps(nullptr, light.Detach());
    play([](PortClient& client) {
        const Json got = client.call("viewer.get", {{"viewer", "main"}});
        Json expected = Json::parse(R"({
            "path": "main", "kind": "3d", "width": 400, "height": 300, "manipulators": [],
            "eye": [0, 0, 10], "target": [0, 0, 0], "up": [0, 1, 0], "fieldOfView": 30,
            "projection": "perspective", "animated": false, "viewport": [0, 0, 400, 300],
            "vertical": [0, 1, 0], "box": {"low": [4, 5, 7], "high": [6, 7, 9]}, "texture": null,
            "ambient": [0.1, 0.2, 0.3], "background": null, "ground": {"on": false},
            "lights": [{"type": "directional", "direction": [0, 0, -1], "ambient": [0, 0, 0],
                        "diffuse": [0.5, 0.6, 0.7], "specular": [1, 1, 1]}],
            "viewpoints": [{"kind": "3d", "priority": 0, "main": true, "reps": [
                {"kind": "bag", "position": [5, 6, 7],
                 "reps": [{"kind": "mesh", "color": [0.2, 0.8, 0.8]}]}]},
                {"kind": "2d", "priority": -1, "main": false, "reps": []}]})");
        expected["mmInSupportUnit"] = got.at("mmInSupportUnit");
        EXPECT_NEAR(got.at("mmInSupportUnit").get<double>(), 96 / 25.4, 1.0e-6);
        EXPECT_EQ(got, expected);
    });
}

TEST_F(ViewerMethods, TellTheGroundTheBackgroundAndTheTexture) {
    QorNavigation3DViewer* viewer = openWindow("window");
    addTriangle(*viewer);
    const auto texture = QorMake<QorGraphicMaterial>();
    texture->name = "studio";
    viewer->SetTexture(texture);
    QorQuery<QorIRdgBackground>(viewer)->SetBackground("sky.jpg", true);
    const auto ground = QorQuery<QorIRdgGround>(viewer);
    ground->SetGroundOn(1);
    ground->SetTransparency(0.25F);
    play([](PortClient& client) {
        const Json got = client.call("viewer.get", {{"viewer", "main"}});
        EXPECT_EQ(got.at("background"), Json({{"image", "sky.jpg"}, {"stretch", true}}));
        EXPECT_EQ(got.at("texture"), "studio");
        EXPECT_EQ(got["ground"].at("on"), true);
        EXPECT_EQ(got["ground"].at("vertical"), Json({0, 1, 0}));
        EXPECT_EQ(got["ground"].at("transparency"), 0.25);
        EXPECT_EQ(got["ground"].at("reflectivity"), 0.0);
        EXPECT_EQ(got["ground"].at("size"), 3.0);
        EXPECT_EQ(got["ground"].at("origin"), Json({5.0, 5.0, 8.0}));
        ASSERT_EQ(got.at("manipulators").size(), 1U) << "the ground can be dragged";
    });
}

TEST_F(ViewerMethods, TellAllOfAViewerOfThePlane) {
    QorNavigation2DViewer* viewer = makePlane();
    viewer->SetBackgroundColor({255, 0, 51, 255});
    const auto bag = QorMake<Qor2DBagRep>();
    bag->SetTranslation({5, -5});
    const auto quads = QorMake<Qor2DCustomRep>();
    quads->AddPrimitive(Qor2DQuadStripGP{{{{{0, 0}, {1, 0}, {1, 1}, {0, 1}}}}});
    quads->SetAttributes({{0, 0, 255, 255}, 1.0F, 5.0F, false});
    const auto text = QorMake<Qor2DCustomRep>();
    text->AddPrimitive(Qor2DAnnotationTextGP{{47, -97}, "Sky", 7, 15.0});
    const auto box = QorMake<Qor2DCustomRep>();
    box->AddPrimitive(Qor2DRectangleGP{{0, -94}, {93, -1}});
    const auto hidden = QorMake<Qor2DLineRep>(Points{{0, 0}, {9, 9}});
    hidden->SetShown(false);
    for (Qor2DRep* rep :
         std::initializer_list<Qor2DRep*>{quads.Get(), text.Get(), box.Get(), hidden.Get()})
        bag->AddChild(rep);
    viewer->AddRep(bag);
    viewer->AddRep(QorMake<Qor2DLineRep>(Points{{0, 1}, {2, 3}}));
    viewer->AddRep(QorMake<Qor2DPointRep>(QorMathPoint2D{4, 5}));
    auto* handle = new Qor2DManipulator(viewer, "handle", viewer, viewer->GetMain2DViewpoint());
    handle->SetOrigin({50, -20});
    play([](PortClient& client) {
        Json got = client.call("viewer.get", {{"viewer", "dialog/plane"}});
        EXPECT_EQ(got.at("backgroundColor"), Json({1.0, 0.0, 0.2}));
        const double window[] = {0, 200, -100, 0};
        for (std::size_t i = 0; i < 4; ++i)
            EXPECT_NEAR(got["window"].at(i).get<double>(), window[i], 1.0e-4);
        ASSERT_EQ(got.at("manipulators").size(), 1U);
        EXPECT_EQ(got["manipulators"][0].at("name"), "handle");
        EXPECT_NEAR(got["manipulators"][0].at("x").get<double>(), 50, 1.0e-4);
        EXPECT_NEAR(got["manipulators"][0].at("y").get<double>(), 20, 1.0e-4);
        const Json reps = Json::parse(R"([
            {"kind": "bag", "position": [5, -5], "reps": [
                {"kind": "quads", "points": [[0,0],[1,0],[1,1],[0,1]], "color": [0, 0, 1]},
                {"kind": "text", "position": [47, -97], "text": "Sky", "anchor": 7, "height": 15,
                 "color": [0, 0, 0]},
                {"kind": "rectangle", "position": [0, -94], "size": [93, 93],
                 "color": [0, 0, 0]}]},
            {"kind": "line", "points": [[0,1],[2,3]], "color": [0, 0, 0]},
            {"kind": "point", "position": [4, 5], "color": [0, 0, 0]}])");
        ASSERT_EQ(got.at("viewpoints").size(), 1U);
        EXPECT_EQ(got["viewpoints"][0].at("reps"), reps);
        EXPECT_EQ(got["viewpoints"][0].at("kind"), "2d");
        EXPECT_EQ(got["viewpoints"][0].at("main"), true);
    });
}

TEST_F(ViewerMethods, ResizeAViewer) {
    makePlane();
    play([](PortClient& client) {
        client.call("viewer.resize", {{"viewer", "dialog/plane"}, {"width", 321}, {"height", 123}});
        const Json got = client.call("viewer.get", {{"viewer", "dialog/plane"}});
        EXPECT_EQ(got.at("width"), 321);
        EXPECT_EQ(got.at("height"), 123);
        EXPECT_EQ(client.callForError("viewer.resize",
                                      {{"viewer", "dialog/plane"}, {"width", 0}, {"height", 1}}),
                  -32602);
    });
}

TEST_F(ViewerMethods, MoveTheViewpointAtOnceOrInAnAnimation) {
    openWindow("window");
    play([](PortClient& client) {
        const auto move = [&](Json params) {
            params["viewer"] = "main";
            client.call("viewer.viewpoint", params);
            return viewpointEvents(client);
        };
        viewpointEvents(client);
        EXPECT_EQ(move({{"eye", {0, 0, 20}}, {"projection", "parallel"}}),
                  Names{"VIEWPOINT_MODIFIED"});
        EXPECT_EQ(move({{"eye", {0, 0, 30}}, {"animated", true}}),
                  Names{"VIEWPOINT_ANIMATION_STARTED"});
        EXPECT_EQ(client.call("viewer.get", {{"viewer", "main"}}).at("animated"), true);
        EXPECT_EQ(move({{"fieldOfView", 45}, {"animated", true}}), Names{});
        EXPECT_EQ(move({{"animated", false}}), Names{"VIEWPOINT_MODIFIED"});
        const Json got = client.call("viewer.get", {{"viewer", "main"}});
        EXPECT_EQ(got.at("eye"), Json({0, 0, 30}));
        EXPECT_EQ(got.at("fieldOfView"), 45);
        EXPECT_EQ(got.at("projection"), "parallel");
        EXPECT_EQ(got.at("animated"), false);
        for (const Json& wrong : {Json{{"eye", {0, 0}}}, Json{{"eye", {0, 0, 0}}},
                                  Json{{"up", {0, 0, 0}}}, Json{{"projection", "round"}}}) {
            Json params = wrong;
            params["viewer"] = "main";
            EXPECT_EQ(client.callForError("viewer.viewpoint", params), -32602) << wrong;
        }
    });
}

TEST_F(ViewerMethods, MoveTheWindowOfAPlaneAsPanningDoes) {
    makePlane();
    openWindow("window");
    play([](PortClient& client) {
        client.call("events.take");
        client.call("viewer.window", {{"viewer", "dialog/plane"}, {"window", {0, 200, -150, -50}}});
        EXPECT_EQ(eventsOf(client.call("events.take"), "Qor2DViewpoint"),
                  Names{"VIEWPOINT_MODIFIED"});
        EXPECT_NEAR(
            client.call("viewer.get", {{"viewer", "dialog/plane"}})["window"][3].get<double>(), -50,
            1.0e-4);
        const Json empty{{"viewer", "dialog/plane"}, {"window", {0, 0, -1, 0}}};
        EXPECT_EQ(client.callForError("viewer.window", empty), -32602);
        const Json space{{"viewer", "main"}, {"window", {0, 1, 0, 1}}};
        EXPECT_EQ(client.callForError("viewer.window", space), -32005);
    });
}

TEST_F(ViewerMethods, TheMouseOrbitsZoomsAndFits) {
    addTriangle(*openWindow("window"));
    play([](PortClient& client) {
        viewpointEvents(client);
        Json press = mouse("press", 200, 20);
        press["button"] = "middle";
        client.call("viewer.mouse", press);
        client.call("viewer.mouse", mouse("move", 50, 20));
        EXPECT_EQ(viewpointEvents(client), Names{"VIEWPOINT_ANIMATION_STARTED"});
        client.call("viewer.mouse", mouse("release", 50, 20)); // of the button that is held
        EXPECT_EQ(viewpointEvents(client), Names{"VIEWPOINT_MODIFIED"});
        EXPECT_NEAR(client.call("viewer.get", {{"viewer", "main"}})["eye"][0].get<double>(), 10,
                    1.0e-6);
        client.call("viewer.mouse", mouse("wheel", 10, 10));
        EXPECT_EQ(viewpointEvents(client), wholeChange);
        client.call("viewer.mouse", mouse("doubleClick", 10, 10));
        client.call("viewer.mouse", mouse("release", 10, 10));
        client.call("app.run", {{"ms", 400}});
        EXPECT_EQ(viewpointEvents(client), wholeChange);
        EXPECT_EQ(client.call("viewer.get", {{"viewer", "main"}}).at("target"), Json({5, 6, 8}));
    });
}

TEST_F(ViewerMethods, TheMouseDoesOnlyWhatAPersonCould) {
    makePlane();
    openWindow("window")->SetSensitivity(QorDlgDISABLE);
    play([](PortClient& client) {
        EXPECT_EQ(client.callForError("viewer.mouse", mouse("press", 1, 1)), -32003);
        Json params = mouse("press", 200, 50);
        params["viewer"] = "dialog/plane";
        EXPECT_EQ(client.callForError("viewer.mouse", params), -32003) << "beside the viewer";
        params["x"] = 199;
        EXPECT_EQ(client.callForError("viewer.mouse", params), 0);
        params["action"] = "move";
        params["x"] = 250;
        EXPECT_EQ(client.callForError("viewer.mouse", params), 0) << "dragged out of it";
        params["action"] = "push";
        EXPECT_EQ(client.callForError("viewer.mouse", params), -32602);
    });
}

TEST_F(ViewerMethods, ProjectModelPointsToPixels) {
    makePlane();
    openWindow("window");
    play([](PortClient& client) {
        const Json middle =
            client.call("viewer.project", {{"viewer", "main"}, {"point", {0, 0, 0}}});
        EXPECT_NEAR(middle.at("x").get<double>(), 200, 1.0e-9);
        EXPECT_NEAR(middle.at("y").get<double>(), 150, 1.0e-9);
        const Json flat =
            client.call("viewer.project", {{"viewer", "dialog/plane"}, {"point", {30, -40}}});
        EXPECT_NEAR(flat.at("x").get<double>(), 30, 1.0e-4);
        EXPECT_NEAR(flat.at("y").get<double>(), 40, 1.0e-4);
        EXPECT_EQ(client.callForError("viewer.project", {{"viewer", "main"}, {"point", {0, 0}}}),
                  -32602);
        EXPECT_EQ(
            client.callForError("viewer.project", {{"viewer", "main"}, {"point", {0, 0, 11}}}),
            -32006);
    });
}

TEST_F(ViewerMethods, SplitAViewerAndGiveItBack) {
    addTriangle(*openWindow("window"));
    makePlane();
    play([](PortClient& client) {
        const auto split = [&](const char* viewer, int count) {
            return client.callForError("viewer.split", {{"viewer", viewer}, {"count", count}});
        };
        const auto get = [&] {
            return client.call("viewer.get", {{"viewer", "main"}});
        };
        const Json before = get();
        EXPECT_EQ(split("main", 4), 0);
        const Json got = get();
        EXPECT_EQ(got.at("viewport"), Json({0, 150, 200, 150}));
        EXPECT_EQ(got.at("eye"), before.at("eye"));
        ASSERT_EQ(got.at("viewpoints").size(), 5U); // and the background's
        const Json viewports = Json::parse("[[200,150,200,150],[0,0,200,150],[200,0,200,150]]");
        for (std::size_t i = 1; i < 4; ++i) {
            const Json& one = got["viewpoints"][i];
            EXPECT_EQ(one.at("kind"), "3d");
            EXPECT_EQ(one.at("main"), false);
            EXPECT_EQ(one.at("viewport"), viewports.at(i - 1));
            EXPECT_EQ(one.at("reps"), got["viewpoints"][0].at("reps"));
            EXPECT_EQ(one.at("projection"), "parallel");
        }
        const Json middle =
            client.call("viewer.project", {{"viewer", "main"}, {"point", {0, 0, 0}}});
        EXPECT_EQ(middle, Json({{"x", 100.0}, {"y", 75.0}}));
        EXPECT_EQ(split("main", 1), 0);
        EXPECT_EQ(get(), before);
        EXPECT_EQ(split("main", 0), -32602);
        EXPECT_EQ(split("main", 5), -32602);
        EXPECT_EQ(split("dialog/plane", 2), -32005);
    });
}

/// Takes a picture of every viewer, and notes what is written where.
class OneHost
    : public QorViewerPictureService
    , public QorPictureService {
public:
    OneHost() {
        QorViewerPictureService::Install(this);
        QorPictureService::Install(this);
    }

    ~OneHost() override {
        QorViewerPictureService::Install(nullptr);
        QorPictureService::Install(nullptr);
    }

    OneHost(const OneHost&) = delete;
    OneHost& operator=(const OneHost&) = delete;

    QorPixelImage* Take(QorViewer& ioViewer, QorUnicodeString& oError) override {
        if (ioViewer.GetMain3DViewpoint() == nullptr) {
            oError = "it is flat";
            return nullptr;
        }
        return new QorPixelImage(
            1, 1, 3, std::make_shared<QorPixelImage::Pixels>(QorPixelImage::Pixels{1, 2, 3}));
    }

    QorPixelImage* Read(const QorUnicodeString& /*iPath*/, QorUnicodeString& /*oError*/) override {
        return nullptr;
    }

    int Write(const QorPixelImage& iImage,
              const QorString& iFormat,
              const QorUnicodeString& iPath,
              QorUnicodeString& oError) override {
        if (iPath.Str() == "/full/a.png") {
            oError = "/full/a.png: the disk is full";
            return 1;
        }
        written.push_back(std::string(iFormat.Str()) + " " + iPath.Str() + " " +
                          std::to_string(iImage.GetWidth()));
        return 0;
    }

    QorPixelImage*
    Resize(const QorPixelImage& /*iImage*/, int /*iWidth*/, int /*iHeight*/) override {
        return nullptr;
    }

    Names written;
};

TEST_F(ViewerMethods, WriteAPictureOfAViewer) {
    openWindow("window");
    makePlane();
    OneHost host;
    play([](PortClient& client) {
        const auto take = [&](const char* viewer, const char* file) {
            return client.callForError("viewer.picture", {{"viewer", viewer}, {"path", file}});
        };
        EXPECT_EQ(take("main", "/tmp/a picture.png"), 0);
        EXPECT_EQ(take("dialog/plane", "/tmp/b.png"), -32006);
        EXPECT_EQ(take("main", "/full/a.png"), -32006);
        EXPECT_EQ(take("main", ""), -32602);
        EXPECT_EQ(take("none", "/tmp/c.png"), -32001);
    });
    EXPECT_EQ(host.written, Names{"PNG /tmp/a picture.png 1"});
}

TEST_F(ViewerMethods, ThereIsNoPictureWithoutAHostThatDraws) {
    openWindow("window");
    play([](PortClient& client) {
        EXPECT_EQ(
            client.callForError("viewer.picture", {{"viewer", "main"}, {"path", "/tmp/a.png"}}),
            -32006);
    });
}

TEST_F(ViewerMethods, ManipulatorsAreTurnedAndEdited) {
    QorNavigation3DViewer* viewer = openWindow("window");
    const auto line = QorMake<Qor3DLineRep>(std::vector<QorMathPoint>{{0, 0, 0}, {1, 1, 0}});
    viewer->AddRep(line);
    auto* turning = new Qor3DManipulator(viewer, "arrow", viewer, line.Get(), QorMathAxis());
    new Qor2DManipulator(viewer, "flat", viewer, QorMake<Qor2DViewpoint>());
    auto* hidden = new Qor3DManipulator(viewer, "hidden", viewer, line.Get(), QorMathAxis());
    hidden->SetPickable(false);
    play([](PortClient& client) {
        const auto params = [](const char* name) {
            return Json{{"viewer", "main"}, {"name", name}, {"third", {0, 3, 0}}};
        };
        client.call("events.take");
        client.call("manipulator.set", params("arrow"));
        client.call("manipulator.edit", {{"viewer", "main"}, {"name", "arrow"}});
        EXPECT_EQ(
            eventsOf(client.call("events.take"), "Qor3DManipulator"),
            Names({"QorManipulatorManipulateNotification", "QorManipulatorEditNotification"}));
        EXPECT_EQ(client.callForError("manipulator.set", params("none")), -32001);
        EXPECT_EQ(client.callForError("manipulator.set", params("flat")), -32005);
        EXPECT_EQ(client.callForError("manipulator.set", params("hidden")), -32003);
        Json zero = params("arrow");
        zero["third"] = {0, 0, 0};
        EXPECT_EQ(client.callForError("manipulator.set", zero), -32602);
        const Json listed = client.call("viewer.get", {{"viewer", "main"}}).at("manipulators");
        ASSERT_EQ(listed.size(), 2U);
        EXPECT_EQ(listed[0].at("name"), "arrow");
        EXPECT_NEAR(listed[0].at("x").get<double>(), 200, 1.0e-9);
    });
    EXPECT_NEAR(turning->GetPosition().GetThirdDirection().y, 1.0, 1.0e-12);
}

} // namespace

} // namespace qor::automation
