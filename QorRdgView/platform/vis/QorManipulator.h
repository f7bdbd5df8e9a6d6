#pragma once

#include "platform/system/QorCommand.h"
#include "platform/vis/QorViewpoint.h"

class QorViewer;

/// What a mouse does to a viewer. Device pixels from the viewer's top left, also outside it while a
/// button is held.
struct QorMouseEvent {
    enum class Action { Press, Move, Release, DoubleClick, Wheel };
    enum class Button { None, Left, Middle, Right };

    Action action = Action::Move;
    Button button = Button::None; ///< of Press, Release, DoubleClick: which; of Move: the one held
    QorMathPoint2D pixel;
    double wheelSteps = 0.0; ///< away from the person is positive
    bool shift = false;
    bool control = false;
};

/// Shapes of the pointer, by what dragging will do; falling is from upper left to lower right.
enum class QorCursor {
    Arrow,
    Hand,
    Cross,
    Move,
    SizeHorizontal,
    SizeVertical,
    SizeFalling,
    SizeRising
};

/// Base of what a manipulator or indicator sends.
class QorManipulatorNotification : public QorNotification {
    QorDeclareClass(QorManipulatorNotification)

    QorManipulatorNotification() = default;

    /// From the outermost representation to the one hit; empty when nothing was.
    [[nodiscard]] const std::vector<QorVar<QorRep>>& GetPickPath() const { return path; }

    void SetPickPath(std::vector<QorVar<QorRep>> iPath) { path = std::move(iPath); }

    [[nodiscard]] const QorMouseEvent& GetMouse() const { return mouse; }

    void SetMouse(const QorMouseEvent& iMouse) { mouse = iMouse; }

protected:
    ~QorManipulatorNotification() override = default;

private:
    std::vector<QorVar<QorRep>> path;
    QorMouseEvent mouse;
};

#define QorDeclareManipulatorNotification(Class)                                                   \
    class Class : public QorManipulatorNotification {                                              \
        QorDeclareClass(Class)                                                                     \
    }

QorDeclareManipulatorNotification(QorManipulatorBeginNotification);      ///< a drag begins
QorDeclareManipulatorNotification(QorManipulatorManipulateNotification); ///< a step of a drag
QorDeclareManipulatorNotification(QorManipulatorEndNotification);        ///< a drag has ended
QorDeclareManipulatorNotification(QorManipulatorActivateNotification);   ///< a click
QorDeclareManipulatorNotification(QorManipulatorEditNotification);       ///< a double click

/// Something in a viewer that a mouse can click and drag. It is attached to a viewpoint and,
/// mostly, to a representation; picking finds it through that. Sends its notifications to its
/// father.
class QorManipulator : public QorCommand {
    QorDeclareClass(QorManipulator)

    /// Attached to \p iViewer until either of them goes, or Detach.
    QorManipulator(QorCommand* iFather, const QorString& iName, QorViewer* iViewer);

    /// The viewer, or null once it is gone or the manipulator is detached.
    [[nodiscard]] QorViewer* GetViewer() const { return viewer; }

    /// Takes it out of its viewer for good: it gets no mouse any more.
    void Detach();

    [[nodiscard]] QorNotification* GetBeginManipulate() const;
    [[nodiscard]] QorNotification* GetManipulate() const;
    [[nodiscard]] QorNotification* GetEndManipulate() const;
    [[nodiscard]] QorNotification* GetActivate() const;
    [[nodiscard]] QorNotification* GetEdit() const;

    /// One mouse event that concerns it, with what was picked; whether it used it. The default
    /// makes drags of press, move, release and sends begin, manipulate, end, activate and edit.
    virtual bool HandleMouse(const QorMouseEvent& iMouse, const std::vector<QorVar<QorRep>>& iPath);
    /// Sends the edit notification: a double click.
    void Edit();

    [[nodiscard]] bool IsDragging() const { return dragging; }

    /// Among manipulators under one pixel the highest priority wins, then the nearest.
    void SetPickPriority(int iPriority) { pickPriority = iPriority; }

    [[nodiscard]] int GetPickPriority() const { return pickPriority; }

    /// Whether it also gets what hits nothing else in its viewer, with an empty path.
    void SetTakesRest(bool iTakes) { takesRest = iTakes; }

    [[nodiscard]] bool TakesRest() const { return takesRest; }

    /// The pointer over it and while it is dragged.
    void SetCursor(QorCursor iCursor) { cursor = iCursor; }

    [[nodiscard]] QorCursor GetCursor() const { return cursor; }

    /// Whether picking considers it at all.
    void SetPickable(bool iPickable) { pickable = iPickable; }

    [[nodiscard]] bool IsPickable() const { return pickable; }

protected:
    ~QorManipulator() override;

    /// A step of the drag: the manipulator moves itself before the notification goes out.
    virtual void Drag(const QorMouseEvent& /*iMouse*/) {}

    virtual void BeginDrag(const QorMouseEvent& /*iMouse*/,
                           const std::vector<QorVar<QorRep>>& /*iPath*/) {}

    /// Presses and sends begin at once.
    bool Begin(const QorMouseEvent& iMouse, const std::vector<QorVar<QorRep>>& iPath);
    void Send(QorManipulatorNotification* iNotification,
              const QorMouseEvent& iMouse,
              const std::vector<QorVar<QorRep>>& iPath);

private:
    friend class QorViewer;

