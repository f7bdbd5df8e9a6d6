#pragma once

#include "platform/vis/QorView.h"
#include "platform/vis/QorViewAnimation.h"
#include "platform/vis/QorViewer.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

/// A viewer of space in which a person moves about. What no manipulator takes of the mouse:
/// - the left or the middle button turns the product about the point under the pointer, or about
///   the target where there is none, as on a turntable; half a turn for the height of the viewer;
/// - the right button, or the middle one with shift, moves it with the pointer;
/// - the wheel brings nearer what is under the pointer;
/// - a double click on nothing shows all.
///
/// In a viewer of several viewpoints all of that happens to the one under the pointer, which is the
/// active one from then on. A viewpoint is animated while the mouse moves it and while a view
/// change runs. A click without movement changes nothing of the view, and its release is not used;
/// one of the left button is told to whoever subscribed.
class QorNavigation3DViewer : public Qor3DViewer {
    QorDeclareClass(QorNavigation3DViewer)

    /// A click of the left button on the product, or beside it; dispatched at the release, with a
    /// QorViewerClickNotification.
    static const QorEventName VIEWER_PART_CLICKED;
    static const QorEventName VIEWER_NOTHING_CLICKED;

    QorNavigation3DViewer(QorCommand* iFather,
                          const QorString& iName,
                          QorDlgStyle iStyle,
                          float iWidth,
                          float iHeight);

    /// Whether the product tree is shown beside the product.
    [[nodiscard]] bool IsTreeDisplayed() const { return treeDisplayed; }

    /// Dispatches TREE_DISPLAY_ON or TREE_DISPLAY_OFF when it changes something.
    void SetTreeDisplay(bool iOn);

    /// The viewpoint that a person used last; the main one at first.
    [[nodiscard]] Qor3DViewpoint* GetActive3DViewpoint() const;

    /// The active viewpoint's look as it is, or as it will be when the change that runs has ended.
    [[nodiscard]] QorView GetView() const;
    /// Changes the look in an animation.
    void ChangeView(const QorView& iView);
    /// All of the product, from one of the standard sides.
    void ShowStandardView(QorStandardView iView);
    /// All of the product, from where it is seen now. Nothing happens without a product.
    void FitAll();
    /// All of a box, from where it is seen now. Nothing happens for an empty one.
    void Fit(const Qor3DBoundingBox& iBox);
    void ShowProjection(Qor3DViewpoint::Projection iProjection);

    /// Stops a change of the main viewpoint where it is; the viewpoint stays animated. For whoever
    /// goes on with it.
    void StopViewChange() { StopChangeOf(GetMain3DViewpoint()); }

    void SplitViewpoints(int iCount) override;

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
        Qor3DViewpoint_var viewpoint; ///< in which it began
        bool moved = false;
        QorView start{}; ///< these two since it moved
        QorMathPoint pivot{};
    };

    /// A viewpoint's own change of look.
    struct Change {
        Change(const Qor3DViewpoint_var& iViewpoint, std::function<void()> iChanged)
            : viewpoint(iViewpoint), animation(*viewpoint, std::move(iChanged)) {}

        Qor3DViewpoint_var viewpoint;
        QorViewAnimation animation;
        QorView to; ///< while the animation runs
    };

    /// Null when the viewpoint has had none.
    [[nodiscard]] Change* FindChange(const Qor3DViewpoint* iViewpoint) const;
    void StopChangeOf(const Qor3DViewpoint* iViewpoint);
    /// The viewpoint under a pixel becomes the active one.
    Qor3DViewpoint* Activate(const QorMathPoint2D& iPixel);
    [[nodiscard]] Qor3DViewpoint::Part PartOf(const Qor3DViewpoint& iViewpoint) const;
    bool BeginGesture(const QorMouseEvent& iMouse);
    bool MoveGesture(const QorMouseEvent& iMouse);
    bool EndGesture(const QorMouseEvent& iMouse);
    void TellOfClick(const QorMouseEvent& iMouse);
    bool Zoom(const QorMouseEvent& iMouse);
    [[nodiscard]] bool IsMovement(const QorMouseEvent& iMouse) const;
    [[nodiscard]] QorView Orbited(const QorMouseEvent& iMouse) const;
    [[nodiscard]] QorView Panned(const QorMouseEvent& iMouse) const;
    [[nodiscard]] QorMathRay RayUnder(const QorMathPoint2D& iPixel) const;
    [[nodiscard]] QorPicker::Hit PickProduct(const QorMathPoint2D& iPixel) const;
    /// What is under a pixel of the product; nothing where there is none.
    [[nodiscard]] std::optional<QorMathPoint> ProductUnder(const QorMathPoint2D& iPixel) const;
    /// On the eye ray through a pixel, at the target's depth.
    [[nodiscard]] QorMathPoint AtTargetDepth(const QorMathPoint2D& iPixel) const;
    void Show(Qor3DViewpoint& ioViewpoint, const QorView& iView);

    std::vector<std::unique_ptr<Change>> changes; ///< of the viewpoints that have had one
    Qor3DViewpoint_var active;                    ///< null while it is the main one
    std::optional<Gesture> gesture;
    bool treeDisplayed = false;
};
