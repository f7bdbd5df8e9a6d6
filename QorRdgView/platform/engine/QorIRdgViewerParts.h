#pragma once

#include "platform/component/QorCallbackManager.h"
#include "platform/component/QorHandle.h"
#include "platform/text/QorString.h"

/// The part of a viewer that a render covers, a rectangle that a person can draw and reshape.
/// Pixels: x from the left, y from the bottom.
class QorIRdgArea : public QorInterface {
    QorDeclareInterface(QorIRdgArea)

    virtual QorResult SetAreaMode(bool iOn) = 0;
    /// 1 while the area is on, else 0.
    virtual QorResult GetAreaMode(int& oOn) = 0;
    /// E_FAIL while the area is off.
    virtual QorResult SetArea(int iX1, int iY1, int iX2, int iY2) = 0;
    /// E_FAIL while the area is off, or when all four values are 0.
    virtual QorResult GetArea(int& oX1, int& oY1, int& oX2, int& oY2) = 0;
    /// Publisher of the area's events, not owned by the caller; null once it is gone.
    virtual QorCallbackManager* GetAreaPublisher() = 0;
    /// Name of the event that says that the rectangle has changed.
    virtual QorEventName GetEndAreaEvent() = 0;
};

QorDeclareHandle(QorIRdgArea);

/// The picture behind the product.
class QorIRdgBackground : public QorInterface {
    QorDeclareInterface(QorIRdgBackground)

    /// Shows the picture of that name; stretched to the viewer, or with its own proportions.
    virtual QorResult SetBackground(const QorString& iImage, bool iStretch) = 0;
    /// E_FAIL when there is none.
    virtual QorResult GetBackground(QorString& oImage, bool& oStretch) = 0;
    virtual QorResult RemoveBackground() = 0;
};

QorDeclareHandle(QorIRdgBackground);

/// The ground under the product.
class QorIRdgGround : public QorInterface {
    QorDeclareInterface(QorIRdgGround)

    /// 1 puts a ground under the product, 0 takes it away; 1 with a ground there changes nothing.
    virtual QorResult SetGroundOn(int iOn) = 0;
    /// Shows or hides it, as SetGroundOn with 1 or 0.
    virtual QorResult SetGroundVisible(bool iVisible) = 0;
    /// 0..1
    virtual QorResult SetTransparency(float iValue) = 0;
    virtual QorResult SetReflectivity(float iValue) = 0;
};

QorDeclareHandle(QorIRdgGround);
