#pragma once

#include "platform/vis/QorViewer.h"
#include "quickrender/QorRdgAreaNotifications.h"
#include "quickrender/QorRdgAreaRectangle.h"

/// The rectangle with which a person chooses the part of a viewer that a quick render covers: drawn
/// by dragging, then reshaped with nine handles. It lives in a 2D viewpoint of its own over the
/// viewer; all coordinates are model coordinates of that viewpoint. While nothing is drawn it is
/// empty and waits for a rectangle.
class QorRdgAreaSelector : public QorCommand {
    QorDeclareClass(QorRdgAreaSelector)

    /// \p iPublisher dispatches the two area events and outlives the selector, as \p iViewer does.
    QorRdgAreaSelector(QorViewer* iViewer, QorCallbackManager* iPublisher);

    /// Lets a new rectangle be drawn; one that is shown goes.
    void StartDrawing();
    /// Makes the whole viewer the rectangle, and says so.
    void ResetToViewer();
    /// Pixels from the left and from the bottom. A rectangle of 1 or less in a direction leaves the
    /// selector empty.
    void SetArea(int iX1, int iY1, int iX2, int iY2);
    /// The same; false when there has been no rectangle yet.
    bool GetArea(int& oX1, int& oY1, int& oX2, int& oY2) const;

    /// Takes everything out of the viewer; the selector is empty and deaf from then on.
    void CleanUp();

    [[nodiscard]] bool IsEmpty() const { return empty; }

    [[nodiscard]] bool IsDrawing() const { return indicator != nullptr; }

    [[nodiscard]] const QorRdgAreaCorners& GetCorners() const { return area; }

    [[nodiscard]] Qor2DViewpoint* GetViewpoint() const { return viewpoint; }

protected:
    ~QorRdgAreaSelector() override;

private:
    // Drawing: the indicator's begin, steps and end.
    void DrawBeginCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);
    void DrawMoveCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);
    void DrawEndCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);
    // Editing: a handle's begin, steps, end and edit gesture; the data is the handle's number.
    void
    HandleBeginCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);
    void
    HandleMoveCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);
    void HandleEndCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);
    void
    HandleEditCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);

    [[nodiscard]] bool IsAttached() const { return viewer != nullptr && viewpoint; }

    [[nodiscard]] QorRdgAreaCorners GetExtents() const;
    void MakeHandles();
    void PlaceHandles();
    void SetHandlesPickable(bool iPickable);
    void RemoveIndicator();
    /// The viewer has another size: the rectangle that was chosen stays where it is as far as the
    /// viewer goes, and comes back when the viewer does.
    void ResizedCB(QorEventName iEvent,
                   QorBaseUnknown* iPublisher,
                   QorNotification* iNotification,
                   QorSubscriberData iData,
                   QorCallbackId iCookie);
    [[nodiscard]] bool IsHandleDragged() const;
    void Complete();
    void ApplyHandle(std::size_t iHandle, const QorMathPoint2D& iMove);
    void ClampToViewer();
    void Order();
    void EnforceMinimum();
    [[nodiscard]] float GetPixelRatio() const;
    void ShowRectangle();
    void HideRectangle();
    void Finish();
    void Dispatch(const QorVar<QorNotification>& iEvent);

    QorCallbackManager* publisher;
    bool empty = true;
    QorViewer* viewer;
    Qor2DViewpoint_var viewpoint;
    Qor2DIndicator* indicator = nullptr;
    Qor2DIndicator* previousIndicator = nullptr;
    QorRdgAreaRectangle rectangle;
    std::array<Qor2DManipulator*, 9> handles{};
    QorRdgAreaCorners area;
    QorRdgAreaCorners chosen; ///< by the latest operation, in a viewer of whatever size
    QorMathPoint2D last;      ///< reference point of a handle's drag
    QorMathPoint2D current;   ///< the handle's origin at the latest step
};
