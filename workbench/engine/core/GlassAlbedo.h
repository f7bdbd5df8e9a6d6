#pragma once

namespace qor::engine {

/// What a rough boundary of a dielectric sends back and lets through in single scattering, in all
/// directions together; what is missing to 1 was lost between its facets.
struct GlassAlbedo {
    float reflected = 0.0F;
    float whole = 1.0F; ///< reflected and transmitted
};

/// From tables of which each part is computed on first use; \p cosTheta and \p roughness in 0..1,
/// \p eta the index behind the surface over the one before it, 1/4..4. From any thread.
GlassAlbedo glassAlbedo(float cosTheta, float roughness, float eta);

} // namespace qor::engine
