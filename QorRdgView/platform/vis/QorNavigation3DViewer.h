#pragma once

#include "platform/vis/QorView.h"
#include "platform/vis/QorViewAnimation.h"
#include "platform/vis/QorViewer.h"

#include <optional>

/// A viewer of space in which a person moves about. What no manipulator takes of the mouse:
/// - the left or the middle button turns the product about the point under the pointer, or about
///   the target where there is none, as on a turntable; half a turn for the height of the viewer;
/// - the right button, or the middle one with shift, moves it with the pointer;
/// - the wheel brings nearer what is under the pointer;
/// - a double click on nothing shows all.
///
/// The viewpoint is animated while the mouse moves it and while a view change runs. A click without
/// movement changes nothing, and its release is not used.
class QorNavigation3DViewer : public Qor3DViewer {
    QorDeclareClass(QorNavigation3DViewer)

    QorNavigation3DViewer(QorCommand* iFather,
                          const QorString& iName,
                          QorDlgStyle iStyle,
                          float iWidth,
                          float iHeight);

    /// Whether the product tree is shown beside the product.
    [[nodiscard]] bool IsTreeDisplayed() const { return treeDisplayed; }

    /// Dispatches TREE_DISPLAY_ON or TREE_DISPLAY_OFF when it changes something.
    void SetTreeDisplay(bool iOn);

    /// The look as it is, or as it will be when the change that runs has ended.
    [[nodiscard]] QorView GetView() const;
    /// Changes the look in an animation.
    void ChangeView(const QorView& iView);
    /// All of the product, from one of the standard sides.
    void ShowStandardView(QorStandardView iView);
    /// All of the product, from where it is seen now. Nothing happens without a product.
    void FitAll();
    void ShowProjection(Qor3DViewpoint::Projection iProjection);

    /// Stops a change that runs where it is; the viewpoint stays animated. For whoever goes on with
    /// the viewpoint.
    void StopViewChange() { animation.Stop(); }

    /// The box of what is shown of the product, lights and ground left out; empty without any.
    [[nodiscard]] Qor3DBoundingBox GetProductBox() const;

protected:
    ~QorNavigation3DViewer() override;
    bool Navigate(const QorMouseEvent& iMouse) override;

private:
    enum class GestureKind { Orbit, Pan };

    /// A drag, from the press on.
    struct Gesture {
        GestureKind kind;
        QorMouseEvent press;
        bool moved = false;
        QorView start{}; ///< these two since it moved
        QorMathPoint pivot{};
    };

    bool BeginGesture(const QorMouseEvent& iMouse);
    bool MoveGesture(const QorMouseEvent& iMouse);
    bool EndGesture(const QorMouseEvent& iMouse);
    bool Zoom(const QorMouseEvent& iMouse);
    [[nodiscard]] bool IsMovement(const QorMouseEvent& iMouse) const;
    [[nodiscard]] QorView Orbited(const QorMouseEvent& iMouse) const;
    [[nodiscard]] QorView Panned(const QorMouseEvent& iMouse) const;
    /// What is under a pixel of the product; nothing where there is none.
    [[nodiscard]] std::optional<QorMathPoint> ProductUnder(const QorMathPoint2D& iPixel) const;
    /// On the eye ray through a pixel, at the target's depth.
    [[nodiscard]] QorMathPoint AtTargetDepth(const QorMathPoint2D& iPixel) const;
    void Show(const QorView& iView);

    QorViewAnimation animation;
    QorView changeTo; ///< while the animation runs
    std::optional<Gesture> gesture;
    bool treeDisplayed = false;
};
