#include "workbench/desktop/viewer/gl/ViewerLook.h"

#include "workbench/desktop/theme/Colors.h"

#include <cmath>

namespace qor::desktop {

namespace {

Float3 floatsOf(const QColor& color) {
    return {color.redF(), color.greenF(), color.blueF()};
}

float linearOf(float coded) {
    return coded <= 0.04045F ? coded / 12.92F : std::pow((coded + 0.055F) / 1.055F, 2.4F);
}

std::uint8_t byteOf(float value) {
    return static_cast<std::uint8_t>(std::lround(value * 255.0F));
}

} // namespace

Float3 linearOf(const Float3& coded) {
    return {linearOf(coded[0]), linearOf(coded[1]), linearOf(coded[2])};
}

ViewerLook ViewerLook::of(const Colors& colors) {
    ViewerLook look;
    look.backdropTop = floatsOf(QColor(colors.dark ? 0x47484d : 0xf6f7f8));
    look.backdropBottom = floatsOf(QColor(colors.dark ? 0x1d1d20 : 0xc6c9ce));
    look.highlight = floatsOf(QColor(0x2f7cf0));
    look.highlightEdge = floatsOf(QColor(colors.dark ? 0xb9d6ff : 0x0a3f9e));
    look.edge = {0.05F, 0.06F, 0.08F, 0.82F};
    look.edgeOnDark = {0.62F, 0.64F, 0.68F, 0.55F};
    look.ground = colors.dark ? 0.075F : 0.6F;
    return look;
}

QorColor ViewerLook::highlightColor() const {
    return {byteOf(highlight[0]), byteOf(highlight[1]), byteOf(highlight[2]), 255};
}

} // namespace qor::desktop
