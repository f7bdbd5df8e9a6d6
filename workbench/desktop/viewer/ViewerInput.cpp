#include "workbench/desktop/viewer/ViewerInput.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <array>
#include <cmath>

namespace qor::desktop {

namespace {

using Action = QorMouseEvent::Action;
using Button = QorMouseEvent::Button;

struct ButtonRow {
    Qt::MouseButton qt;
    Button button;
};

constexpr std::array<ButtonRow, 3> buttons{{{Qt::LeftButton, Button::Left},
                                            {Qt::MiddleButton, Button::Middle},
                                            {Qt::RightButton, Button::Right}}};

/// The first of the buttons in \p held that viewers know.
Button buttonOf(Qt::MouseButtons held) {
    for (const ButtonRow& row : buttons)
        if (held.testFlag(row.qt))
            return row.button;
    return Button::None;
}

std::optional<Action> actionOf(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
        return Action::Press;
    case QEvent::MouseButtonDblClick:
        return Action::DoubleClick;
    case QEvent::MouseButtonRelease:
        return Action::Release;
    case QEvent::MouseMove:
        return Action::Move;
    default:
        return std::nullopt;
    }
}

struct CursorRow {
    QorCursor cursor;
    Qt::CursorShape shape;
};

constexpr std::array<CursorRow, 8> cursors{{{QorCursor::Arrow, Qt::ArrowCursor},
                                            {QorCursor::Hand, Qt::PointingHandCursor},
                                            {QorCursor::Cross, Qt::CrossCursor},
                                            {QorCursor::Move, Qt::SizeAllCursor},
                                            {QorCursor::SizeHorizontal, Qt::SizeHorCursor},
                                            {QorCursor::SizeVertical, Qt::SizeVerCursor},
                                            {QorCursor::SizeFalling, Qt::SizeFDiagCursor},
                                            {QorCursor::SizeRising, Qt::SizeBDiagCursor}}};

struct KeyRow {
    int key;
    ViewKey meaning;
};

constexpr std::array<KeyRow, 8> keys{{{Qt::Key_F, {true, std::nullopt}},
                                      {Qt::Key_1, {false, QorStandardView::Front}},
                                      {Qt::Key_2, {false, QorStandardView::Back}},
                                      {Qt::Key_3, {false, QorStandardView::Left}},
                                      {Qt::Key_4, {false, QorStandardView::Right}},
                                      {Qt::Key_5, {false, QorStandardView::Top}},
                                      {Qt::Key_6, {false, QorStandardView::Bottom}},
                                      {Qt::Key_7, {false, QorStandardView::Isometric}}}};

QorMouseEvent at(const QPointF& position, Qt::KeyboardModifiers modifiers, double ratio) {
    QorMouseEvent mouse;
    mouse.pixel = devicePixel(position, ratio);
    mouse.shift = modifiers.testFlag(Qt::ShiftModifier);
    mouse.control = modifiers.testFlag(Qt::ControlModifier);
    return mouse;
}

/// Qt rounds an event's position to whole device-independent pixels on the way from the window to
/// the control; the window's own position has its parts still. Events that were made for the
/// control alone have no such position.
QPointF exactPosition(const QMouseEvent& event, const QPointF& inWindow) {
    const QPointF exact = event.scenePosition() - inWindow;
    const QPointF lost = exact - event.position();
    return std::abs(lost.x()) < 1.0 && std::abs(lost.y()) < 1.0 ? exact : event.position();
}

} // namespace

QorMathPoint2D devicePixel(const QPointF& position, double ratio) {
    // Positions were device pixels once and were divided by the ratio; what that lost comes back.
    constexpr double parts = 64.0;
    const auto whole = [&](double value) {
        return std::round(value * ratio * parts) / parts;
    };
    return {whole(position.x()), whole(position.y())};
}

std::optional<QorMouseEvent>
mouseEventOf(const QMouseEvent& event, double ratio, const QPointF& inWindow) {
    const std::optional<Action> action = actionOf(event.type());
    if (!action)
        return std::nullopt;
    QorMouseEvent mouse = at(exactPosition(event, inWindow), event.modifiers(), ratio);
    mouse.action = *action;
    mouse.button = buttonOf(*action == Action::Move ? event.buttons() : event.button());
    if (*action != Action::Move && mouse.button == Button::None)
        return std::nullopt;
    return mouse;
}

std::optional<QorMouseEvent> wheelEventOf(const QWheelEvent& event, double ratio) {
    constexpr double anglesByStep = 120.0; // eighths of a degree
    // With Alt held Qt turns a wheel sideways.
    const bool sideways = event.modifiers().testFlag(Qt::AltModifier);
    const int angle = sideways ? event.angleDelta().x() : event.angleDelta().y();
    if (angle == 0)
        return std::nullopt;
    QorMouseEvent mouse = at(event.position(), event.modifiers(), ratio);
    mouse.action = Action::Wheel;
    mouse.wheelSteps = angle / anglesByStep;
    return mouse;
}

Qt::CursorShape shapeOf(QorCursor cursor) {
    for (const CursorRow& row : cursors)
        if (row.cursor == cursor)
            return row.shape;
    return Qt::ArrowCursor;
}

std::optional<ViewKey> viewKeyOf(const QKeyEvent& event) {
    if ((event.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return std::nullopt;
    for (const KeyRow& row : keys)
        if (row.key == event.key())
            return row.meaning;
    return std::nullopt;
}

} // namespace qor::desktop
