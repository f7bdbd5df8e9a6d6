#pragma once

class Qor3DViewer;

namespace qor::adapter {

/// The light of a viewer to which nobody has given another one: two lights that go with the eye,
/// one over the left shoulder and a weaker one from the right, and some ambient light.
void lightUp(Qor3DViewer& viewer);

} // namespace qor::adapter
