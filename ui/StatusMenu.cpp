#include "ui/StatusMenu.h"

#include <QApplication>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QScreen>
#include <QStyleOptionMenuItem>
#include <algorithm>

#include "ui/PlainText.h"
#include "ui/QtColor.h"
#include "ui/QtKeys.h"
#include "ui/Symbols.h"
#include "ui/X11Window.h"

namespace ui {

namespace {

constexpr int kWidestText = 420;
constexpr int kEdge = 5;     // around the menu
constexpr int kInset = 8;    // inside a row's highlight
constexpr int kColumn = 16;  // of the checkmark, and of the dot or symbol
constexpr int kGap = 7;
constexpr int kBeforeShortcut = 28;
constexpr int kRowPadding = 4;
constexpr int kSeparatorHeight = 11;
constexpr double kFineprintPoints = 10;

// Text and shortcut of a row.
struct RowText {
    QString title;
    QString shortcut;

    explicit RowText(const QString& text)
        : title(text.section(QLatin1Char('\t'), 0, 0)), shortcut(text.section(QLatin1Char('\t'), 1)) {}
};

// Draws menus with a column for checkmarks beside the one for icons, which most styles let share one place.
class MenuStyle final : public QProxyStyle {
  public:
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        if (metric == PM_MenuVMargin || metric == PM_MenuHMargin) return kEdge;
        if (metric == PM_MenuPanelWidth) return 0;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override {
        if (hint == SH_Menu_Scrollable || hint == SH_Menu_MouseTracking) return 1;
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override {
        const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        if (type != CT_MenuItem || !item) return QProxyStyle::sizeFromContents(type, option, size, widget);
        if (item->menuItemType == QStyleOptionMenuItem::Separator) return {10, kSeparatorHeight};
        const RowText text(item->text);
        const QFontMetrics metrics(item->font);
        int width = std::min(metrics.size(Qt::TextHideMnemonic, text.title).width(), kWidestText);
        if (!text.shortcut.isEmpty()) width += kBeforeShortcut + metrics.horizontalAdvance(text.shortcut);
        return {2 * kInset + 2 * (kColumn + kGap) + width,
                std::max(metrics.height(), kColumn) + 2 * kRowPadding};
    }
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        if (element != CE_MenuItem || !item)
            QProxyStyle::drawControl(element, option, painter, widget);
        else if (item->menuItemType == QStyleOptionMenuItem::Separator)
            drawSeparator(*item, *painter);
        else
            drawRow(*item, *painter);
    }

  private:
    static void drawSeparator(const QStyleOptionMenuItem& item, QPainter& painter) {
        auto color = labelColor(item.palette);
        color.setAlphaF(0.16F);
        const QRect& row = item.rect;
        painter.fillRect(row.left() + kInset, row.center().y(), row.width() - 2 * kInset, 1, color);
    }
    static QColor textColor(const QStyleOptionMenuItem& item, bool highlighted) {
        if (highlighted) return item.palette.color(QPalette::HighlightedText);
        const bool enabled = (item.state & State_Enabled) != 0;
        return enabled ? labelColor(item.palette) : tertiaryLabelColor(item.palette);
    }
    static void drawRow(const QStyleOptionMenuItem& item, QPainter& painter) {
        const bool enabled = (item.state & State_Enabled) != 0;
        const bool highlighted = enabled && (item.state & State_Selected) != 0;
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        if (highlighted) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(item.palette.color(QPalette::Highlight));
            painter.drawRoundedRect(item.rect, 5, 5);
        }
        const auto color = textColor(item, highlighted);
        auto rest = item.rect.adjusted(kInset, 0, -kInset, 0);
        const auto takeColumn = [&] {
            const QRect column(rest.left(), rest.center().y() - kColumn / 2 + 1, kColumn, kColumn);
            rest.setLeft(rest.left() + kColumn + kGap);
            return QStyle::visualRect(item.direction, item.rect, column);
        };
        const auto ratio = painter.device()->devicePixelRatioF();
        const auto check = takeColumn();
        if (item.checked) painter.drawPixmap(check, symbolPixmap("checkmark", color, kColumn, ratio));
        item.icon.paint(&painter, takeColumn(), Qt::AlignCenter,
                        highlighted ? QIcon::Selected
                        : enabled   ? QIcon::Normal
                                    : QIcon::Disabled);
        drawTexts(item, painter, rest, color);
        painter.restore();
    }
    static void drawTexts(const QStyleOptionMenuItem& item, QPainter& painter, QRect rest,
                          const QColor& color) {
        const RowText text(item.text);
        painter.setFont(item.font);
        painter.setPen(color);
        const QFontMetrics metrics(item.font);
        const auto alignedTo = [](Qt::AlignmentFlag side) {
            return static_cast<int>(side) | Qt::AlignVCenter | Qt::AlignAbsolute;
        };
        const bool mirrored = item.direction == Qt::RightToLeft;
        if (!text.shortcut.isEmpty()) {
            auto faint = color;
            faint.setAlphaF(color.alphaF() * 0.62F);
            painter.setPen(faint);
            const auto place = QStyle::visualRect(item.direction, item.rect, rest);
            painter.drawText(place, alignedTo(mirrored ? Qt::AlignLeft : Qt::AlignRight), text.shortcut);
            painter.setPen(color);
            rest.setRight(rest.right() - metrics.horizontalAdvance(text.shortcut) - kGap);
        }
        const auto place = QStyle::visualRect(item.direction, item.rect, rest);
        const auto title =
            metrics.elidedText(text.title, Qt::ElideMiddle, rest.width() + 1, Qt::TextHideMnemonic);
        painter.drawText(place, alignedTo(mirrored ? Qt::AlignRight : Qt::AlignLeft) | Qt::TextHideMnemonic,
                         title);
    }
};

QFont fineprintFont() {
    auto font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(kFineprintPoints * 72 / 96);
    return font;
}

}  // namespace

