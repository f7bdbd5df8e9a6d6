#pragma once

#include "workbench/desktop/theme/Paint.h"

#include <QStyle>

namespace qor::desktop {

/// The controls that the style draws itself. Each function draws one; a null widget is allowed.

// DrawButtons.cpp
void drawPushPanel(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawToolPanel(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawCheckMark(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawRadioMark(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawFocus(const QStyleOption& option, QPainter& painter, const QWidget* widget);

// DrawFields.cpp
void drawField(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawCombo(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawSpinner(const QStyleOption& option, QPainter& painter, const QWidget* widget);
[[nodiscard]] QRect comboPart(const QStyleOption& option, QStyle::SubControl part);
[[nodiscard]] QRect spinnerPart(const QStyleOption& option, QStyle::SubControl part);

// DrawBars.cpp
void drawSlider(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawScrollBar(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawProgress(const QStyleOption& option, QPainter& painter, const QWidget* widget);
[[nodiscard]] QRect scrollBarPart(const QStyleOption& option, QStyle::SubControl part);

// DrawFrames.cpp
void drawGroup(const QStyleOption& option, QPainter& painter, const QWidget* widget);
[[nodiscard]] QRect groupPart(const QStyleOption& option, QStyle::SubControl part);
void drawGroupFrame(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawShapedFrame(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawMenuPanel(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawTip(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawBar(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawMenuBarBack(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawHeader(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawTab(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawTabClose(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawRow(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawNothing(const QStyleOption& option, QPainter& painter, const QWidget* widget);

} // namespace qor::desktop
