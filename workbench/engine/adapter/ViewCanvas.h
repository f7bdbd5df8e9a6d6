#pragma once

#include "workbench/engine/adapter/SceneRecipe.h"
#include "workbench/engine/adapter/ViewLighting.h"
#include "workbench/engine/adapter/ViewPicture.h"
#include "workbench/engine/core/Probe.h"

namespace qor::adapter {

/// Draws a viewer's space row by row: four looks a pixel, shaded, with edges where surfaces end or
/// fold. Immutable; any number of threads may draw different rows.
class ViewCanvas {
public:
    ViewCanvas(engine::Probe probe,
               const SceneRecipe& recipe,
               const QorRdgSnapshot& snapshot,
               int width,
               int height,
               const ViewStyle& style);

    /// Rows \p first .. \p first + \p count - 1 as RGBA with straight alpha.
    void draw(int first, int count, std::uint8_t* rgba) const;

private:
    /// One look: colours are linear and multiplied by alpha.
    struct Look {
        engine::Color color;
        float alpha = 0.0F;
        float distance = 0.0F; ///< of the first surface; 0 for none
        engine::Vec3 normal;
        unsigned instance = 0;
        bool highlighted = false;
    };

    Look lookAt(float x, float y) const;
    void addSurfaces(float x, float y, float ground, Look& look) const;
    void addSurface(const engine::Sight& sight, Look& look) const;
    bool addGround(const engine::Vec3& place, Look& look) const;
    static bool isEdge(const Look& one, const Look& other);
    void drawEdge(Look& look) const;
    void drawPixel(const Look* const (&looks)[4], std::uint8_t* rgba) const;

    engine::Probe probe_;
    ViewLighting lighting_;
    std::vector<bool> highlighted_; ///< by instance
    std::vector<bool> unlit_;
    engine::Ground ground_;
    float groundReach_ = 1.0F; ///< where the viewer's has faded
    int width_;
    int height_;
    ViewStyle style_;
};

} // namespace qor::adapter
