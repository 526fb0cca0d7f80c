#include "ui/status/StatusMenu.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScreen>
#include <algorithm>

#include "ui/shell/X11Window.h"
#include "ui/widgets/Colors.h"
#include "ui/widgets/Labels.h"
#include "ui/widgets/Metrics.h"
#include "ui/widgets/QtKeys.h"
#include "ui/widgets/Symbols.h"

namespace ui {

namespace {

constexpr int kDot = 12;

}  // namespace

// Alone, Command is what this desktop's programs have Control for, and the key of that place does the same;
// with others it is that key.
QList<QKeySequence> keySequences(const platform::KeyEquivalent& key) {
    namespace modifier = platform::modifier;
    const auto typed = static_cast<Qt::Key>(QChar::fromLatin1(key.key).toUpper().unicode());
    const auto modifiers = toolkitModifiers(key.modifierFlags);
    const QKeySequence inPlace(QKeyCombination(modifiers, typed));
    if ((key.modifierFlags & ~modifier::kShift) != modifier::kCommand) return {inPlace};
    return {QKeySequence(QKeyCombination(modifiers ^ (Qt::MetaModifier | Qt::ControlModifier), typed)),
            inPlace};
}

QString keyText(const platform::KeyEquivalent& key) {
    const auto keys = keySequences(key).first()[0];
    QStringList words;
    const auto modifiers = keys.keyboardModifiers();
    if (modifiers & Qt::ControlModifier) words << QStringLiteral("Ctrl");
    if (modifiers & Qt::AltModifier) words << QStringLiteral("Alt");
    if (modifiers & Qt::MetaModifier) words << QStringLiteral("Super");
    if (modifiers & Qt::ShiftModifier) words << QStringLiteral("Shift");
    words << QString(QChar::fromLatin1(key.key)).toUpper();
    return words.join(QLatin1Char('+'));
}

StatusMenu::StatusMenu(const platform::x11::Atoms& atoms,
                       std::function<std::vector<platform::MenuItem>()> rows)
    : atoms_(atoms), rows_(std::move(rows)) {
    setToolTipsVisible(true);
}

void StatusMenu::open(const QRect& item) {
    if (isVisible()) return;
    rebuild();
    keepWidth();
    showAlternates((QGuiApplication::queryKeyboardModifiers() & Qt::AltModifier) != 0);
    // Closing a window has ended it for the server.
    setWindowType(*this, atoms_, platform::x11::Atom::NetWmWindowTypePopupMenu);
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
    if (row.keyEquivalent) keys_.push_back({keySequences(*row.keyEquivalent), action});
    if (!row.symbol.empty()) action->setIcon(symbolIcon(row.symbol));
    auto faint = secondaryLabelColor(palette());
    faint.setAlphaF(0.25F);
    if (row.dot || row.hasFaintDot)
        action->setIcon(dotIcon(row.dot ? toQColor(*row.dot) : faint, scaled(kDot)));
    if (row.kind == platform::MenuItem::Kind::Fineprint) action->setFont(fixedFont(font_scale::kFineprint));
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
    auto* row = rowOf(*event);
    if (!row) return QMenu::keyPressEvent(event);
    close();
    row->trigger();
}

QAction* StatusMenu::rowOf(const QKeyEvent& pressed) const {
    const QKeySequence keys(pressed.keyCombination());
    const auto found = std::ranges::find_if(keys_, [&](const auto& row) { return row.first.contains(keys); });
    return found == keys_.end() ? nullptr : found->second;
}

void StatusMenu::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Alt) return showAlternates(false);
    QMenu::keyReleaseEvent(event);
}

}  // namespace ui
