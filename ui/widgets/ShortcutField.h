#pragma once

#include <QLineEdit>

#include "KeyboardShortcuts/Recorder.h"

namespace ui {

// A field that shows a shortcut and records another one while it has the keyboard, which no other program
// gets then.
class ShortcutField final : public QLineEdit {
  public:
    // `name` is the title of the shortcut's action.
    ShortcutField(keyboard_shortcuts::Recorder& recorder, const QString& name);
    ~ShortcutField() override;
    ShortcutField(const ShortcutField&) = delete;
    ShortcutField& operator=(const ShortcutField&) = delete;

  protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    void record();
    void refresh();

    keyboard_shortcuts::Recorder& recorder_;
    QAction* clear_;
    bool hasGrab_ = false;
    platform::Subscription changes_;
};

}  // namespace ui
