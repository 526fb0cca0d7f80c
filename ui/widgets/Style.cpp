#include "ui/widgets/Style.h"

#include <QDialogButtonBox>
#include <QPainter>
#include <algorithm>

#include "ui/widgets/Colors.h"
#include "ui/widgets/MenuRows.h"
#include "ui/widgets/Metrics.h"

namespace ui {

void drawFocusRing(QPainter& painter, const QRectF& outline, double corner, const QPalette& palette) {
    const auto draw = [&](double inset, double width, const QColor& color) {
        const double middle = inset + width / 2;
        painter.setPen(QPen(color, width));
        painter.drawRoundedRect(outline.adjusted(middle, middle, -middle, -middle),
                                std::max(0.0, corner - middle), std::max(0.0, corner - middle));
    };
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    draw(0, kFocusRing, focusRingColor(palette));
    draw(kFocusRing, kFocusGap, windowColor(palette));
    painter.restore();
}

namespace {

constexpr int kButtonPadding = 10;
constexpr int kLeastButton = 76;
constexpr int kFieldPadding = 4;
constexpr float kHovered = 0.08F;
constexpr float kPressed = 0.16F;
constexpr float kEdge = 0.25F;

bool has(const QStyleOption& option, QStyle::StateFlag state) {
    return (option.state & state) != 0;
}
bool isDefault(const QStyleOptionButton& button) {
    return (button.features & QStyleOptionButton::DefaultButton) != 0 && has(button, QStyle::State_Enabled);
}

QColor faded(QColor color, float alpha) {
    color.setAlphaF(alpha);
    return color;
}

// The fill, shaded while the pointer is on it or presses it.
void drawBox(const QStyleOption& option, QPainter& painter, const QColor& fill, const QColor& edge) {
    const bool isEnabled = has(option, QStyle::State_Enabled);
    const bool isPressed = has(option, QStyle::State_Sunken) || has(option, QStyle::State_On);
    const float shade = !isEnabled                             ? 0
                        : isPressed                            ? kPressed
                        : has(option, QStyle::State_MouseOver) ? kHovered
                                                               : 0;
    const auto box = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(box, kCorner, kCorner);
    painter.setPen(edge);
    painter.setBrush(faded(labelColor(option.palette), shade));
    painter.drawRoundedRect(box, kCorner, kCorner);
    if (isEnabled && has(option, QStyle::State_HasFocus))
        drawFocusRing(painter, option.rect, kCorner, option.palette);
    painter.restore();
}

void drawField(const QStyleOption& option, QPainter& painter) {
    const auto group = has(option, QStyle::State_Enabled) ? QPalette::Active : QPalette::Disabled;
    const auto box = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(outlineColor(option.palette));
    painter.setBrush(option.palette.color(group, QPalette::Base));
    painter.drawRoundedRect(box, kCorner, kCorner);
    if (has(option, QStyle::State_HasFocus)) drawFocusRing(painter, option.rect, kCorner, option.palette);
    painter.restore();
}

}  // namespace

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    if (metric == PM_MenuVMargin || metric == PM_MenuHMargin) return menu_rows::kEdge;
    if (metric == PM_MenuPanelWidth) return 0;
    if (metric == PM_ButtonShiftHorizontal || metric == PM_ButtonShiftVertical) return 0;
    return QProxyStyle::pixelMetric(metric, option, widget);
}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                     QStyleHintReturn* data) const {
    if (hint == SH_Menu_Scrollable || hint == SH_Menu_MouseTracking) return 1;
    if (hint == SH_DialogButtonLayout) return QDialogButtonBox::GnomeLayout;  // the default button last
    return QProxyStyle::styleHint(hint, option, widget, data);
}

QSize Style::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                              const QWidget* widget) const {
    if (type == CT_PushButton)
        return {std::max(size.width() + 2 * scaled(kButtonPadding), scaled(kLeastButton)), controlHeight()};
    if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        type == CT_MenuItem && item)
        return menu_rows::sizeOf(*item);
    const auto proposed = QProxyStyle::sizeFromContents(type, option, size, widget);
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    if (type == CT_LineEdit && frame && frame->lineWidth > 0)
        return {proposed.width(), std::max(proposed.height(), controlHeight())};
    return proposed;
}

QRect Style::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    const auto place = QProxyStyle::subElementRect(element, option, widget);
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    const bool isField = element == SE_LineEditContents && frame && frame->lineWidth > 0;
    return isField ? place.adjusted(kFieldPadding, 0, -kFieldPadding, 0) : place;
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    if (element == PE_FrameFocusRect)
        drawFocusRing(*painter, option->rect, kCorner, option->palette);
    else if (element == PE_PanelLineEdit && frame && frame->lineWidth > 0)
        drawField(*option, *painter);
    else
        QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void Style::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                        const QWidget* widget) const {
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (element == CE_MenuItem && item)
        menu_rows::draw(*item, *painter);
    else if (element == CE_PushButton && button)
        drawPushButton(*button, *painter, widget);
    else
        QProxyStyle::drawControl(element, option, painter, widget);
}

void Style::drawPushButton(const QStyleOptionButton& button, QPainter& painter, const QWidget* widget) const {
    const auto& palette = button.palette;
    const auto accent = accentColor(palette);
    drawBox(button, painter, isDefault(button) ? accent : palette.color(QPalette::Active, QPalette::Button),
            isDefault(button) ? accent : faded(labelColor(palette), kEdge));
    auto label = button;
    label.state &= ~(State_HasFocus | State_Sunken);
    if (isDefault(button)) label.palette.setColor(QPalette::ButtonText, onAccentColor(palette));
    QProxyStyle::drawControl(CE_PushButtonLabel, &label, &painter, widget);
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                               const QWidget* widget) const {
    if (const auto* button = qstyleoption_cast<const QStyleOptionToolButton*>(option);
        control == CC_ToolButton && button)
        drawToolButton(*button, *painter, widget);
    else
        QProxyStyle::drawComplexControl(control, option, painter, widget);
}

void Style::drawToolButton(const QStyleOptionToolButton& button, QPainter& painter,
                           const QWidget* widget) const {
    drawBox(button, painter, Qt::transparent, Qt::transparent);
    auto label = button;
    label.state &= ~(State_HasFocus | State_Sunken);
    QProxyStyle::drawControl(CE_ToolButtonLabel, &label, &painter, widget);
}

}  // namespace ui
