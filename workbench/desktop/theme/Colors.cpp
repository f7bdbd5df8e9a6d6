#include "workbench/desktop/theme/Colors.h"

#include <algorithm>
#include <cmath>

namespace qor::desktop {

namespace {

double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

} // namespace

double contrast(const QColor& one, const QColor& other) {
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

const Colors& Colors::light() {
    static const Colors colors{.dark = false,
                               .window = QColor(0xf4f4f5),
                               .field = QColor(0xffffff),
                               .raised = QColor(0xffffff),
                               .hover = QColor(0xebebed),
                               .pressed = QColor(0xdcdce0),
                               .edge = QColor(0x8b8b92),
                               .line = QColor(0xd8d8dc),
                               .groove = QColor(0xd0d0d5),
                               .text = QColor(0x1b1b1f),
                               .muted = QColor(0x5c5c66),
                               .disabled = QColor(0xa0a0a8),
                               .accent = QColor(0x1a63d6),
                               .accentText = QColor(0xffffff),
                               .danger = QColor(0xc4291c),
                               .warning = QColor(0x9a5b00)};
    return colors;
}

const Colors& Colors::darkOnes() {
    static const Colors colors{.dark = true,
                               .window = QColor(0x232326),
                               .field = QColor(0x19191b),
                               .raised = QColor(0x333338),
                               .hover = QColor(0x3d3d43),
                               .pressed = QColor(0x2a2a2e),
                               .edge = QColor(0x7e7e87),
                               .line = QColor(0x3f3f45),
                               .groove = QColor(0x4a4a51),
                               .text = QColor(0xececef),
                               .muted = QColor(0xa9a9b2),
                               .disabled = QColor(0x6d6d76),
                               .accent = QColor(0x6aa6ff),
                               .accentText = QColor(0x0b1526),
                               .danger = QColor(0xff8a7d),
                               .warning = QColor(0xf0b04a)};
    return colors;
}

QPalette Colors::palette() const {
    QPalette palette;
    const auto set = [&](QPalette::ColorRole role, const QColor& color, const QColor& off) {
        palette.setColor(QPalette::Active, role, color);
        palette.setColor(QPalette::Inactive, role, color);
        palette.setColor(QPalette::Disabled, role, off);
    };
    set(QPalette::Window, window, window);
    set(QPalette::WindowText, text, disabled);
    set(QPalette::Base, field, window);
    set(QPalette::AlternateBase, window, window);
    set(QPalette::Text, text, disabled);
    set(QPalette::Button, raised, window);
    set(QPalette::ButtonText, text, disabled);
    set(QPalette::BrightText, danger, disabled);
    set(QPalette::Highlight, accent, groove);
    set(QPalette::HighlightedText, accentText, disabled);
    set(QPalette::ToolTipBase, dark ? raised : text, window);
    set(QPalette::ToolTipText, dark ? text : field, disabled);
    set(QPalette::PlaceholderText, muted, disabled);
    set(QPalette::Link, accent, disabled);
    set(QPalette::LinkVisited, accent, disabled);
    set(QPalette::Light, raised, raised);
    set(QPalette::Midlight, line, line);
    set(QPalette::Mid, edge, line);
    set(QPalette::Dark, edge, line);
    set(QPalette::Shadow, QColor(0, 0, 0), line);
    return palette;
}

} // namespace qor::desktop
