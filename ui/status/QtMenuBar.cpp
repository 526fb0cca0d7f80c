#include "ui/status/QtMenuBar.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <algorithm>

#include "ui/status/StatusMenu.h"
#include "ui/widgets/Labels.h"
#include "ui/widgets/QtKeys.h"

namespace ui {

namespace {

void editField(QLineEdit* field, platform::EditAction action) {
    switch (action) {
        case platform::EditAction::Undo:
            return field->undo();
        case platform::EditAction::Redo:
            return field->redo();
        case platform::EditAction::Cut:
            return field->cut();
        case platform::EditAction::Copy:
            return field->copy();
        case platform::EditAction::Paste:
            return field->paste();
        case platform::EditAction::SelectAll:
            return field->selectAll();
    }
}

// A selection has the toolkit's own character for the end of a line.
void editText(QLabel* label, platform::EditAction action) {
    if (action == platform::EditAction::SelectAll)
        label->setSelection(0, static_cast<int>(label->text().size()));
    else if (action == platform::EditAction::Copy && label->hasSelectedText())
        QApplication::clipboard()->setText(
            label->selectedText().replace(QChar::ParagraphSeparator, QLatin1Char('\n')));
}

void edit(platform::EditAction action) {
    auto* focused = QApplication::focusWidget();
    if (auto* field = qobject_cast<QLineEdit*>(focused))
        editField(field, action);
    else if (auto* label = qobject_cast<QLabel*>(focused))
        editText(label, action);
}

}  // namespace

bool QtMenuBar::isChosenBy(const platform::KeyEquivalent& equivalent, std::string_view text,
                           std::uint64_t modifierFlags) const {
    if (text != std::string_view(&equivalent.key, 1)) return false;
    const auto pressed = toolkitModifiers(modifierFlags);
    return std::ranges::any_of(keySequences(equivalent),
                               [&](const auto& keys) { return keys[0].keyboardModifiers() == pressed; });
}

void QtMenuBar::attachTo(QWidget& window) const {
    for (const auto& menu : menus_)
        for (const auto& item : menu.items) {
            auto* action = new QAction(toQString(item.title), &window);
            action->setShortcuts(keySequences(item.keyEquivalent));
            QObject::connect(action, &QAction::triggered, &window, [run = item.action] {
                if (const auto* editing = std::get_if<platform::EditAction>(&run))
                    edit(*editing);
                else
                    std::get<std::function<void()>>(run)();
            });
            window.addAction(action);
        }
}

}  // namespace ui
