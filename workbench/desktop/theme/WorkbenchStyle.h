#pragma once

#include <QProxyStyle>

namespace qor::desktop {

/// Draws all controls: flat, corners of 5 pixels, one accent, a ring around what has the focus; the
/// rest is left to Fusion. It reads the colours of the theme each time it draws. What each kind of
/// control looks like stands in the Draw….cpp files, as one function a control.
class WorkbenchStyle : public QProxyStyle {
public:
    WorkbenchStyle();

    void polish(QWidget* widget) override;
    using QProxyStyle::polish;

    void drawPrimitive(PrimitiveElement element,
                       const QStyleOption* option,
                       QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element,
                     const QStyleOption* option,
                     QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control,
                            const QStyleOptionComplex* option,
                            QPainter* painter,
                            const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control,
                         const QStyleOptionComplex* option,
                         SubControl part,
                         const QWidget* widget) const override;
    QRect subElementRect(SubElement element,
                         const QStyleOption* option,
                         const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type,
                           const QStyleOption* option,
                           const QSize& contents,
                           const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric,
                    const QStyleOption* option,
                    const QWidget* widget) const override;
    int styleHint(StyleHint hint,
                  const QStyleOption* option,
                  const QWidget* widget,
                  QStyleHintReturn* result) const override;
    QIcon standardIcon(StandardPixmap which,
                       const QStyleOption* option,
                       const QWidget* widget) const override;

private:
    void drawEntry(ControlElement element,
                   const QStyleOption& option,
                   QPainter& painter,
                   const QWidget* widget) const;
};

} // namespace qor::desktop
