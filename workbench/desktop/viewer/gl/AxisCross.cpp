#include "workbench/desktop/viewer/gl/AxisCross.h"

#include "platform/vis/QorViewpoint.h"
#include "workbench/paint/Texts.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace qor::desktop {

namespace {

constexpr int side = 104;           // of the square in the corner, device-independent pixels
constexpr int smallestViewer = 220; // below, the cross would be in the way
constexpr double letterAt = 1.32;   // along an arrow of length 1
constexpr double letterHeight = 12.0;

struct Axis {
    QorMathVector direction;
    const char* letter;
    QColor color;
};

const std::array<Axis, 3>& axes() {
    static const std::array<Axis, 3> table{{{{1.0, 0.0, 0.0}, "X", QColor(0xe0484d)},
                                            {{0.0, 1.0, 0.0}, "Y", QColor(0x3fa45a)},
                                            {{0.0, 0.0, 1.0}, "Z", QColor(0x3d7fe6)}}};
    return table;
}

/// Adds a ring of vertices around z.
void addRing(QorMesh::Data& data, double radius, double z, int facets) {
    for (int i = 0; i < facets; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / facets;
        for (const double value : {radius * std::cos(angle), radius * std::sin(angle), z})
            data.positions.push_back(static_cast<float>(value));
    }
}

/// A shaft and a point along z, of length 1, without normals.
QorMesh_var makeArrow() {
    constexpr int facets = 20;

    struct Ring {
        double radius;
        double z;
    };

    constexpr Ring rings[] = {{0.0, 0.0}, {0.045, 0.0}, {0.045, 0.72}, {0.125, 0.72}, {0.0, 1.0}};
    QorMesh::Data data;
    for (const Ring& ring : rings)
        addRing(data, ring.radius, ring.z, facets);
    for (std::uint32_t ring = 0; ring + 1 < std::size(rings); ++ring)
        for (std::uint32_t i = 0; i < facets; ++i) {
            const std::uint32_t next = (i + 1) % facets;
            const std::uint32_t low = ring * facets;
            const std::uint32_t high = low + facets;
            data.indices.insert(data.indices.end(),
                                {low + i, low + next, high + next, low + i, high + next, high + i});
        }
    return QorMake<QorMesh>(std::move(data));
}

QorVar<Qor3DBagRep> makeArrows() {
    const QorMesh_var arrow = makeArrow();
    auto cross = QorMake<Qor3DBagRep>();
    for (const Axis& axis : axes()) {
        auto material = QorMake<QorGraphicMaterial>();
        const Float3 color =
            linearOf(Float3{axis.color.redF(), axis.color.greenF(), axis.color.blueF()});
        std::copy(color.begin(), color.end(), material->baseColor);
        material->unlit = true;
        auto bag = QorMake<Qor3DBagRep>();
        bag->SetMatrix(QorMathTransformation::FromZTo(axis.direction));
        bag->AddChild(QorMake<Qor3DMeshRep>(arrow.Get(), material.Get()));
        cross->AddChild(bag);
    }
    return cross;
}

/// The cross from the side of the viewpoint, in parallel projection.
Qor3DViewpoint_var viewpointOf(const Qor3DViewpoint& viewpoint) {
    constexpr double distance = 5.0;
    constexpr double height = 3.0; // of the square, in lengths of an arrow
    const QorMathTransformation frame = viewpoint.GetEyeFrame();
    Qor3DViewpoint_var view = QorMake<Qor3DViewpoint>();
    view->SetProjection(Qor3DViewpoint::Projection::Parallel);
    view->SetView(frame.axes[2] * distance, {}, frame.axes[1]);
    view->SetFieldOfView(2.0 * std::atan(0.5 * height / distance) * 180.0 / std::numbers::pi);
    return view;
}

} // namespace

AxisCross::AxisCross(Gl& gl, MeshCache& meshes, TextureCache& textures) : gl_(gl), arrows_(gl) {
    arrows_.update(*makeArrows(), meshes, textures, {});
}

bool AxisCross::fits(const QSize& size, float pixelRatio) {
    const float least = static_cast<float>(smallestViewer) * pixelRatio;
    return static_cast<float>(std::min(size.width(), size.height())) >= least;
}

void AxisCross::draw(SurfacePainter& surfaces,
                     const Qor3DViewpoint& viewpoint,
                     const Lighting& lighting,
                     const ViewerLook& look) {
    const double pixels =
        std::round(static_cast<double>(side) * static_cast<double>(look.pixelRatio));
    Qor3DBoundingBox box;
    box.Add(QorMathPoint{-1.5, -1.5, -1.5});
    box.Add(QorMathPoint{1.5, 1.5, 1.5});
    const Camera camera = cameraOf(*viewpointOf(viewpoint), arrows_.origin(), box, pixels, pixels);
    gl_.glViewport(0, 0, static_cast<GLsizei>(pixels), static_cast<GLsizei>(pixels));
    gl_.glClear(GL_DEPTH_BUFFER_BIT);
    surfaces.drawSolid(arrows_, {camera, lighting, look});
}

void AxisCross::drawLetters(QPainter& painter,
                            const Qor3DViewpoint& viewpoint,
                            const QSize& size,
                            float pixelRatio) {
    const auto pixels = std::round(static_cast<float>(side) * pixelRatio);
    const Qor3DViewpoint_var view = viewpointOf(viewpoint);
    for (const Axis& axis : axes()) {
        QorMathPoint2D at;
        view->Project(axis.direction * letterAt, pixels, pixels, at);
        constexpr int middle = 5;
        const QPointF place(at.x, at.y + size.height() - static_cast<double>(pixels));
        paint::drawText(painter, QLatin1String(axis.letter), place,
                        letterHeight * static_cast<double>(pixelRatio), middle, axis.color);
    }
}

} // namespace qor::desktop
