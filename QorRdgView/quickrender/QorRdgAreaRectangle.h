#pragma once

#include "platform/vis/QorViewpoint.h"

#include <array>

/// A rectangle in model units of a 2D viewpoint: two corners, in order once an operation is
/// completed.
struct QorRdgAreaCorners {
    float x1 = 0.0F;
    float y1 = 0.0F;
    float x2 = 0.0F;
    float y2 = 0.0F;

    bool operator==(const QorRdgAreaCorners&) const = default;
};

/// Which marks of handles a rectangle shows: none while it is being dragged.
enum class QorRdgAreaMarks { None, All };

/// The look of the area selector's rectangle: four edges and four corner marks in a viewpoint, the
/// viewer outside them dimmed; smaller marks in the middles of the edges and of the rectangle as
/// long as there is room for them. Drawn with a dark line below a light one, so that it shows on
/// every picture.
class QorRdgAreaRectangle {
public:
    /// \p iViewpoint outlives the rectangle's being shown.
    explicit QorRdgAreaRectangle(Qor2DViewpoint& iViewpoint);
    ~QorRdgAreaRectangle();
    QorRdgAreaRectangle(const QorRdgAreaRectangle&) = delete;
    QorRdgAreaRectangle& operator=(const QorRdgAreaRectangle&) = delete;

    /// Shows the rectangle within \p iExtents; \p iPixelRatio is the number of model units a
    /// device-independent pixel. Shown again, it moves.
    void Show(const QorRdgAreaCorners& iCorners,
              const QorRdgAreaCorners& iExtents,
              QorRdgAreaMarks iMarks,
              float iPixelRatio);
    void Hide();

    [[nodiscard]] bool IsShown() const { return shown; }

private:
    void Move(const QorRdgAreaCorners& iCorners, const QorRdgAreaCorners& iExtents);
    void Mark(const QorRdgAreaCorners& iCorners, float iPixelRatio);

    QorVar<Qor2DViewpoint> viewpoint;
    QorVar<Qor2DBagRep> shade; ///< the dimmed outside, and what is dark below lines and marks
    QorVar<Qor2DBagRep> marks; ///< the small ones
    std::array<QorVar<Qor2DLineRep>, 4> edges;
    std::array<QorVar<Qor2DPointRep>, 4> corners;
    bool shown = false;
};
