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
/// Width of letters, as parts of the font's own: with the first a letter is on average as wide as
/// whoever places texts reckons, 0.4 of the line; narrower than the second they are hard to read.
constexpr double narrow = 0.9;
constexpr double narrowest = 0.6;

QFont fontOf(int pixels) {
    QFont font;
    font.setFamilies({QStringLiteral("DejaVu Sans"), QStringLiteral("sans-serif")});
    font.setStyleHint(QFont::SansSerif);
    font.setStyleStrategy(
        static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    font.setHintingPreference(QFont::PreferVerticalHinting);
    font.setPixelSize(pixels);
    return font;
}

/// The font whose line is nearest to a height.
QFont fontForLine(double height) {
    constexpr int large = 100;
    static const double lineByPixel = QFontMetricsF(fontOf(large)).height() / large;
    return fontOf(static_cast<int>(
        std::lround(std::clamp(height / lineByPixel, 1.0, static_cast<double>(tallest)))));
}

struct FittedText {
    QString text;
    double narrow;
};

FittedText fit(const QString& text, const QFontMetricsF& metrics, double maxWidth) {
    const double width = metrics.horizontalAdvance(text);
    if (!(maxWidth > 0.0) || width * narrow <= maxWidth)
        return {text, narrow};
    if (width * narrowest <= maxWidth)
        return {text, maxWidth / width};
    return {metrics.elidedText(text, Qt::ElideRight, maxWidth / narrowest), narrowest};
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
              const QColor& color,
              double maxWidth) {
    if (text.isEmpty() || !(height > 0.0) || !std::isfinite(position.x()) ||
        !std::isfinite(position.y()))
        return;
    const QFont font = fontForLine(height);
    const QFontMetricsF metrics(font);
    const FittedText line = fit(text, metrics, maxWidth);
    const QPointF part = anchorPart(anchor);
    const double left =
        position.x() - part.x() * metrics.horizontalAdvance(line.text) * line.narrow;
    const double top = position.y() - part.y() * metrics.height();
    painter.save();
    painter.setFont(font);
    painter.setPen(color);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    // On whole pixels letters are as sharp as their hinting makes them. The font's own stretch
    // would leave those as they are that have no narrow face.
    painter.translate(std::round(left), std::round(top + metrics.ascent()));
    painter.scale(line.narrow, 1.0);
    painter.drawText(QPointF(0.0, 0.0), line.text);
    painter.restore();
}

} // namespace qor::paint
