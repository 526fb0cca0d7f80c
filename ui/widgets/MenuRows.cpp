#include "ui/widgets/MenuRows.h"

#include <QFontMetrics>
#include <QIcon>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <algorithm>

#include "ui/widgets/Colors.h"
#include "ui/widgets/Metrics.h"
#include "ui/widgets/Symbols.h"

namespace ui::menu_rows {

namespace {

constexpr int kWidestText = 420;
constexpr int kInset = 8;    // inside a row's highlight
constexpr int kColumn = 16;  // of the checkmark, and of the dot or symbol
constexpr int kGap = 7;
constexpr int kBeforeShortcut = 28;
constexpr int kRowPadding = 4;
constexpr int kSeparatorHeight = 11;
constexpr double kHighlightCorner = 5;

// Text and shortcut of a row.
struct RowText {
    QString title;
    QString shortcut;

    explicit RowText(const QString& text)
        : title(text.section(QLatin1Char('\t'), 0, 0)), shortcut(text.section(QLatin1Char('\t'), 1)) {}
};

bool isEnabled(const QStyleOptionMenuItem& item) {
    return (item.state & QStyle::State_Enabled) != 0;
}
bool isHighlighted(const QStyleOptionMenuItem& item) {
    return isEnabled(item) && (item.state & QStyle::State_Selected) != 0;
}
int columnsOf(const QStyleOptionMenuItem& item) {
    return (item.menuHasCheckableItems ? 1 : 0) + (item.maxIconWidth > 0 ? 1 : 0);
}

QColor textColor(const QStyleOptionMenuItem& item) {
    if (isHighlighted(item)) return onAccentColor(item.palette);
    return isEnabled(item) ? labelColor(item.palette) : tertiaryLabelColor(item.palette);
}
QColor shortcutColor(const QStyleOptionMenuItem& item) {
    return isHighlighted(item) ? onAccentColor(item.palette)
           : isEnabled(item)   ? secondaryLabelColor(item.palette)
                               : tertiaryLabelColor(item.palette);
}

void drawSeparator(const QStyleOptionMenuItem& item, QPainter& painter) {
    auto color = labelColor(item.palette);
    color.setAlphaF(0.16F);
    const QRect& row = item.rect;
    painter.fillRect(row.left() + kInset, row.center().y(), row.width() - 2 * kInset, 1, color);
}

void drawHighlight(const QStyleOptionMenuItem& item, QPainter& painter) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(accentColor(item.palette));
    painter.drawRoundedRect(item.rect, kHighlightCorner, kHighlightCorner);
}

// Draws checkmark and icon, and gives the rest of the row.
QRect drawColumns(const QStyleOptionMenuItem& item, QPainter& painter) {
    auto rest = item.rect.adjusted(kInset, 0, -kInset, 0);
    const int side = scaled(kColumn);
    const auto takeColumn = [&] {
        const QRect column(rest.left(), rest.center().y() - side / 2 + 1, side, side);
        rest.setLeft(rest.left() + side + kGap);
        return QStyle::visualRect(item.direction, item.rect, column);
    };
    if (item.menuHasCheckableItems) {
        const auto check = takeColumn();
        if (item.checked)
            painter.drawPixmap(check, symbolPixmap("checkmark", textColor(item), side,
                                                   painter.device()->devicePixelRatioF()));
    }
    if (item.maxIconWidth > 0)
        item.icon.paint(&painter, takeColumn(), Qt::AlignCenter,
                        isHighlighted(item) ? QIcon::Selected
                        : isEnabled(item)   ? QIcon::Normal
                                            : QIcon::Disabled);
    return rest;
}

void drawTexts(const QStyleOptionMenuItem& item, QPainter& painter, QRect rest) {
    const RowText text(item.text);
    const QFontMetrics metrics(item.font);
    const bool mirrored = item.direction == Qt::RightToLeft;
    const auto draw = [&](bool atEnd, const QColor& color, const QString& words) {
        const auto side = atEnd == mirrored ? Qt::AlignLeft : Qt::AlignRight;
        painter.setPen(color);
        painter.drawText(QStyle::visualRect(item.direction, item.rect, rest),
                         static_cast<int>(side) | Qt::AlignVCenter | Qt::AlignAbsolute | Qt::TextHideMnemonic,
                         words);
    };
    painter.setFont(item.font);
    if (!text.shortcut.isEmpty()) {
        draw(true, shortcutColor(item), text.shortcut);
        rest.setRight(rest.right() - metrics.horizontalAdvance(text.shortcut) - kGap);
    }
    draw(false, textColor(item),
         metrics.elidedText(text.title, Qt::ElideMiddle, rest.width() + 1, Qt::TextHideMnemonic));
}

}  // namespace

QSize sizeOf(const QStyleOptionMenuItem& item) {
    if (item.menuItemType == QStyleOptionMenuItem::Separator) return {10, kSeparatorHeight};
    const RowText text(item.text);
    const QFontMetrics metrics(item.font);
    int width = std::min(metrics.size(Qt::TextHideMnemonic, text.title).width(), scaled(kWidestText));
    if (!text.shortcut.isEmpty()) width += kBeforeShortcut + metrics.horizontalAdvance(text.shortcut);
    return {2 * kInset + columnsOf(item) * (scaled(kColumn) + kGap) + width,
            std::max(metrics.height(), scaled(kColumn)) + 2 * kRowPadding};
}

void draw(const QStyleOptionMenuItem& item, QPainter& painter) {
    if (item.menuItemType == QStyleOptionMenuItem::Separator) return drawSeparator(item, painter);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (isHighlighted(item)) drawHighlight(item, painter);
    const auto rest = drawColumns(item, painter);
    drawTexts(item, painter, rest);
    painter.restore();
}

}  // namespace ui::menu_rows
