#pragma once

#include "workbench/desktop/theme/Theme.h"

#include <QPainter>
#include <QStyleOption>

namespace qor::desktop {

constexpr qreal cornerRadius = 5.0;

/// What a control is at the moment, from the state of its style option.
struct Look {
    explicit Look(const QStyleOption& option);

    bool enabled;
    bool hovered;
    bool pressed;
    bool on;
    bool focused;         ///< has the keyboard
    bool keyboardFocused; ///< and got it by the keyboard, so that it should be pointed out
    const Colors& colors;

    [[nodiscard]] QColor fill() const; ///< of a button
    [[nodiscard]] QColor ink() const;  ///< of texts and marks
    [[nodiscard]] QColor edge() const;
};

/// A filled rectangle with round corners and an edge of one pixel inside \p rect. An edge that is
/// not valid is left out.
void drawPanel(QPainter& painter,
               const QRectF& rect,
               const QColor& fill,
               const QColor& edge,
               qreal radius = cornerRadius);

/// The ring of focus, two pixels wide, inside \p rect.
void drawRing(QPainter& painter, const QRectF& rect, qreal radius = cornerRadius);

/// An icon of the theme in \p ink, \p size pixels wide, in the middle of \p rect.
void drawIcon(
    QPainter& painter, const QRect& rect, const QString& name, int size, const QColor& ink);

/// Draws one kind of control.
using DrawElement = void (*)(const QStyleOption& option, QPainter& painter, const QWidget* widget);

/// Sets the painter up for a drawing and puts it back afterwards.
class PainterScope {
public:
    explicit PainterScope(QPainter& painter) : painter_(painter) {
        painter_.save();
        painter_.setRenderHint(QPainter::Antialiasing);
    }

    ~PainterScope() { painter_.restore(); }

    PainterScope(const PainterScope&) = delete;
    PainterScope& operator=(const PainterScope&) = delete;

private:
    QPainter& painter_;
};

} // namespace qor::desktop
