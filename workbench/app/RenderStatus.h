#pragma once

class QorApplicationFrame;

namespace qor::app {

/// Writes into the status bar how each render ended; above all why one was refused, for a display
/// may have no place for it. As long as it lives.
class RenderStatus {
public:
    /// \p frame outlives it.
    explicit RenderStatus(QorApplicationFrame& frame);
    ~RenderStatus();
    RenderStatus(const RenderStatus&) = delete;
    RenderStatus& operator=(const RenderStatus&) = delete;
};

} // namespace qor::app
