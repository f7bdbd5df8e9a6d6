#pragma once

#include "workbench/desktop/viewer/gl/AxisCross.h"
#include "workbench/desktop/viewer/gl/GroundPainter.h"
#include "workbench/desktop/viewer/gl/RenderTarget.h"

#include <memory>

class Qor3DViewer;

namespace qor::desktop {

/// A viewpoint of space and the device pixels that it covers, counted from the lower left.
struct SpaceView {
    const Qor3DViewpoint* viewpoint;
    QRect viewport;
};

/// The viewpoints of space that \p viewer, \p size pixels large, shows: the main one, or those of a
/// viewer with several, and those added.
[[nodiscard]] std::vector<SpaceView> spaceViewsOf(Qor3DViewer& viewer, const QSize& size);

/// What a viewer shows of space, as a picture with transparency. It is drawn again only when
/// something in it has changed, so that what lies over and under it moves at no cost of its own.
class SpaceLayer {
public:
    /// Throws std::runtime_error if the shaders cannot be built.
    explicit SpaceLayer(Gl& gl);

    /// Brings the picture up to date; whether it had to be drawn. Binds framebuffers of its own.
    bool update(Qor3DViewer& viewer, const QSize& size, const ViewerLook& look);

    /// Premultiplied, the lowest row first.
    [[nodiscard]] GLuint texture() const { return target_.texture(); }

    /// Whether the picture is a quick one, without smooth edges, and a good one should follow.
    /// While a viewpoint moves that is so where a processor has to draw it.
    /// Whether the processor does the graphics card's work.
    [[nodiscard]] bool isSoftware() const { return software_; }

    [[nodiscard]] bool isQuick() const { return quick_; }

    /// How often it was drawn; for tests and measuring.
    [[nodiscard]] std::size_t draws() const { return draws_; }

    [[nodiscard]] const MeshCache& meshes() const { return *meshes_; }

private:
    /// What is kept of a view from one time to the next.
    struct State {
        explicit State(Gl& gl) : scene(gl) {}

        SceneBuffers scene;
        std::unique_ptr<GroundPainter> ground;
    };

    /// What one drawing of a view needs.
    struct Frame {
        SpaceView view;
        State* state;
        Lighting lighting;
        Camera camera;
        const QorRsc3DGroundRep* ground;
    };

    [[nodiscard]] Frame
    prepare(Qor3DViewer& viewer, const SpaceView& view, State& state, const ViewerLook& look);
    void prepareGround(const Frame& frame, const ViewerLook& look);
    void draw(const Frame& frame, const ViewerLook& look);
    static void describe(const Frame& frame, std::vector<double>& description);

    Gl& gl_;
    std::shared_ptr<MeshCache> meshes_; ///< of all windows, as the textures
    std::shared_ptr<TextureCache> textures_;
    SurfacePainter surfaces_;
    AxisCross cross_;
    RenderTarget target_;
    std::vector<std::unique_ptr<State>> states_;
    std::vector<double> drawn_; ///< all that the picture was drawn from
    ViewerLook drawnLook_;
    bool software_;
    bool quick_ = false;
    std::size_t draws_ = 0;
};

/// Whether \p viewer has an axis cross: it lets a person move about, and has the room.
[[nodiscard]] bool hasAxisCross(const Qor3DViewer& viewer, const QSize& size, float pixelRatio);

} // namespace qor::desktop
