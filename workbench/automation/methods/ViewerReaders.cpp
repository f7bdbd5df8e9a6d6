#include "workbench/automation/methods/ViewerReaders.h"

#include "platform/engine/QorIRdgViewerParts.h"
#include "platform/vis/QorViewer.h"
#include "workbench/automation/methods/RepReaders.h"

#include <array>

namespace qor::automation {

namespace {

struct Size {
    float width = 0.0F;
    float height = 0.0F;
};

Size sizeOf(const QorViewer& viewer) {
    Size size;
    viewer.GetGraphicSize(size.width, size.height);
    return size;
}

/// The pixel of a manipulator's origin; false when it lies behind the eye.
bool findOrigin(const QorViewer& viewer, const QorManipulator& manipulator, QorMathPoint2D& pixel) {
    const Size size = sizeOf(viewer);
    if (const auto* flat = dynamic_cast<const Qor2DManipulator*>(&manipulator)) {
        if (flat->GetViewpoint() == nullptr)
            return false;
        pixel = flat->GetViewpoint()->ModelToPixel(flat->GetOrigin(), size.width, size.height,
                                                   viewer.GetSupport()->GetMMInSupportUnit());
        return true;
    }
    const auto* solid = dynamic_cast<const Qor3DManipulator*>(&manipulator);
    const Qor3DViewpoint* viewpoint = viewer.GetMain3DViewpoint();
    return solid != nullptr && viewpoint != nullptr &&
           viewpoint->Project(solid->GetPosition().GetOrigin(), size.width, size.height, pixel);
}

Json readManipulators(const QorViewer& viewer) {
    Json list = Json::array();
    QorMathPoint2D pixel;
    for (const QorManipulator* one : viewer.GetManipulators())
        if (one->IsPickable() && findOrigin(viewer, *one, pixel))
            list.push_back({{"name", one->GetName().Str()}, {"x", pixel.x}, {"y", pixel.y}});
    return list;
}

Json readViewpoint(const QorViewpoint& viewpoint, bool isMain) {
    Json json{{"priority", viewpoint.GetPriority()}, {"main", isMain}};
    if (const auto* solid = dynamic_cast<const Qor3DViewpoint*>(&viewpoint)) {
        json["kind"] = "3d";
        json["reps"] = readReps(solid->GetRoot());
    } else if (const auto* flat = dynamic_cast<const Qor2DViewpoint*>(&viewpoint)) {
        json["kind"] = "2d";
        json["reps"] = readReps(flat->GetRoot());
    }
    return json;
}

Json readViewport(const QorViewer& viewer, const QorViewpoint& viewpoint) {
    std::array<float, 4> part{};
    viewpoint.GetGLViewport(part[0], part[1], part[2], part[3]);
    if (part[2] <= 0.0F || part[3] <= 0.0F) {
        const Size size = sizeOf(viewer);
        part = {0.0F, 0.0F, size.width, size.height};
    }
    return toJson(part.data(), 4);
}

void readLook(const Qor3DViewpoint& viewpoint, Json& out) {
    const bool isParallel = viewpoint.GetProjection() == Qor3DViewpoint::Projection::Parallel;
    out["eye"] = toJson(viewpoint.GetEye());
    out["target"] = toJson(viewpoint.GetTarget());
    out["up"] = toJson(viewpoint.GetUp());
    out["fieldOfView"] = viewpoint.GetFieldOfView();
    out["projection"] = isParallel ? "parallel" : "perspective";
    out["animated"] = viewpoint.IsAnimated();
}

/// The looks that a split has added, each with what viewer.get tells of the main one at its top.
void readSplit(const Qor3DViewer& viewer, Json& list) {
    for (const QorVar<QorViewpoint>& one : viewer.Get3DViewpoints()) {
        const auto* viewpoint = dynamic_cast<const Qor3DViewpoint*>(one.Get());
        if (viewpoint == nullptr || viewpoint == viewer.GetMain3DViewpoint())
            continue;
        Json& json = list.emplace_back(readViewpoint(*viewpoint, false));
        readLook(*viewpoint, json);
        json["viewport"] = readViewport(viewer, *viewpoint);
    }
}

Json readViewpoints(const QorViewer& viewer) {
    Json list = Json::array();
    if (const Qor3DViewpoint* solid = viewer.GetMain3DViewpoint())
        list.push_back(readViewpoint(*solid, true));
    if (const Qor2DViewpoint* flat = viewer.GetMain2DViewpoint())
        list.push_back(readViewpoint(*flat, true));
    if (const auto* solid = dynamic_cast<const Qor3DViewer*>(&viewer))
        readSplit(*solid, list);
    for (const QorVar<QorViewpoint>& added : viewer.GetAddedViewpoints())
        list.push_back(readViewpoint(*added, false));
    return list;
}

Json readLight(const Qor3DLightSourceRep& light) {
    static constexpr std::array<const char*, 3> types{"directional", "point", "spot"};
    float ambient[4];
    float diffuse[4];
    float specular[4];
    light.GetColorParameters(ambient, diffuse, specular);
    return {{"type", types.at(static_cast<std::size_t>(light.GetType()))},
            {"direction", toJson(light.GetDirection())},
            {"ambient", toJson(ambient, 3)},
            {"diffuse", toJson(diffuse, 3)},
            {"specular", toJson(specular, 3)}};
}

Json readLights(const Qor3DViewer& viewer) {
    Json list = Json::array();
    Qor3DLightSourceRep* first = nullptr;
    Qor3DLightSourceRep* second = nullptr;
    viewer.GetLightSourceReps(first, second);
    for (const Qor3DLightSourceRep* light : {first, second})
        if (light != nullptr)
            list.push_back(readLight(*light));
    return list;
}

Json readBackground(Qor3DViewer& viewer) {
    const auto background = QorQuery<QorIRdgBackground>(&viewer);
    QorString image;
    bool stretch = false;
    if (!background || background->GetBackground(image, stretch) != S_OK)
        return nullptr;
    return {{"image", image.Str()}, {"stretch", stretch}};
}

Json readGround(const Qor3DViewer& viewer) {
    const QorRsc3DGroundRep* ground = viewer.GetGround();
    if (ground == nullptr)
        return {{"on", false}};
    return {{"on", true},
            {"origin", toJson(ground->GetOrigin())},
            {"vertical", toJson(ground->GetVertical())},
            {"size", ground->GetSize()},
            {"transparency", toJson(ground->GetTransparency())},
            {"reflectivity", toJson(ground->GetReflectivity())}};
}

Json readBox(const Qor3DViewpoint& viewpoint) {
    const Qor3DBoundingBox box = Qor3DBoundingBoxRender({}).Render(viewpoint.GetRoot());
    if (box.IsEmpty())
        return nullptr;
    return {{"low", toJson(box.low)}, {"high", toJson(box.high)}};
}

void readSpace(Qor3DViewer& viewer, Json& out) {
    const Qor3DViewpoint& viewpoint = *viewer.GetMain3DViewpoint();
    std::array<float, 3> ambient{};
    viewer.GetGlobalAmbientLight(ambient[0], ambient[1], ambient[2]);
    readLook(viewpoint, out);
    out["viewport"] = readViewport(viewer, viewpoint);
    out["mmInSupportUnit"] = toJson(viewer.GetSupport()->GetMMInSupportUnit());
    out["vertical"] = toJson(viewer.GetVertical());
    out["box"] = readBox(viewpoint);
    out["texture"] =
        viewer.GetTexture() != nullptr ? Json(viewer.GetTexture()->name.Str()) : Json();
    out["ambient"] = toJson(ambient.data(), 3);
    out["lights"] = readLights(viewer);
    out["ground"] = readGround(viewer);
}

void readPlane(const Qor2DViewer& viewer, Json& out) {
    double left = 0.0;
    double right = 0.0;
    double bottom = 0.0;
    double top = 0.0;
    viewer.GetViewBox(left, right, bottom, top);
    out["window"] = Json::array({left, right, bottom, top});
    constexpr float full = 255.0F;
    const QorColor& color = viewer.GetBackgroundColor();
    out["backgroundColor"] = Json::array({toJson(static_cast<float>(color.red) / full),
                                          toJson(static_cast<float>(color.green) / full),
                                          toJson(static_cast<float>(color.blue) / full)});
}

} // namespace

Json readViewerBriefly(const NamedViewer& named) {
    const Size size = sizeOf(*named.viewer);
    return {{"path", named.path},
            {"kind", named.viewer->GetMain3DViewpoint() != nullptr ? "3d" : "2d"},
            {"width", toJson(size.width)},
            {"height", toJson(size.height)}};
}

Json readViewer(const NamedViewer& named) {
    Json json = readViewerBriefly(named);
    // Asking for the background may add its viewpoint, so it comes before the viewpoints are read.
    if (auto* solid = dynamic_cast<Qor3DViewer*>(named.viewer)) {
        json["background"] = readBackground(*solid);
        readSpace(*solid, json);
    } else if (const auto* flat = dynamic_cast<const Qor2DViewer*>(named.viewer)) {
        readPlane(*flat, json);
    }
    json["manipulators"] = readManipulators(*named.viewer);
    json["viewpoints"] = readViewpoints(*named.viewer);
    return json;
}

} // namespace qor::automation
