#pragma once

#include "platform/dialog/QorDialog.h"
#include "platform/vis/QorManipulator.h"
#include "platform/vis/QorPicker.h"
#include "platform/vis/QorSupport.h"
#include "platform/vis/QorViewpoint.h"
#include "platform/vis/QorViewpointTiles.h"

/// A widget that shows viewpoints: one main viewpoint and others laid over or under it. Its size is
/// the support's; without a window it keeps the size it was built with until it is resized. Picking
/// and dragging are computed here, from device pixels, so that they work without a window.
class QorViewer
    : public QorDialog
    , private QorRepWatcher {
    QorDeclareClass(QorViewer)

    static const QorEventName VIEWER_DESTROYED;      ///< while the viewer is still whole
    static const QorEventName VIEWER_LIGHT_MODIFIED; ///< somebody has settled on new lights

    QorViewer(QorCommand* iFather,
              const QorString& iName,
              QorDlgStyle iStyle,
              float iWidth,
              float iHeight);

    [[nodiscard]] const char* GetKind() const override { return "viewer"; }

    /// Null once the viewer is being destroyed.
    [[nodiscard]] QorSupport* GetSupport() const { return support; }

    /// Device pixels.
    void GetGraphicSize(float& oWidth, float& oHeight) const;

    [[nodiscard]] virtual Qor3DViewpoint* GetMain3DViewpoint() const { return nullptr; }

    [[nodiscard]] virtual Qor2DViewpoint* GetMain2DViewpoint() const { return nullptr; }

    /// The viewpoint that shows space at a pixel, the main one outside the viewer; null for a
    /// viewer of the plane.
    [[nodiscard]] virtual Qor3DViewpoint* Get3DViewpointAt(const QorMathPoint2D& /*iPixel*/) const {
        return GetMain3DViewpoint();
    }

    /// Lays a viewpoint over the main one (priority 0 and above), or under it (below 0). Holds a
    /// reference.
    void AddViewpoint(QorViewpoint* iViewpoint);
    void RemoveViewpoint(QorViewpoint* iViewpoint);

    /// The added ones, in the order in which they are drawn.
    [[nodiscard]] const std::vector<QorVar<QorViewpoint>>& GetAddedViewpoints() const {
        return added;
    }

    void SetBackgroundColor(const QorColor& iColor);

    [[nodiscard]] const QorColor& GetBackgroundColor() const { return background; }

    /// Whether a background colour has been set; a host may show one of its own until then.
    [[nodiscard]] bool HasBackgroundColor() const { return backgroundIsSet; }

    /// Asks the host to draw the viewer anew, soon.
    void Draw();

    /// Grows with every Draw; for tests and for hosts that compare.
    [[nodiscard]] unsigned long GetDrawCount() const { return drawCount; }

    /// The tool that takes the drags that begin on no manipulator of the plane, whatever can be
    /// dragged in space; null for the viewer's own navigation.
    [[nodiscard]] Qor2DIndicator* GetForegroundIndicator() const { return indicator; }

    void SetForegroundIndicator(Qor2DIndicator* iIndicator) { indicator = iIndicator; }

    [[nodiscard]] const std::vector<QorManipulator*>& GetManipulators() const {
        return manipulators;
    }

    /// The pointer over a pixel: that of the manipulator or indicator that is dragged or would be,
    /// else the arrow.
    [[nodiscard]] QorCursor GetCursor(const QorMathPoint2D& iPixel) const;

    /// A person's mouse: manipulators of the plane first, then the indicator, then manipulators in
    /// space, then navigation. Whether the event was used.
    virtual bool HandleMouse(const QorMouseEvent& iMouse);
    /// A host or person has given the viewer another size, in device pixels.
    virtual void UserResizeViewer(float iWidth, float iHeight);

protected:
    ~QorViewer() override;
    /// Dispatches VIEWER_DESTROYED, once. Destructors of derived classes call it while all of the
    /// viewer is there.
    void AnnounceEnd();

    /// From now on, or no more, a change of what \p iViewpoint shows in space has the viewer drawn
    /// anew. Null and viewpoints of the plane are ignored.
    void Watch(QorViewpoint* iViewpoint);
    void Unwatch(QorViewpoint* iViewpoint);

    /// What the viewer itself does with a mouse that nobody took.
    virtual bool Navigate(const QorMouseEvent& /*iMouse*/) { return false; }

    /// The manipulator or indicator that takes a drag from the pixel, with the path to what was
    /// hit; null for none.
    [[nodiscard]] QorManipulator* PickManipulator(const QorMathPoint2D& iPixel,
                                                  QorPickPath& oPath) const;

    /// What a pixel hits in space, from the outermost representation inwards; empty for nothing.
    [[nodiscard]] virtual QorPickPath PickSpace(const QorMathPoint2D& /*iPixel*/) const {
        return {};
    }

private:
    friend class QorManipulator;
    void RepChanged(QorRepChange iChange) override;
    void AddManipulator(QorManipulator* iManipulator);
    void RemoveManipulator(QorManipulator* iManipulator);
    /// The best of the 2D manipulators under a pixel.
    [[nodiscard]] QorManipulator* PickPlane(const QorMathPoint2D& iPixel, QorPickPath& oPath) const;

    QorVar<QorSupport> support;
    std::vector<QorVar<QorViewpoint>> added;
    std::vector<QorManipulator*> manipulators;
    QorManipulator* grabbed = nullptr;
    QorPickPath grabbedPath;
    QorMouseEvent::Button grabbedBy = QorMouseEvent::Button::None;
    Qor2DIndicator* indicator = nullptr;
    QorColor background{255, 255, 255, 255};
    bool backgroundIsSet = false;
    unsigned long drawCount = 0;
    bool endAnnounced = false;
};

