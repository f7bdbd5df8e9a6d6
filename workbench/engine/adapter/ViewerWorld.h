#pragma once

#include "platform/engine/QorIRdgWorld.h"

class Qor3DViewer;
class Qor3DViewpoint;

namespace qor::adapter {

/// What \p viewer shows, as it is now: the main viewpoint's product, the viewer's two lights, its
/// ambient light, ground, background and camera. Hidden things and lines are left out; what is
/// highlighted looks as ever. E_FAIL without a main viewpoint.
QorResult collectViewer(Qor3DViewer& viewer, QorRdgSnapshot& snapshot);

/// The same as another viewpoint of the viewer shows it, without the background's picture.
void collectViewpoint(Qor3DViewer& viewer,
                      const Qor3DViewpoint& viewpoint,
                      QorRdgSnapshot& snapshot);

/// From now on 3D viewers answer QorIRdgWorld. Programs call it once; again changes nothing.
void registerWorldAdapter();

} // namespace qor::adapter
