#pragma once

class QorViewer;

namespace qor::paint {

/// What is drawn on, as viewpoints see it.
struct Surface {
    float width = 0.0F;  ///< device pixels
    float height = 0.0F; ///< device pixels
    float unit = 1.0F;   ///< device pixels a millimetre
    float ratio = 1.0F;  ///< device pixels a device-independent pixel
};

[[nodiscard]] Surface surfaceOf(const QorViewer& viewer);

} // namespace qor::paint
