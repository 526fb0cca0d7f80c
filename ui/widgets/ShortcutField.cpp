#include "ui/widgets/ShortcutField.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <optional>

#include "platform/x11/input/KeyCodes.h"
#include "ui/widgets/Labels.h"
#include "ui/widgets/Metrics.h"
#include "ui/widgets/QtKeys.h"
#include "ui/widgets/Symbols.h"

namespace ui {

namespace {

constexpr int kWidth = 168;
constexpr int kClearButton = 22;

// Absent for a modifier, and for a key that no shortcut can have.
std::optional<platform::KeyEvent> keysOf(const QKeyEvent& event) {
    const auto keyCode = platform::x11::virtualKeyCode(event.nativeScanCode());
    if (!keyCode) return std::nullopt;
    return platform::KeyEvent{*keyCode, modifierFlags(event.modifiers())};
}

}  // namespace

ShortcutField::ShortcutField(keyboard_shortcuts::Recorder& recorder, const QString& name)
    : recorder_(recorder),
      clear_(addAction(symbolIcon("xmark.circle.fill", tertiaryLabelColor), TrailingPosition)) {
    setReadOnly(true);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setContextMenuPolicy(Qt::NoContextMenu);
    setAlignment(Qt::AlignCenter);
    setFixedWidth(scaled(kWidth));
    setAccessibleName(name);
    clear_->setToolTip(QStringLiteral("Clear"));
    connect(clear_, &QAction::triggered, this, [this] { recorder_.clear(); });
    changes_ = recorder_.subscribe([this] { refresh(); });
    refresh();
}

ShortcutField::~ShortcutField() {
    changes_.cancel();
    if (hasGrab_) releaseKeyboard();
}

void ShortcutField::record() {
    recorder_.begin();
    if (hasGrab_) return;
    grabKeyboard();
    hasGrab_ = true;
}

// An alert that asks about the keys must get the keyboard.
void ShortcutField::refresh() {
    if (hasGrab_ && !recorder_.isRecording()) {
        hasGrab_ = false;
        releaseKeyboard();
    }
    const auto shortcut = toQString(recorder_.text());
    QPalette own;
    if (shortcut.isEmpty()) own.setColor(QPalette::Text, QApplication::palette().placeholderText().color());
    setPalette(own);
    setText(shortcut.isEmpty() ? toQString(recorder_.placeholder()) : shortcut);
    setAccessibleDescription(toQString(recorder_.warning()));
    clear_->setVisible(!recorder_.isRecording() && !shortcut.isEmpty());
    setTextMargins(clear_->isVisible() ? kClearButton : 0, 0, 0, 0);  // as much as on the other side
}

// What would else be a shortcut of the window, or move the keyboard on, belongs to the recorder first.
bool ShortcutField::event(QEvent* event) {
    if (!recorder_.isRecording()) return QLineEdit::event(event);
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    auto* key = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease
                    ? static_cast<QKeyEvent*>(event)
                    : nullptr;
    if (!key) return QLineEdit::event(event);
    const auto keys = keysOf(*key);
    if (!keys) return true;
    if (key->type() == QEvent::KeyPress) return recorder_.keyDown(*keys) || QLineEdit::event(event);
    if (!key->isAutoRepeat()) recorder_.keyUp();
    return true;
}

void ShortcutField::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) refresh();
}

void ShortcutField::keyPressEvent(QKeyEvent* event) {
    const auto key = event->key();
    const bool stillEnds = key == Qt::Key_Escape && event->isAutoRepeat();  // the recording, not the window
    if (stillEnds) return;
    if (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter) return record();
    if (key == Qt::Key_Backspace || key == Qt::Key_Delete) return recorder_.clear();
    event->ignore();
}

void ShortcutField::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    const auto reason = event->reason();
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::MouseFocusReason)
        record();
}

void ShortcutField::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    recorder_.end();
}

void ShortcutField::mousePressEvent(QMouseEvent* event) {
    event->accept();
    record();
}

}  // namespace ui
