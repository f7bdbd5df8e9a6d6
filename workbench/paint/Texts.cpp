#include "workbench/paint/Texts.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace qor::paint {

namespace {

constexpr int tallest = 2000; // device pixels
/// In per cent: a letter is on average as wide as whoever places texts reckons, 0.4 of the line.
constexpr int narrow = 80;

QFont fontOf(int pixels) {
    QFont font;
    font.setFamilies({QStringLiteral("DejaVu Sans"), QStringLiteral("sans-serif")});
    font.setStyleHint(QFont::SansSerif);
    font.setStyleStrategy(
        static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    font.setHintingPreference(QFont::PreferVerticalHinting);
    font.setPixelSize(pixels);
    font.setStretch(narrow);
    return font;
}

/// The font whose line is nearest to a height.
QFont fontForLine(double height) {
    constexpr int large = 100;
    static const double lineByPixel = QFontMetricsF(fontOf(large)).height() / large;
    return fontOf(static_cast<int>(
        std::lround(std::clamp(height / lineByPixel, 1.0, static_cast<double>(tallest)))));
}

} // namespace

QPointF anchorPart(int anchor) {
    static constexpr std::array<std::array<double, 2>, 9> parts{{{0.0, 1.0},
                                                                 {0.5, 1.0},
                                                                 {1.0, 1.0},
                                                                 {0.0, 0.5},
                                                                 {0.5, 0.5},
                                                                 {1.0, 0.5},
                                                                 {0.5, 0.0},
                                                                 {1.0, 0.0},
                                                                 {0.0, 0.0}}};
    const auto row = static_cast<std::size_t>(anchor >= 1 && anchor <= 9 ? anchor - 1 : 0);
    return {parts[row][0], parts[row][1]};
}

void drawText(QPainter& painter,
              const QString& text,
              const QPointF& position,
              double height,
              int anchor,
              const QColor& color) {
    if (text.isEmpty() || !(height > 0.0) || !std::isfinite(position.x()) ||
        !std::isfinite(position.y()))
        return;
    const QFont font = fontForLine(height);
    const QFontMetricsF metrics(font);
    const QPointF part = anchorPart(anchor);
    const double left = position.x() - part.x() * metrics.horizontalAdvance(text);
    const double top = position.y() - part.y() * metrics.height();
    painter.setFont(font);
    painter.setPen(color);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    // On whole pixels letters are as sharp as their hinting makes them.
    painter.drawText(QPointF(std::round(left), std::round(top + metrics.ascent())), text);
}

} // namespace qor::paint
