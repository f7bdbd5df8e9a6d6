#pragma once

#include "platform/component/QorCallbackManager.h"
#include "platform/vis/Qor2DReps.h"
#include "platform/vis/Qor3DReps.h"

/// A look at representations. Its own notifier publishes VIEWPOINT_MODIFIED and
/// VIEWPOINT_ANIMATION_STARTED.
class QorViewpoint : public QorBaseUnknown {
    QorDeclareClass(QorViewpoint)

    static const QorEventName VIEWPOINT_MODIFIED;
    static const QorEventName VIEWPOINT_ANIMATION_STARTED;

    QorViewpoint() = default;

    /// Publisher of the viewpoint's events.
    [[nodiscard]] QorCallbackManager* GetCallbackManager() { return &callbacks; }

    /// Added viewpoints of higher priority are drawn later, over the others.
    void SetPriority(int iPriority) { priority = iPriority; }

    [[nodiscard]] int GetPriority() const { return priority; }

    /// The part of the viewer that it covers, device pixels from the lower left; zeros mean the
    /// whole viewer.
    void GetGLViewport(float& oX, float& oY, float& oWidth, float& oHeight) const;
    void SetGLViewport(float iX, float iY, float iWidth, float iHeight);

    /// Whether it is on the move: a person's gesture or an animated change is going on.
    [[nodiscard]] bool IsAnimated() const { return animated; }

    /// Begins or ends an animation. Beginning dispatches VIEWPOINT_ANIMATION_STARTED, ending
    /// VIEWPOINT_MODIFIED.
    void SetAnimated(bool iAnimated);
    /// Dispatches VIEWPOINT_MODIFIED; for whoever has changed the look.
    void Modified();

protected:
    ~QorViewpoint() override = default;

private:
    QorCallbackManager callbacks;
    int priority = 0;
    bool animated = false;
    float viewport[4] = {0.0F, 0.0F, 0.0F, 0.0F};
};

/// A look at the plane: an origin in the middle of the viewer and a scale. With scale 1 /
/// GetMMInSupportUnit one model unit is one pixel. y points upwards.
class Qor2DViewpoint : public QorViewpoint {
    QorDeclareClass(Qor2DViewpoint)

    Qor2DViewpoint() = default;
    Qor2DViewpoint(const QorMathPoint2D& iOrigin, double iScale);

    void SetRatioWH(float iRatio) { ratio = iRatio; }

    [[nodiscard]] float GetRatioWH() const { return ratio; }

    [[nodiscard]] const QorMathPoint2D& GetOrigin() const { return origin; }

    [[nodiscard]] double GetScale() const { return scale; }

    void SetView(const QorMathPoint2D& iOrigin, double iScale);

    void AddRep(Qor2DRep* iRep);
    void RemoveRep(Qor2DRep* iRep);

    [[nodiscard]] const Qor2DBagRep& GetRoot() const { return *root; }

    /// Pixels are device pixels from the top left of the viewer, which is \p iWidth × \p iHeight of
    /// them.
    [[nodiscard]] QorMathPoint2D PixelToModel(const QorMathPoint2D& iPixel,
                                              float iWidth,
                                              float iHeight,
                                              float iMMInSupportUnit) const;
    [[nodiscard]] QorMathPoint2D ModelToPixel(const QorMathPoint2D& iPoint,
                                              float iWidth,
                                              float iHeight,
                                              float iMMInSupportUnit) const;
    /// The visible part of the plane.
    void GetWindow(float iWidth,
                   float iHeight,
                   float iMMInSupportUnit,
                   double& oLeft,
                   double& oRight,
                   double& oBottom,
                   double& oTop) const;
    /// Makes what lies between \p iLeft and \p iRight visible, with \p iTop at the upper edge; the
    /// lower edge follows from the viewer's proportions. An empty width is ignored. Does not
    /// dispatch.
    void SetWindow(float iWidth,
                   float iHeight,
                   float iMMInSupportUnit,
                   double iLeft,
                   double iRight,
                   double iTop);

protected:
    ~Qor2DViewpoint() override = default;

private:
    QorMathPoint2D origin;
    double scale = 1.0;
    float ratio = 1.0F;
    QorVar<Qor2DBagRep> root = QorMake<Qor2DBagRep>();
};

