#pragma once

#include <QProxyStyle>
#include <QStyleOption>

namespace ui {

// How buttons, fields and menus look in every window: in one size, with one mark of what has the keyboard.
// What it does not draw is drawn by another style, the user's own where none is given.
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
