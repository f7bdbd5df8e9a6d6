#pragma once

#include "platform/engine/QorIRdgDisplay.h"
#include "platform/engine/QorIRdgOptions.h"
#include "platform/engine/QorIRdgWorld.h"
#include "platform/engine/QorRdgWindow.h"

#include <memory>
#include <optional>

class QorDialog;
class QorRdgCustomFrame;

/// One order to render.
struct QorRdgRequest {
    QorIRdgWorld* world = nullptr;
    QorIRdgOptions* options = nullptr;
    int width = 0; ///< of the whole output, in pixels
    int height = 0;
    std::optional<QorRdgWindow> region; ///< already clipped to the output; none for all of it
    bool interactive = true;            ///< a coarse picture at once, then refined
};

/// How far a render has come.
struct QorRdgProgress {
    int percent = 0;
    bool finished = false;
    bool failed = false; ///< finished without a whole picture; the reason is in `message`
    /// Newer than at the last poll, or null; of the whole output, transparent beside the region.
    /// While it is refined a large output may come as a smaller picture of the same proportions.
    QorPixelImage_var picture;
    QorUnicodeString message; ///< new text for the person, or empty
};

/// A render under way on other threads. Destroying it detaches it: it is told to stop and touches
/// nothing of the caller's any more. User-interface thread only; no operation waits.
class QorRdgRender {
public:
    QorRdgRender() = default;
    virtual ~QorRdgRender() = default;
    QorRdgRender(const QorRdgRender&) = delete;
    QorRdgRender& operator=(const QorRdgRender&) = delete;

    [[nodiscard]] virtual QorRdgProgress Poll() = 0;

    /// Tells it to stop: the pixels do not change any more.
    virtual void Abort() {}

    /// After the end: whether GetPicture has its answer. The whole picture of a large render may
    /// take other threads a moment.
    [[nodiscard]] virtual bool IsSettled() const { return true; }

    /// The best whole picture so far, or null. For a render that has ended.
    [[nodiscard]] virtual QorPixelImage_var GetPicture() = 0;
};

/// A render engine, as the engine manager drives it.
class QorRdgEngine {
public:
    QorRdgEngine() = default;
    virtual ~QorRdgEngine() = default;
    QorRdgEngine(const QorRdgEngine&) = delete;
    QorRdgEngine& operator=(const QorRdgEngine&) = delete;

    /// Takes a snapshot of all that \p iRequest names and starts; null, with a reason, when it
    /// refuses.
    [[nodiscard]] virtual std::unique_ptr<QorRdgRender> Start(const QorRdgRequest& iRequest,
                                                              QorUnicodeString& oReason) = 0;

    /// Pages of its own in the dialog of a shooting.
    [[nodiscard]] virtual int CountCustomFrames() const { return 0; }

    /// Builds page \p iIndex, counted from 0, as a child of \p iPage, and names it; null when it
    /// cannot.
    [[nodiscard]] virtual QorRdgCustomFrame*
    CreateCustomFrame(int /*iIndex*/, QorDialog* /*iPage*/, QorUnicodeString& /*oTitle*/) {
        return nullptr;
    }
};
