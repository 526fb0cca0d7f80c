#pragma once

#include <QColor>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>

#include "ui/widgets/Colors.h"

namespace ui {

// The one mark of the keyboard focus: a line along the inner side of an outline, set off from the shape
// inside by a thinner line in the colour of the ground, so that it is seen around a shape of its own colour,
// too.
inline constexpr double kFocusRing = 2;
inline constexpr double kFocusGap = 1;
inline constexpr double kFocusRoom = kFocusRing + kFocusGap;

[[nodiscard]] inline QColor focusRingColor(const QPalette& palette) {
    return legible(windowColor(palette), accentColor(palette), kTextContrast);
}
void drawFocusRing(QPainter& painter, const QRectF& outline, double corner, const QPalette& palette);

// The look of buttons, fields and menus in every window: one size, one mark of the keyboard focus. Everything
// else is drawn by the base style, which is the user's own where none is given.
class Style final : public QProxyStyle {
  public:
    explicit Style(QStyle* base = nullptr) : QProxyStyle(base) {}

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption* option,
                         const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;

  private:
    void drawPushButton(const QStyleOptionButton& button, QPainter& painter, const QWidget* widget) const;
    void drawToolButton(const QStyleOptionToolButton& button, QPainter& painter, const QWidget* widget) const;
};

}  // namespace ui