QKeySequence keySequence(const platform::KeyEquivalent& key) {
    namespace modifier = platform::modifier;
    // Alone, Command is what this desktop's programs have Control for; with others it is the key of that
    // place.
    const bool alone = (key.modifierFlags & ~modifier::kShift) == modifier::kCommand;
    auto modifiers = toolkitModifiers(key.modifierFlags);
    if (alone) modifiers ^= Qt::MetaModifier | Qt::ControlModifier;
    const auto typed = QChar::fromLatin1(key.key).toUpper().unicode();
    return QKeySequence(QKeyCombination(modifiers, static_cast<Qt::Key>(typed)));
}

QString keyText(const platform::KeyEquivalent& key) {
    const auto keys = keySequence(key)[0];
    QStringList words;
    const auto modifiers = keys.keyboardModifiers();
    if (modifiers & Qt::ControlModifier) words << QStringLiteral("Ctrl");
    if (modifiers & Qt::AltModifier) words << QStringLiteral("Alt");
    if (modifiers & Qt::MetaModifier) words << QStringLiteral("Super");
    if (modifiers & Qt::ShiftModifier) words << QStringLiteral("Shift");
    words << QString(QChar::fromLatin1(key.key)).toUpper();
    return words.join(QLatin1Char('+'));
}

StatusMenu::StatusMenu(std::function<std::vector<platform::MenuItem>()> rows) : rows_(std::move(rows)) {
    auto* style = new MenuStyle;
    style->setParent(this);
    setStyle(style);
    setToolTipsVisible(true);
}

void StatusMenu::open(const QRect& item) {
    if (isVisible()) return;
    rebuild();
    keepWidth();
    showAlternates((QGuiApplication::queryKeyboardModifiers() & Qt::AltModifier) != 0);
    setWindowType(*this, "POPUP_MENU");  // closing a window has ended it for the server
    popup(placeBeside(item));
}

QPoint StatusMenu::placeBeside(const QRect& item) const {
    const QPoint corner(item.x() + item.width(), item.y() + item.height());
    const auto* screen = QGuiApplication::screenAt(item.topLeft());
    if (!screen) return {item.x(), corner.y()};
    const auto area = screen->availableGeometry();
    const auto size = sizeHint();
    return {item.x() + size.width() <= area.right() + 1 ? item.x() : corner.x() - size.width(),
            corner.y() + size.height() <= area.bottom() + 1 ? corner.y() : item.y() - size.height()};
}

void StatusMenu::rebuild() {
    clear();
    alternates_.clear();
    keys_.clear();
    QAction* previous = nullptr;
    for (const auto& row : rows_()) {
        auto* action = addRow(row);
        if (row.isAlternate) alternates_.push_back({previous, action});
        previous = action;
    }
}

QAction* StatusMenu::addRow(const platform::MenuItem& row) {
    if (row.kind == platform::MenuItem::Kind::Separator) return addSeparator();
    const auto keys = row.keyEquivalent ? QLatin1Char('\t') + keyText(*row.keyEquivalent) : QString();
    auto* action = addAction(menuText(row.title) + keys);
    action->setEnabled(row.action != nullptr);
    if (row.action) connect(action, &QAction::triggered, this, [run = row.action] { run(); });
    action->setCheckable(row.checked);
    action->setChecked(row.checked);
    action->setToolTip(toolTipText(row.toolTip));
    if (row.keyEquivalent) keys_.push_back({keySequence(*row.keyEquivalent), action});
    const auto ratio = devicePixelRatioF();
    if (!row.symbol.empty()) action->setIcon(symbolIcon(row.symbol));
    auto faint = secondaryLabelColor(palette());
    faint.setAlphaF(0.25F);
    if (row.dot || row.hasFaintDot)
        action->setIcon(dotPixmap(row.dot ? toQColor(*row.dot) : faint, 12, kColumn, ratio));
    if (row.kind == platform::MenuItem::Kind::Fineprint) action->setFont(fineprintFont());
    return action;
}

// Wide enough for either set of rows, so that it stays where it is when they change.
void StatusMenu::keepWidth() {
    setMinimumWidth(0);
    showAlternates(true);
    const int width = sizeHint().width();
    showAlternates(false);
    setMinimumWidth(std::max(width, sizeHint().width()));
}

void StatusMenu::showAlternates(bool shown) {
    for (const auto& pair : alternates_) {
        const bool active = activeAction() == (shown ? pair.usual : pair.alternate);
        pair.usual->setVisible(!shown);
        pair.alternate->setVisible(shown);
        if (active) setActiveAction(shown ? pair.alternate : pair.usual);
    }
}

void StatusMenu::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Alt) return showAlternates(true);
    const QKeySequence pressed(event->keyCombination());
    for (const auto& [keys, action] : keys_)
        if (keys == pressed) {
            close();
            return action->trigger();
        }
    QMenu::keyPressEvent(event);
}

void StatusMenu::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Alt) return showAlternates(false);
    QMenu::keyReleaseEvent(event);
}

}  // namespace ui