    QorViewer* viewer;
    QorVar<QorManipulatorBeginNotification> begin = QorMake<QorManipulatorBeginNotification>();
    QorVar<QorManipulatorManipulateNotification> manipulate =
        QorMake<QorManipulatorManipulateNotification>();
    QorVar<QorManipulatorEndNotification> end = QorMake<QorManipulatorEndNotification>();
    QorVar<QorManipulatorActivateNotification> activate =
        QorMake<QorManipulatorActivateNotification>();
    QorVar<QorManipulatorEditNotification> edit = QorMake<QorManipulatorEditNotification>();
    QorCursor cursor = QorCursor::Hand;
    int pickPriority = 0;
    bool takesRest = false;
    bool pickable = true;
    bool dragging = false;
    bool pressed = false;
};

/// A manipulator of a 2D viewpoint; its origin is a model point that a drag moves.
class Qor2DManipulator : public QorManipulator {
    QorDeclareClass(Qor2DManipulator)

    Qor2DManipulator(QorCommand* iFather,
                     const QorString& iName,
                     QorViewer* iViewer,
                     Qor2DViewpoint* iViewpoint);

    [[nodiscard]] const QorMathPoint2D& GetOrigin() const { return origin; }

    void SetOrigin(const QorMathPoint2D& iOrigin) { origin = iOrigin; }

    /// Picking finds the manipulator through this representation; without one, in a square around
    /// its origin and what is within its reach.
    void SetRep(Qor2DRep* iRep) { rep = iRep; }

    [[nodiscard]] Qor2DRep* GetRep() const { return rep; }

    [[nodiscard]] Qor2DViewpoint* GetViewpoint() const { return viewpoint; }

    /// Half the sides, in model units, of a rectangle around the origin of which every point is as
    /// good as the origin for picking; none at first. Gives a side to a handle that lies on it.
    void SetReach(const QorMathPoint2D& iReach) { reach = iReach; }

    /// How far, in model units, a point is from the reach: the larger of both ways.
    [[nodiscard]] double GetDistance(const QorMathPoint2D& iPoint) const;

    /// Half a side of that square in device-independent pixels.
    static constexpr float hitRadius = 7.0F;

protected:
    ~Qor2DManipulator() override = default;
    void BeginDrag(const QorMouseEvent& iMouse, const std::vector<QorVar<QorRep>>& iPath) override;
    void Drag(const QorMouseEvent& iMouse) override;
    [[nodiscard]] QorMathPoint2D PointUnder(const QorMouseEvent& iMouse) const;

private:
    QorVar<Qor2DViewpoint> viewpoint;
    Qor2DRep_var rep;
    QorMathPoint2D origin;
    QorMathPoint2D reach;
    QorMathPoint2D grip; ///< from the origin to where it was taken hold of
};

/// The tool of a viewer that takes every drag that no manipulator of the plane takes: drawing a
/// rectangle.
class Qor2DIndicator : public Qor2DManipulator {
    QorDeclareClass(Qor2DIndicator)

    Qor2DIndicator(QorCommand* iFather,
                   const QorString& iName,
                   QorViewer* iViewer,
                   Qor2DViewpoint* iViewpoint);

    /// The model point under the mouse at the latest step.
    [[nodiscard]] const QorMathPoint2D& GetCurrentPoint() const { return GetOrigin(); }

    bool HandleMouse(const QorMouseEvent& iMouse,
                     const std::vector<QorVar<QorRep>>& iPath) override;

protected:
    ~Qor2DIndicator() override = default;
};

/// A manipulator in space.
class Qor3DManipulator : public QorManipulator {
    QorDeclareClass(Qor3DManipulator)

    enum class Mode : int {
        None = 0,
        Translation = 1,      ///< in the plane across the sight
        AxisTranslation = 2,  ///< along the third axis
        PlaneTranslation = 3, ///< in the plane of the first two axes
        AxisRotation = 4,     ///< about the third axis
        OriginRotation = 5,   ///< about the origin, as a ball under the pointer
    };

    Qor3DManipulator(QorCommand* iFather,
                     const QorString& iName,
                     QorViewer* iViewer,
                     Qor3DRep* iRep,
                     const QorMathAxis& iPosition);

    void SetMode(Mode iMode) { mode = iMode; }

    [[nodiscard]] Mode GetMode() const { return mode; }

    /// The axes as they are now.
    [[nodiscard]] const QorMathAxis& GetPosition() const { return position; }

    void SetPosition(const QorMathAxis& iPosition) { position = iPosition; }

    /// Turns the axes so that the third becomes \p iThird, as the end of a drag does, and sends
    /// manipulate.
    void TurnThirdTo(const QorMathVector& iThird);

    [[nodiscard]] Qor3DRep* GetRep() const { return rep; }

protected:
    ~Qor3DManipulator() override = default;
    void BeginDrag(const QorMouseEvent& iMouse, const std::vector<QorVar<QorRep>>& iPath) override;
    void Drag(const QorMouseEvent& iMouse) override;

private:
    [[nodiscard]] QorMathRay RayUnder(const QorMouseEvent& iMouse) const;
    /// The point of space that the mouse holds in the present mode.
    [[nodiscard]] QorMathPoint Grasp(const QorMouseEvent& iMouse) const;
    [[nodiscard]] QorMathPoint
    OnBall(const QorMathRay& iRay, const QorMathPoint& iCenter, const QorMathVector& iSight) const;

    Qor3DRep_var rep;
    QorVar<Qor3DViewpoint> held; ///< in which the drag began
    QorMathAxis position;
    QorMathAxis startPosition;
    QorMathPoint startPoint;
    double ballRadius = 1.0;
    Mode mode = Mode::None;
};
