#include "workbench/desktop/viewer/gl/SpaceLayer.h"

#include "platform/vis/QorI3DMultiViewpointViewer.h"
#include "platform/vis/QorNavigation3DViewer.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace qor::desktop {

namespace {

QRect viewportOf(const QorViewpoint& viewpoint, const QSize& size) {
    float x = 0.0F;
    float y = 0.0F;
    float width = 0.0F;
    float height = 0.0F;
    viewpoint.GetGLViewport(x, y, width, height);
    if (!(width > 0.0F) || !(height > 0.0F))
        return {QPoint(), size};
    const auto pixel = [](float value) {
        return static_cast<int>(std::lround(value));
    };
    return {pixel(x), pixel(y), pixel(width), pixel(height)};
}

void addView(std::vector<SpaceView>& views, const QorViewpoint* viewpoint, const QSize& size) {
    const auto* space = dynamic_cast<const Qor3DViewpoint*>(viewpoint);
    const bool known = std::any_of(views.begin(), views.end(),
                                   [&](const SpaceView& one) { return one.viewpoint == space; });
    if (space != nullptr && !known)
        views.push_back({space, viewportOf(*space, size)});
}

/// What the depths have to reach: the product and the ground.
Qor3DBoundingBox contentBox(const SceneBuffers& scene, const QorRsc3DGroundRep* ground) {
    Qor3DBoundingBox box = scene.box();
    if (ground != nullptr)
        box.Add(GroundPainter::boxOf(*ground));
    return box;
}

/// Whether the processor does the graphics card's work.
bool isProcessorDrawing(Gl& gl) {
    const auto* name = reinterpret_cast<const char*>(gl.glGetString(GL_RENDERER)); // NOLINT
    const std::string_view renderer = name != nullptr ? name : "";
    return renderer.find("llvmpipe") != std::string_view::npos ||
           renderer.find("softpipe") != std::string_view::npos;
}

template <class Values>
void append(std::vector<double>& description, const Values& values) {
    for (const auto value : values)
        description.push_back(static_cast<double>(value));
}

} // namespace

std::vector<SpaceView> spaceViewsOf(Qor3DViewer& viewer, const QSize& size) {
    std::vector<SpaceView> views;
    const auto several = QorQuery<QorI3DMultiViewpointViewer>(&viewer);
    if (several && several->HasSeveralViewpoints())
        for (const QorVar<QorViewpoint>& one : several->GetViewpoints())
            addView(views, one.Get(), size);
    else
        addView(views, viewer.GetMain3DViewpoint(), size);
    for (const QorVar<QorViewpoint>& one : viewer.GetAddedViewpoints())
        addView(views, one.Get(), size);
    return views;
}

bool hasAxisCross(const Qor3DViewer& viewer, const QSize& size, float pixelRatio) {
    return dynamic_cast<const QorNavigation3DViewer*>(&viewer) != nullptr &&
           AxisCross::fits(size, pixelRatio);
}

SpaceLayer::SpaceLayer(Gl& gl)
    : gl_(gl)
    , meshes_(sharedByContexts<MeshCache>())
    , textures_(sharedByContexts<TextureCache>())
    , surfaces_(gl)
    , cross_(gl, *meshes_, *textures_)
    , target_(gl)
    , software_(isProcessorDrawing(gl)) {}

SpaceLayer::Frame SpaceLayer::prepare(Qor3DViewer& viewer,
                                      const SpaceView& view,
                                      State& state,
                                      const ViewerLook& look) {
    state.scene.update(view.viewpoint->GetRoot(), *meshes_, *textures_, look.highlightColor());
    const QorRsc3DGroundRep* ground = viewer.GetGround();
    if (ground == nullptr || !ground->IsShown())
        ground = state.scene.ground();
    const Camera camera =
        cameraOf(*view.viewpoint, state.scene.origin(), contentBox(state.scene, ground),
                 view.viewport.width(), view.viewport.height());
    return {view, &state, Lighting(viewer, *view.viewpoint), camera, ground};
}