/// A viewer of the plane. The wheel scrolls it up and down.
class Qor2DViewer : public QorViewer {
    QorDeclareClass(Qor2DViewer)

    Qor2DViewer(QorCommand* iFather,
                const QorString& iName,
                QorDlgStyle iStyle,
                float iWidth,
                float iHeight);

    [[nodiscard]] Qor2DViewpoint* GetMain2DViewpoint() const override { return main; }

    void AddRep(Qor2DRep* iRep);
    void RemoveRep(Qor2DRep* iRep);
    /// The visible part of the main viewpoint's plane.
    void GetViewBox(double& oLeft, double& oRight, double& oBottom, double& oTop) const;
    /// The width and the upper edge count; VIEWPOINT_MODIFIED follows.
    void SetViewBox(double iLeft, double iRight, double iBottom, double iTop);

protected:
    ~Qor2DViewer() override;
    bool Navigate(const QorMouseEvent& iMouse) override;

private:
    Qor2DViewpoint_var main = QorMake<Qor2DViewpoint>();
};

/// A viewer of space. Extensions for the rendering interfaces are registered for this class.
class Qor3DViewer : public QorViewer {
    QorDeclareClass(Qor3DViewer)

    /// Dispatched by a viewer that shows a product tree beside the product when it shows or hides
    /// it.
    static const QorEventName TREE_DISPLAY_ON;
    static const QorEventName TREE_DISPLAY_OFF;

    Qor3DViewer(QorCommand* iFather,
                const QorString& iName,
                QorDlgStyle iStyle,
                float iWidth,
                float iHeight);

    [[nodiscard]] Qor3DViewpoint* GetMain3DViewpoint() const override { return main; }

    /// The viewer answers QorI3DMultiViewpointViewer too, unless an extension does.
    QorResult QueryInterface(const QorInterfaceId& iInterface, void** oInterface) override;

    /// The main viewpoint first, then those that a split has added.
    [[nodiscard]] std::vector<QorVar<QorViewpoint>> Get3DViewpoints() const {
        return tiles.GetViewpoints();
    }

    [[nodiscard]] Qor3DViewpoint* Get3DViewpointAt(const QorMathPoint2D& iPixel) const override;

    /// Shows the product from that many sides, 1 to 4, each viewpoint in its part of the viewer; 1
    /// gives all of it back to the main one. Other numbers are brought there. New viewpoints see
    /// all of the product from the front, from above and from the right, in parallel. For whoever
    /// subscribed the main viewpoint has moved.
    virtual void SplitViewpoints(int iCount);
    void UserResizeViewer(float iWidth, float iHeight) override;

    void AddRep(Qor3DRep* iRep);
    void RemoveRep(Qor3DRep* iRep);

    /// The direction that is up for the product, of length 1.
    [[nodiscard]] const QorMathVector& GetVertical() const { return vertical; }

    void SetVertical(const QorMathVector& iVertical);

    void GetGlobalAmbientLight(float& oRed, float& oGreen, float& oBlue) const;
    void SetGlobalAmbientLight(float iRed, float iGreen, float iBlue);
    /// Up to two lights; either may be null. No references are given.
    void GetLightSourceReps(Qor3DLightSourceRep*& oLight1, Qor3DLightSourceRep*& oLight2) const;
    /// The viewer takes the caller's references over and gives back those of the lights before.
    void SetLightSourceReps(Qor3DLightSourceRep* iLight1, Qor3DLightSourceRep* iLight2);

    [[nodiscard]] QorGraphicMaterial* GetTexture() const { return texture; }

    /// Holds a reference of its own.
    void SetTexture(QorGraphicMaterial* iTexture) { texture = iTexture; }

    /// Whether the parts' own edges are drawn over their surfaces; they are at first.
    [[nodiscard]] bool AreEdgesShown() const { return edgesShown; }

    void SetEdgesShown(bool iShown);

    /// The ground shown, or null.
    [[nodiscard]] QorRsc3DGroundRep* GetGround() const { return ground; }

    void SetGround(QorRsc3DGroundRep* iGround) { ground = iGround; }

protected:
    ~Qor3DViewer() override;
    [[nodiscard]] QorPickPath PickSpace(const QorMathPoint2D& iPixel) const override;

private:
    Qor3DViewpoint_var main = QorMake<Qor3DViewpoint>();
    QorViewpointTiles tiles{*this, main};
    QorMathVector vertical{0.0, 0.0, 1.0};
    float ambient[3] = {0.2F, 0.2F, 0.2F};
    Qor3DLightSourceRep_var light1;
    Qor3DLightSourceRep_var light2;
    QorVar<QorGraphicMaterial> texture;
    QorRsc3DGroundRep_var ground;
    bool edgesShown = true;
};
