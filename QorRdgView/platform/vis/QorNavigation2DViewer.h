#pragma once

#include "platform/vis/QorViewer.h"

#include <optional>

/// A viewer of the plane in which a person moves about: the wheel brings nearer what is under the
/// pointer, and what no manipulator takes of a drag moves the plane with the pointer. Both dispatch
/// VIEWPOINT_MODIFIED.
class QorNavigation2DViewer : public Qor2DViewer {
    QorDeclareClass(QorNavigation2DViewer)

    /// \p iFrameStyle is the style of what a host draws around the viewer.
    QorNavigation2DViewer(QorCommand* iFather,
                          const QorString& iName,
                          QorDlgStyle iStyle,
                          float iWidth,
                          float iHeight,
                          QorDlgStyle iFrameStyle = QorDlgDefaultStyle);

    [[nodiscard]] QorDlgStyle GetFrameStyle() const { return frameStyle; }

    /// The widget that is to be placed in the father: the viewer itself.
    [[nodiscard]] QorDialog* GetMotif() { return this; }

    /// Brings all representations into view, as large as that goes. Nothing happens without any.
    void Reframe();

protected:
    ~QorNavigation2DViewer() override;
    bool Navigate(const QorMouseEvent& iMouse) override;

private:
    struct Pan {
        QorMouseEvent::Button button;
        QorMathPoint2D grip; ///< the point of the plane that was taken hold of
    };

    [[nodiscard]] QorMathPoint2D PointUnder(const QorMathPoint2D& iPixel) const;
    bool Zoom(const QorMouseEvent& iMouse);
    bool MoveTo(const QorMathPoint2D& iPixel);
    void Show(const QorMathPoint2D& iOrigin, double iScale);

    QorDlgStyle frameStyle;
    std::optional<Pan> pan;
};
