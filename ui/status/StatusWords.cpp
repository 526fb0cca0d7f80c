#include "ui/status/StatusWords.h"

#include "orvellos/menu/StatusItemController.h"
#include "ui/widgets/PlainText.h"

namespace ui {

QString statusWords(const platform::StatusTitle& title) {
    QStringList parts{toQString(orvellos::StatusItemController::kAccessibilityDescription)};
    if (title.label) parts << toQString(title.label->text);
    if (title.hasHiddenSymbol) parts << toQString(orvellos::StatusItemController::kHiddenDescription);
    return parts.join(QStringLiteral(" — "));
}

void describeStatusItem(QWidget& widget, const platform::StatusTitle& title) {
    const auto name = toQString(orvellos::StatusItemController::kAccessibilityDescription);
    const auto words = statusWords(title);
    widget.setWindowTitle(name);  // by which some trays remember what the user has put where
    widget.setAccessibleName(words);
    setHelp(widget, words.toStdString());
}

}  // namespace ui
