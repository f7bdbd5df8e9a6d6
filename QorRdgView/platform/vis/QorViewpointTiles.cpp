#include "platform/vis/QorViewpointTiles.h"

#include "platform/vis/QorViewer.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

/// A part of a viewer in halves of its sides, y downwards.
struct Tile {
    int left;
    int top;
    int right;
    int bottom;
};

/// By the number of viewpoints: side by side; the main one at the left of two; a quarter each.
constexpr std::array<std::array<Tile, QorViewpointTiles::most>, 3> layouts{{
    {{{0, 0, 1, 2}, {1, 0, 2, 2}}},
    {{{0, 0, 1, 2}, {1, 0, 2, 1}, {1, 1, 2, 2}}},
    {{{0, 0, 1, 1}, {1, 0, 2, 1}, {0, 1, 1, 2}, {1, 1, 2, 2}}},
}};

/// The border at 0, 1 or 2 halves of a side, on a whole pixel.
float Border(float iSide, int iHalves) {
    return iHalves == 1 ? std::floor(0.5F * iSide) : iHalves == 0 ? 0.0F : iSide;
}

} // namespace

unsigned QorViewpointTiles::AddRef() {
    return viewer.AddRef();
}

unsigned QorViewpointTiles::Release() {
    return viewer.Release();
}

QorResult QorViewpointTiles::QueryInterface(const QorInterfaceId& iInterface, void** oInterface) {
    return viewer.QueryInterface(iInterface, oInterface);
}

QorBaseUnknown* QorViewpointTiles::GetImplementation() {
    return &viewer;
}

std::vector<QorVar<QorViewpoint>> QorViewpointTiles::GetViewpoints() const {
    std::vector<QorVar<QorViewpoint>> all{main};
    all.insert(all.end(), others.begin(), others.end());
    return all;
}

std::size_t QorViewpointTiles::Split(int iCount, float iWidth, float iHeight) {
    const auto count = static_cast<std::size_t>(std::clamp(iCount, 1, most));
    const std::size_t firstNew = others.size() + 1;
    if (count == 1 && !others.empty())
        main->SetGLViewport(0.0F, 0.0F, 0.0F, 0.0F);
    others.resize(std::min(others.size(), count - 1));
    while (others.size() + 1 < count)
        others.push_back(QorMake<Qor3DViewpoint>(&main->GetRoot()));
    LayOut(iWidth, iHeight);
    return firstNew;
}

void QorViewpointTiles::LayOut(float iWidth, float iHeight) {
    if (others.empty())
        return;
    const auto& layout = layouts.at(others.size() - 1);
    for (std::size_t i = 0; i <= others.size(); ++i) {
        const Tile& tile = layout.at(i);
        const float left = Border(iWidth, tile.left);
        const float bottom = Border(iHeight, tile.bottom);
        QorViewpoint& viewpoint = i == 0 ? *main : *others[i - 1];
        viewpoint.SetGLViewport(left, iHeight - bottom, Border(iWidth, tile.right) - left,
                                bottom - Border(iHeight, tile.top));
    }
}

Qor3DViewpoint*
QorViewpointTiles::At(const QorMathPoint2D& iPixel, float iWidth, float iHeight) const {
    for (const Qor3DViewpoint_var& other : others)
        if (other->GetPart(iWidth, iHeight).Holds(iPixel))
            return other;
    return main;
}