/// A look into space.
class Qor3DViewpoint : public QorViewpoint {
    QorDeclareClass(Qor3DViewpoint)

    enum class Projection { Perspective, Parallel };

    Qor3DViewpoint() = default;

    /// A look at what another viewpoint's root holds.
    explicit Qor3DViewpoint(Qor3DBagRep* iRoot) : root(iRoot) {}

    [[nodiscard]] const QorMathPoint& GetEye() const { return eye; }

    /// The point looked at.
    [[nodiscard]] const QorMathPoint& GetTarget() const { return target; }

    [[nodiscard]] const QorMathVector& GetUp() const { return up; }

    /// From eye to target, of length 1.
    [[nodiscard]] QorMathVector GetSight() const;

    /// Full vertical angle in degrees. Of a parallel projection: what a perspective one would show
    /// at the target.
    [[nodiscard]] double GetFieldOfView() const { return fieldOfView; }

    [[nodiscard]] Projection GetProjection() const { return projection; }

    /// Height of the visible part at the target, in millimetres.
    [[nodiscard]] double GetViewHeight() const;

    /// Sets the look without dispatching. What makes no view (eye at target, up along the sight,
    /// angle outside 1..170, numbers that are none) is brought to the nearest that does.
    void SetView(const QorMathPoint& iEye, const QorMathPoint& iTarget, const QorMathVector& iUp);
    void SetFieldOfView(double iDegrees);

    void SetProjection(Projection iProjection) { projection = iProjection; }

    void AddRep(Qor3DRep* iRep);
    void RemoveRep(Qor3DRep* iRep);

    /// What the viewpoint shows besides lights and ground: the product.
    [[nodiscard]] Qor3DBagRep& GetRoot() const { return *root; }

    /// The eye's axes: right, up and back, with the eye as origin.
    [[nodiscard]] QorMathTransformation GetEyeFrame() const;

    /// The part of a viewer of that size that it covers, all of it unless SetGLViewport said
    /// otherwise; device pixels, the upper left corner counted from the viewer's.
    struct Part {
        double left;
        double top;
        double width;
        double height;

        [[nodiscard]] bool Holds(const QorMathPoint2D& iPixel) const {
            return iPixel.x >= left && iPixel.y >= top && iPixel.x < left + width &&
                   iPixel.y < top + height;
        }

        /// Width divided by height; 1 for an empty part.
        [[nodiscard]] double Ratio() const {
            return width > 0.0 && height > 0.0 ? width / height : 1.0;
        }
    };

    [[nodiscard]] Part GetPart(float iWidth, float iHeight) const;

    /// Two points of model space on the eye ray through a device pixel of a viewer of that size: on
    /// the near side and at the depth of the target. Pixels are the viewer's, here and below,
    /// whatever part of it the viewpoint covers.
    void ComputeModelFromDeviceEvent(const QorMathPoint2D& iPixel,
                                     float iWidth,
                                     float iHeight,
                                     QorMathPoint& oNear,
                                     QorMathPoint& oFar) const;
    [[nodiscard]] QorMathRay
    GetEyeRay(const QorMathPoint2D& iPixel, float iWidth, float iHeight) const;
    /// The device pixel of a point; false when it lies behind the eye.
    bool
    Project(const QorMathPoint& iPoint, float iWidth, float iHeight, QorMathPoint2D& oPixel) const;

protected:
    ~Qor3DViewpoint() override = default;

private:
    QorMathPoint eye{300.0, -300.0, 250.0};
    QorMathPoint target;
    QorMathVector up{0.0, 0.0, 1.0};
    double fieldOfView = 30.0;
    Projection projection = Projection::Perspective;
    QorVar<Qor3DBagRep> root = QorMake<Qor3DBagRep>();
};

QorDeclareHandle(Qor2DViewpoint);
QorDeclareHandle(Qor3DViewpoint);