void SpaceLayer::describe(const Frame& frame, std::vector<double>& description) {
    const QRect& area = frame.view.viewport;
    append(description, std::array{area.x(), area.y(), area.width(), area.height()});
    description.push_back(static_cast<double>(frame.state->scene.builds()));
    append(description, frame.camera.viewProjection);
    append(description, frame.camera.eye);
    frame.lighting.describe(description);
    if (frame.ground == nullptr)
        return;
    const QorMathPoint& origin = frame.ground->GetOrigin();
    const QorMathVector& up = frame.ground->GetVertical();
    append(description,
           std::array{origin.x, origin.y, origin.z, up.x, up.y, up.z, frame.ground->GetSize(),
                      static_cast<double>(frame.ground->GetTransparency()),
                      static_cast<double>(frame.ground->GetReflectivity())});
}

bool SpaceLayer::update(Qor3DViewer& viewer, const QSize& size, const ViewerLook& look) {
    const std::vector<SpaceView> views = spaceViewsOf(viewer, size);
    while (states_.size() < views.size())
        states_.push_back(std::make_unique<State>(gl_));
    states_.resize(views.size());
    const bool hasCross = hasAxisCross(viewer, size, look.pixelRatio);
    const bool quick =
        software_ && std::any_of(views.begin(), views.end(), [](const SpaceView& view) {
            return view.viewpoint->IsAnimated();
        });
    std::vector<Frame> frames;
    std::vector<double> wanted{static_cast<double>(size.width()),
                               static_cast<double>(size.height()), hasCross ? 1.0 : 0.0};
    for (std::size_t i = 0; i < views.size(); ++i) {
        frames.push_back(prepare(viewer, views[i], *states_[i], look));
        describe(frames.back(), wanted);
    }
    // A good picture serves a view that has begun to move and is still where it was.
    if (wanted == drawn_ && look == drawnLook_ && (quick || !quick_))
        return false;
    quick_ = quick;
    drawn_ = wanted;
    drawnLook_ = look;
    ++draws_;
    for (const Frame& frame : frames)
        prepareGround(frame, look);
    target_.resize(size, !quick);
    target_.begin();
    gl_.glEnable(GL_DEPTH_TEST);
    gl_.glDepthFunc(GL_LEQUAL);
    for (const Frame& frame : frames)
        draw(frame, look);
    if (hasCross && !frames.empty())
        cross_.draw(surfaces_, *frames.front().view.viewpoint, frames.front().lighting, look);
    gl_.glDisable(GL_DEPTH_TEST);
    gl_.glDisable(GL_BLEND);
    gl_.glBindVertexArray(0);
    target_.end();
    return true;
}

void SpaceLayer::prepareGround(const Frame& frame, const ViewerLook& look) {
    if (frame.ground == nullptr) {
        frame.state->ground.reset();
        return;
    }
    if (!frame.state->ground)
        frame.state->ground = std::make_unique<GroundPainter>(gl_, surfaces_);
    const SceneBuffers& scene = frame.state->scene;
    frame.state->ground->prepare(*frame.ground, scene, frame.lighting, scene.builds());
    if (quick_)
        frame.state->ground->leaveOutMirror(); // as much work again as the product
    else
        frame.state->ground->prepareMirror(*frame.view.viewpoint, frame.view.viewport, scene,
                                           {frame.camera, frame.lighting, look});
}

void SpaceLayer::draw(const Frame& frame, const ViewerLook& look) {
    const QRect& area = frame.view.viewport;
    const SceneBuffers& scene = frame.state->scene;
    const SurfacePainter::View view{frame.camera, frame.lighting, look};
    gl_.glViewport(area.x(), area.y(), area.width(), area.height());
    gl_.glScissor(area.x(), area.y(), area.width(), area.height());
    gl_.glEnable(GL_SCISSOR_TEST);
    gl_.glClear(GL_DEPTH_BUFFER_BIT);
    surfaces_.drawSolid(scene, view);
    if (look.edges)
        surfaces_.drawEdges(scene, view);
    if (frame.ground != nullptr)
        frame.state->ground->draw(scene, view);
    surfaces_.drawLines(scene, view);
    surfaces_.drawClear(scene, view);
    gl_.glDisable(GL_SCISSOR_TEST);
}

} // namespace qor::desktop
